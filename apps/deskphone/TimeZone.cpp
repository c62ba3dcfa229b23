#include "TimeZone.h"

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>

namespace Deskphone
{
namespace
{
constexpr std::size_t LONGEST_NAME = 64;
constexpr const char* NAME_CHARACTERS = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_+-/";
constexpr const char* MACHINE_ZONE_FOLDER = "/etc";
constexpr const char* MACHINE_ZONE_LINK = "localtime"; ///< to the zone's file

std::filesystem::path zoneFolder()
{
    const char* configured = std::getenv("TZDIR");
    return configured != nullptr ? configured : "/usr/share/zoneinfo";
}

/** What the link leads to, if that is a zone of the database; "" without a link, where UTC is meant. */
std::string machineZone()
{
    std::error_code error;
    const std::filesystem::path folder = MACHINE_ZONE_FOLDER;
    if (!std::filesystem::exists(folder / MACHINE_ZONE_LINK, error))
    {
        return "";
    }
    const std::filesystem::path file = folder / std::filesystem::read_symlink(folder / MACHINE_ZONE_LINK, error);
    return file.lexically_normal().lexically_relative(zoneFolder()).generic_string();
}

bool beginsAsZone(const std::filesystem::path& file)
{
    const std::string expected = "TZif";
    std::string beginning(expected.size(), '\0');
    std::ifstream(file, std::ios::binary).read(beginning.data(), static_cast<std::streamsize>(beginning.size()));
    return beginning == expected;
}
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
    std::error_code error;
    const std::filesystem::path file = zoneFolder() / name;
    return std::filesystem::is_regular_file(file, error) && beginsAsZone(file); // other files lie there, too
}

std::string currentTimeZone()
{
    const char* chosen = std::getenv("TZ");
    std::string name = chosen != nullptr ? chosen : machineZone();
    if (!name.empty() && name.front() == ':')
    {
        name.erase(0, 1);
    }
    return name.empty() ? "UTC" : isTimeZone(name) ? name : "";
}

void setTimeZone(const std::string& name)
{
    setenv("TZ", name.c_str(), 1);
    tzset();
}
} // namespace Deskphone
