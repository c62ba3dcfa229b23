#include "TextColumn.h"

#include <clocale>
#include <cwchar>

namespace Deskphone
{
namespace
{
constexpr const char* ELLIPSIS = "\u2026";

struct Character
{
    std::string bytes;
    std::size_t columns = 1;
};

Character characterAt(const std::string& text, std::size_t position, std::size_t& length)
{
    std::mbstate_t state{};
    wchar_t wide = 0;
    const std::size_t result = std::mbrtowc(&wide, text.data() + position, text.size() - position, &state);
    const bool isWhole = result != 0 && result <= text.size() - position;
    length = isWhole ? result : 1;
    const int columns = isWhole ? wcwidth(wide) : -1;
    if (columns < 0)
    {
        return {"?", 1};
    }
    return {text.substr(position, length), static_cast<std::size_t>(columns)};
}

std::vector<Character> charactersOf(const std::string& text)
{
    std::vector<Character> characters;
    std::size_t length = 0;
    for (std::size_t position = 0; position < text.size(); position += length)
    {
        characters.push_back(characterAt(text, position, length));
    }
    return characters;
}

std::size_t columnsOf(const std::vector<Character>& characters)
{
    std::size_t columns = 0;
    for (const Character& character : characters)
    {
        columns += character.columns;
    }
    return columns;
}

/** As many of the first characters as fit, and the columns they take. */
Character firstColumns(const std::vector<Character>& characters, std::size_t most)
{
    Character first{"", 0};
    for (const Character& character : characters)
    {
        if (first.columns + character.columns > most)
        {
            break;
        }
        first.bytes += character.bytes;
        first.columns += character.columns;
    }
    return first;
}

Character fitted(const std::string& text, std::size_t columns)
{
    const std::vector<Character> characters = charactersOf(text);
    if (columnsOf(characters) <= columns)
    {
        return firstColumns(characters, columns);
    }
    if (columns == 0)
    {
        return {"", 0};
    }
    Character cut = firstColumns(characters, columns - 1);
    cut.bytes += ELLIPSIS;
    ++cut.columns;
    return cut;
}
} // namespace

void useUtf8()
{
    std::setlocale(LC_CTYPE, "C.UTF-8");
}

std::size_t columnsOf(const std::string& text)
{
    return columnsOf(charactersOf(text));
}

std::string leftAligned(const std::string& text, std::size_t columns)
{
    const Character fit = fitted(text, columns);
    return fit.bytes + std::string(columns - fit.columns, ' ');
}

std::string rightAligned(const std::string& text, std::size_t columns)
{
    const Character fit = fitted(text, columns);
    return std::string(columns - fit.columns, ' ') + fit.bytes;
}

std::string shortened(const std::string& text, std::size_t columns)
{
    return fitted(text, columns).bytes;
}

std::string joined(const std::vector<std::string>& texts, const char* between)
{
    std::string all;
    for (const std::string& text : texts)
    {
        all += (all.empty() || text.empty() ? "" : between) + text;
    }
    return all;
}
} // namespace Deskphone
