#include "host/internal/Utf8.h"

#include <algorithm>
#include <boost/locale/encoding_utf.hpp>

namespace Host
{
namespace
{
bool isContinuationByte(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

bool isControlCharacter(char byte)
{
    return static_cast<unsigned char>(byte) < 0x20U || byte == 0x7F;
}

std::string withoutBrokenBytes(const std::string& text)
{
    return boost::locale::conv::utf_to_utf<char>(text, boost::locale::conv::skip);
}
} // namespace

std::string cutUtf8(const std::string& text, std::size_t mostBytes)
{
    if (text.size() <= mostBytes)
    {
        return text;
    }
    std::size_t end = mostBytes;
    while (end > 0 && isContinuationByte(text[end]))
    {
        --end;
    }
    return text.substr(0, end > 0 ? end : mostBytes);
}

bool isUtf8(const std::string& text)
{
    return withoutBrokenBytes(text) == text;
}

std::string toDisplayText(const std::string& text)
{
    std::string shown = withoutBrokenBytes(text);
    std::replace_if(shown.begin(), shown.end(), isControlCharacter, ' ');
    return shown;
}
} // namespace Host
