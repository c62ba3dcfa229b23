#include "host/internal/LdapFilter.h"

#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/replace.hpp>

namespace Host
{
namespace
{
constexpr const char* PLACEHOLDER = "{text}";
constexpr std::string_view SPECIAL = "*()\\";

bool standsForItself(char byte)
{
    return byte >= ' ' && byte <= '~' && SPECIAL.find(byte) == std::string_view::npos;
}

/** Whether the text begins with a bracket whose partner is its end, with each bracket in between having one too. */
bool isOneBracket(const std::string& text)
{
    int depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        depth += text[i] == '(' ? 1 : text[i] == ')' ? -1 : 0;
        if (depth <= 0)
        {
            return depth == 0 && i > 0 && i + 1 == text.size();
        }
    }
    return false;
}
} // namespace

std::string escapeForLdapFilter(std::string_view text)
{
    constexpr char DIGITS[] = "0123456789abcdef";
    std::string escaped;
    for (const char byte : text)
    {
        if (standsForItself(byte))
        {
            escaped += byte;
            continue;
        }
        const auto value = static_cast<unsigned char>(byte);
        escaped += {'\\', DIGITS[value >> 4U], DIGITS[value & 0xFU]};
    }
    return escaped;
}

std::string makeLdapFilter(const std::string& filterTemplate, std::string_view text)
{
    return boost::replace_all_copy(filterTemplate, PLACEHOLDER, escapeForLdapFilter(text));
}

std::string problemOfLdapFilter(const std::string& filterTemplate)
{
    if (!boost::contains(filterTemplate, PLACEHOLDER))
    {
        return "must hold {text} where the text goes that is searched for";
    }
    return isOneBracket(filterTemplate) ? "" : "must be one filter in brackets, each of which has its partner";
}
} // namespace Host
