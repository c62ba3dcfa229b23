#include "TimeZone.h"

#include <cstdlib>
#include <ctime>
#include <filesystem>

namespace Deskphone
{
namespace
{
constexpr std::size_t LONGEST_NAME = 64;
constexpr const char* NAME_CHARACTERS = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_+-/";
} // namespace

/** The C library takes every name it does not know for UTC, so the file has to be looked for here. */
bool isTimeZone(const std::string& name)
{
    // Without a dot no name leads out of the folder.
    const bool isName = !name.empty() && name.size() <= LONGEST_NAME && name.front() != '/' &&
                        name.find_first_not_of(NAME_CHARACTERS) == std::string::npos;
    if (!isName)
    {
        return false;
    }
    const char* configured = std::getenv("TZDIR");
    const std::filesystem::path folder = configured != nullptr ? configured : "/usr/share/zoneinfo";
    std::error_code error;
    return std::filesystem::is_regular_file(folder / name, error);
}

void setTimeZone(const std::string& name)
{
    setenv("TZ", name.c_str(), 1);
    tzset();
}
} // namespace Deskphone
