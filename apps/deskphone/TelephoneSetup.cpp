#include "TelephoneSetup.h"

#include "Telephone.h"
#include "TimeZone.h"

namespace Deskphone
{
namespace
{
/** What cannot be looked at may be there: opening it tells what is wrong. */
bool mayExist(const std::filesystem::path& file)
{
    std::error_code error;
    return std::filesystem::exists(file, error) || error;
}
} // namespace

TelephoneSettings setUp(const Options& options, const TelephoneSettings& ofTrace)
{
    TelephoneSettings settings = options.over(ofTrace);
    if (!settings.timeZone.empty())
    {
        setTimeZone(settings.timeZone);
    }
    return settings;
}

std::filesystem::path folderToLookInto(const Options& options)
{
    const std::filesystem::path folder = options.dataFolder();
    const bool isThere = mayExist(Telephone::journalFile(folder)) || mayExist(Telephone::phonebookFile(folder));
    return isThere ? folder : std::filesystem::path();
}
} // namespace Deskphone
