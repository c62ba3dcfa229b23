#include "platform/ClientUtils.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <string_view>
#include <utility>

namespace ClientUtils
{
namespace
{
constexpr std::array<std::pair<char, std::string_view>, 5> ENTITIES{
    {{'&', "amp"}, {'<', "lt"}, {'>', "gt"}, {'"', "quot"}, {'\'', "apos"}}};

constexpr std::size_t LONGEST_ENTITY = 12;

std::string_view entityOf(char character)
{
    for (const auto& [plain, name] : ENTITIES)
    {
        if (plain == character)
        {
            return name;
        }
    }
    return {};
}

char continuationByte(std::uint32_t codePoint, unsigned shift)
{
    return static_cast<char>(0x80U | ((codePoint >> shift) & 0x3FU));
}

std::string utf8(std::uint32_t codePoint)
{
    if (codePoint < 0x80U)
    {
        return {static_cast<char>(codePoint)};
    }
    if (codePoint < 0x800U)
    {
        return {static_cast<char>(0xC0U | (codePoint >> 6U)), continuationByte(codePoint, 0)};
    }
    if (codePoint < 0x10000U)
    {
        return {static_cast<char>(0xE0U | (codePoint >> 12U)), continuationByte(codePoint, 6),
                continuationByte(codePoint, 0)};
    }
    return {static_cast<char>(0xF0U | (codePoint >> 18U)), continuationByte(codePoint, 12),
            continuationByte(codePoint, 6), continuationByte(codePoint, 0)};
}

template <typename Number>
bool parseWhole(std::string_view text, Number& value, int base)
{
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value, base);
    return error == std::errc() && stop == end;
}

/** The character that "#65" or "#x41" stands for; "" when it stands for none. */
std::string numericEntity(std::string_view name)
{
    const bool hexadecimal = name.size() > 1 && (name[1] == 'x' || name[1] == 'X');
    std::uint32_t codePoint = 0;
    if (!parseWhole(name.substr(hexadecimal ? 2 : 1), codePoint, hexadecimal ? 16 : 10))
    {
        return {};
    }
    const bool isSurrogate = codePoint >= 0xD800U && codePoint <= 0xDFFFU;
    return isSurrogate || codePoint == 0 || codePoint > 0x10FFFFU ? std::string() : utf8(codePoint);
}

std::string decodeEntity(std::string_view name)
{
    if (!name.empty() && name.front() == '#')
    {
        return numericEntity(name);
    }
    for (const auto& [plain, entity] : ENTITIES)
    {
        if (entity == name)
        {
            return {plain};
        }
    }
    return {};
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view BLANKS = " \t\r\n";
    const auto first = text.find_first_not_of(BLANKS);
    if (first == std::string_view::npos)
    {
        return {};
    }
    return text.substr(first, text.find_last_not_of(BLANKS) - first + 1);
}
} // namespace

std::string escapeXMLString(const std::string& text)
{
    std::string escaped;
    escaped.reserve(text.size());
    for (const char character : text)
    {
        const std::string_view entity = entityOf(character);
        if (entity.empty())
        {
            escaped += character;
        }
        else
        {
            escaped.append("&").append(entity).append(";");
        }
    }
    return escaped;
}

std::string unescapeXMLString(const std::string& text)
{
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at)
    {
        if (text[at] == '&')
        {
            const std::string_view rest = std::string_view(text).substr(at + 1, LONGEST_ENTITY);
            const auto length = rest.find(';');
            const std::string decoded = length == std::string_view::npos ? "" : decodeEntity(rest.substr(0, length));
            if (!decoded.empty())
            {
                plain += decoded;
                at += length + 1;
                continue;
            }
        }
        plain += text[at]; // what is no known entity stays as it stands
    }
    return plain;
}

std::string extractValueFromXMLString(const std::string& xml, const std::string& key)
{
    const std::string opening = "<" + key + ">";
    const auto tag = xml.find(opening);
    if (tag == std::string::npos)
    {
        return {};
    }
    const auto value = tag + opening.size();
    const auto closing = xml.find("</" + key + ">", value);
    return closing == std::string::npos ? std::string() : xml.substr(value, closing - value);
}

std::vector<std::string> tokenizeString(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (auto end = text.find(separator); end != std::string::npos; end = text.find(separator, start))
    {
        parts.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    parts.push_back(text.substr(start));
    return parts;
}

void spiltFilenameAndPath(const std::string& full, std::string& path, std::string& fileName)
{
    const auto slash = full.rfind('/');
    const auto nameStart = slash == std::string::npos ? 0 : slash + 1;
    std::string head = full.substr(0, nameStart); // callers may pass one string as `full` and as a result
    std::string tail = full.substr(nameStart);
    path = std::move(head);
    fileName = std::move(tail);
}

std::string itos(int value)
{
    return std::to_string(value);
}

int stoi(const std::string& text)
{
    std::string_view number = trimmed(text);
    if (number.size() > 1 && number.front() == '+' && number[1] != '-')
    {
        number.remove_prefix(1);
    }
    int value = 0;
    return parseWhole(number, value, 10) ? value : 0;
}
} // namespace ClientUtils
