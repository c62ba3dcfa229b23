#include "TimeZone.h"

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <regex>

namespace Deskphone
{
namespace
{
constexpr std::size_t LONGEST_NAME = 64;
}

/** The C library takes every name it does not know for UTC, so the file has to be looked for here. */
bool isTimeZone(const std::string& name)
{
    static const std::regex pattern("[A-Za-z0-9_+-]+(/[A-Za-z0-9_+-]+)*");
    if (name.size() > LONGEST_NAME || !std::regex_match(name, pattern))
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
