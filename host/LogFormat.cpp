#include "host/internal/LogFormat.h"

#include "platform/Logging.h"

#include <algorithm>
#include <boost/algorithm/string/replace.hpp>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <optional>

namespace Host
{
namespace
{
constexpr int WIDEST = 512;
constexpr std::size_t LONGEST_ARGUMENT = 16384;

bool isOneOf(char character, std::string_view set)
{
    return character != '\0' && set.find(character) != std::string_view::npos;
}

/** One conversion of a format, from its '%' to its letter. */
struct Conversion
{
    std::string flags;
    std::optional<int> width;
    std::optional<int> precision;
    std::string length;
    char letter = '\0';

    /** The format that the C library is given for a number. */
    std::string asFormat() const
    {
        std::string format = "%" + flags;
        format += width ? std::to_string(std::min(*width, WIDEST)) : "";
        format += precision ? "." + std::to_string(std::min(*precision, WIDEST)) : "";
        return format + length + letter;
    }
};

/** Walks through a format and its arguments. */
class Formatter
{
  public:
    Formatter(const char* format, va_list arguments, const TextFilter& filter)
        : at_(format), filter_(filter), errorNumber_(errno)
    {
        va_copy(arguments_, arguments);
    }

    ~Formatter() { va_end(arguments_); }

    Formatter(const Formatter&) = delete;
    Formatter& operator=(const Formatter&) = delete;

    std::string run();

  private:
    Conversion readConversion();
    std::optional<int> readNumber();
    bool write(const Conversion& conversion);
    void writeText(const Conversion& conversion);
    void writeInteger(const Conversion& conversion);
    void writeFloating(const Conversion& conversion);
    void writeWide(const Conversion& conversion);
    void pad(const Conversion& conversion, const std::string& text);

    template <typename Value>
    void writeNumber(const Conversion& conversion, Value value);

    const char* at_;
    va_list arguments_;
    const TextFilter& filter_;
    const int errorNumber_;
    std::string text_;
};

std::string Formatter::run()
{
    while (*at_ != '\0')
    {
        if (*at_ != '%')
        {
            text_ += *at_++;
            continue;
        }
        const char* start = at_++;
        if (!write(readConversion()))
        {
            text_ += start;
            break;
        }
    }
    return std::move(text_);
}

Conversion Formatter::readConversion()
{
    Conversion conversion;
    while (isOneOf(*at_, "-+ #0'"))
    {
        conversion.flags += *at_++;
    }
    conversion.width = readNumber();
    if (conversion.width && *conversion.width < 0) // a width from the arguments may carry the flag '-'
    {
        conversion.flags += '-';
        conversion.width = -std::max(*conversion.width, -WIDEST);
    }
    if (*at_ == '.')
    {
        ++at_;
        conversion.precision = isOneOf(*at_, "*0123456789") ? readNumber() : 0;
        if (conversion.precision && *conversion.precision < 0)
        {
            conversion.precision.reset();
        }
    }
    while (isOneOf(*at_, "hlLqjzt") && conversion.length.size() < 2)
    {
        conversion.length += *at_++;
    }
    conversion.letter = *at_;
    at_ += *at_ != '\0' ? 1 : 0;
    return conversion;
}

std::optional<int> Formatter::readNumber()
{
    if (*at_ == '*')
    {
        ++at_;
        return va_arg(arguments_, int);
    }
    std::optional<int> number;
    while (isOneOf(*at_, "0123456789"))
    {
        number = std::min(number.value_or(0), 1'000'000) * 10 + (*at_++ - '0');
    }
    return number;
}

bool Formatter::write(const Conversion& conversion)
{
    switch (conversion.letter)
    {
    case '%':
        text_ += '%';
        return true;
    case 's':
    case 'c':
        if (conversion.length.empty())
        {
            writeText(conversion);
        }
        else
        {
            writeWide(conversion);
        }
        return true;
    case 'm':
        pad(conversion, std::strerror(errorNumber_));
        return true;
    case 'p':
        writeNumber(conversion, va_arg(arguments_, void*));
        return true;
    case 'n':
        va_arg(arguments_, void*);
        return true;
    default:
        break;
    }
    if (isOneOf(conversion.letter, "diuoxX"))
    {
        writeInteger(conversion);
        return true;
    }
    if (isOneOf(conversion.letter, "eEfFgGaA"))
    {
        writeFloating(conversion);
        return true;
    }
    return false;
}

template <typename Value>
void Formatter::writeNumber(const Conversion& conversion, Value value)
{
    const std::string format = conversion.asFormat();
    const int size = std::snprintf(nullptr, 0, format.c_str(), value);
    if (size > 0)
    {
        std::string number(static_cast<std::size_t>(size) + 1, '\0');
        std::snprintf(number.data(), number.size(), format.c_str(), value);
        text_.append(number, 0, static_cast<std::size_t>(size));
    }
}

/** Signed and unsigned integers of one size travel alike; the C library reads the bits by the letter. */
void Formatter::writeInteger(const Conversion& conversion)
{
    static_assert(sizeof(std::intmax_t) == sizeof(long) && sizeof(std::size_t) == sizeof(long) &&
                  sizeof(std::ptrdiff_t) == sizeof(long));
    if (conversion.length == "ll" || conversion.length == "q" || conversion.length == "L")
    {
        writeNumber(conversion, va_arg(arguments_, long long));
    }
    else if (isOneOf(conversion.length.c_str()[0], "ljzt"))
    {
        writeNumber(conversion, va_arg(arguments_, long));
    }
    else
    {
        writeNumber(conversion, va_arg(arguments_, int));
    }
}

void Formatter::writeFloating(const Conversion& conversion)
{
    if (conversion.length == "L")
    {
        writeNumber(conversion, va_arg(arguments_, long double));
    }
    else
    {
        writeNumber(conversion, va_arg(arguments_, double));
    }
}

void Formatter::writeWide(const Conversion& conversion)
{
    if (conversion.letter == 'c')
    {
        va_arg(arguments_, int);
        pad(conversion, "(wide)");
        return;
    }
    pad(conversion, va_arg(arguments_, const void*) == nullptr ? "(null)" : "(wide)");
}

void Formatter::writeText(const Conversion& conversion)
{
    if (conversion.letter == 'c')
    {
        const char character = static_cast<char>(va_arg(arguments_, int));
        pad(conversion, filter_(std::string_view(&character, 1)));
        return;
    }
    const char* argument = va_arg(arguments_, const char*);
    if (argument == nullptr)
    {
        pad(conversion, "(null)");
        return;
    }
    // A text with a precision need not be terminated.
    const std::size_t size = conversion.precision ? strnlen(argument, static_cast<std::size_t>(*conversion.precision))
                                                  : std::strlen(argument);
    std::string text = filter_(std::string_view(argument, std::min(size, LONGEST_ARGUMENT)));
    if (size > LONGEST_ARGUMENT)
    {
        text += "...(" + std::to_string(size - LONGEST_ARGUMENT) + " bytes more)";
    }
    pad(conversion, text);
}

void Formatter::pad(const Conversion& conversion, const std::string& text)
{
    const auto width = static_cast<std::size_t>(std::min(conversion.width.value_or(0), WIDEST));
    const std::string blanks(width > text.size() ? width - text.size() : 0, ' ');
    const bool left = conversion.flags.find('-') != std::string::npos;
    text_ += left ? text + blanks : blanks + text;
}
} // namespace

std::string formatLogText(const char* format, va_list arguments, const TextFilter& filter)
{
    return Formatter(format, arguments, filter).run();
}

std::string inFormat(const std::string& text)
{
    return boost::replace_all_copy(text, "%", "%%");
}

void logInFull(const char* file, int level, int line, const std::string& text)
{
    const char* nothing = ""; // a format without arguments would be none for the compiler
    logAppOrv("Host", file, level, line, (inFormat(text) + "%s").c_str(), nothing);
}
} // namespace Host
