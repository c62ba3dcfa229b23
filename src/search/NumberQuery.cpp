#include "search/NumberQuery.h"

#include <algorithm>
#include <array>

namespace ConversationAPI
{
namespace
{
constexpr std::size_t LONGEST_QUERY = 100;
constexpr std::string_view SEPARATORS = " \t-/.,;()";
constexpr std::string_view DIALLED = "0123456789*#";
constexpr std::string_view TRUNK_PREFIX_ASIDE = "(0)";

// An international number stored with its prefix, and not an internal one that begins with zeros.
constexpr std::string_view INTERNATIONAL_PREFIX = "00";
constexpr std::size_t SHORTEST_PREFIXED_NUMBER = 9;

/** The first character alone decides nearly always. */
bool startsWith(std::string_view text, std::string_view start)
{
    return start.empty() || (!text.empty() && text[0] == start[0] && text.substr(0, start.size()) == start);
}

std::string_view withoutLeadingZeros(std::string_view digits)
{
    return digits.substr(std::min(digits.find_first_not_of('0'), digits.size()));
}

/** The country codes of one and two digits by ITU-T E.164; all others have three. */
std::size_t countryCodeLength(std::string_view digits)
{
    constexpr std::array<std::string_view, 10> SECOND_DIGITS = {"",         "",        "07", "0123469", "013456789",
                                                                "12345678", "0123456", "",   "1246",    "0123458"};
    if (digits.size() < 2 || digits[0] < '1' || digits[0] > '9')
    {
        return digits.size();
    }
    if (digits[0] == '1' || digits[0] == '7')
    {
        return 1;
    }
    const bool hasTwo =
        SECOND_DIGITS[static_cast<std::size_t>(digits[0] - '0')].find(digits[1]) != std::string_view::npos;
    return std::min<std::size_t>(hasTwo ? 2 : 3, digits.size());
}

/** A number as it is kept, taken to pieces. */
struct StoredNumber
{
    static StoredNumber parse(std::string_view text)
    {
        StoredNumber number;
        const bool hasPlus = startsWith(text, "+");
        number.digits = text.substr(hasPlus ? 1 : 0);
        if (!hasPlus && startsWith(text, INTERNATIONAL_PREFIX) && text.size() >= SHORTEST_PREFIXED_NUMBER)
        {
            number.prefixLength = INTERNATIONAL_PREFIX.size();
            number.digits.remove_prefix(number.prefixLength);
        }
        number.isInternational = hasPlus || number.prefixLength > 0;
        number.subscriber = number.isInternational ? countryCodeLength(number.digits)
                                                   : number.digits.size() - withoutLeadingZeros(number.digits).size();
        return number;
    }

    bool hasAt(std::size_t place, std::string_view sought) const
    {
        return !sought.empty() && startsWith(digits.substr(place), sought);
    }

    TextRange range(std::size_t place, std::size_t length) const
    {
        return {prefixLength + place, prefixLength + place + length};
    }

    bool isInternational = false;
    std::size_t prefixLength = 0; ///< of digits that are not among these:
    std::string_view digits;
    std::size_t subscriber = 0; ///< behind the country's code, or behind zeros
};
} // namespace

std::optional<DialText> DialText::parse(std::string_view text)
{
    DialText dial;
    text = text.substr(0, LONGEST_QUERY);
    for (std::size_t at = 0; at < text.size(); ++at)
    {
        if (dial.hasPlus && startsWith(text.substr(at), TRUNK_PREFIX_ASIDE))
        {
            at += TRUNK_PREFIX_ASIDE.size() - 1;
        }
        else if (DIALLED.find(text[at]) != std::string_view::npos)
        {
            dial.digits += text[at];
            dial.places.push_back(at);
        }
        else if (text[at] == '+' && !dial.hasPlus && dial.digits.empty())
        {
            dial.hasPlus = true;
        }
        else if (SEPARATORS.find(text[at]) == std::string_view::npos)
        {
            return std::nullopt;
        }
    }
    return dial.digits.empty() ? std::nullopt : std::make_optional(std::move(dial));
}

NumberQuery::NumberQuery(const DialText& typed)
    : hasPlus_(typed.hasPlus), typed_(typed.digits), significant_(withoutLeadingZeros(typed.digits))
{
    if (hasPlus_ || startsWith(typed_, INTERNATIONAL_PREFIX))
    {
        international_ = significant_;
        national_ = international_.substr(countryCodeLength(international_));
    }
}

const std::string& NumberQuery::needle() const
{
    if (!national_.empty())
    {
        return national_;
    }
    return significant_.empty() ? typed_ : significant_;
}

NumberMatch NumberQuery::match(std::string_view stored) const
{
    const StoredNumber number = StoredNumber::parse(stored);
    const struct
    {
        bool counts;
        std::size_t place;
        const std::string& sought;
    } beginnings[] = {{number.isInternational, 0, international_},
                      {!number.isInternational && number.subscriber > 0, number.subscriber, national_},
                      {!hasPlus_, 0, typed_},
                      {!hasPlus_, number.subscriber, typed_},
                      {!hasPlus_, number.subscriber, significant_}};
    for (const auto& beginning : beginnings)
    {
        if (beginning.counts && number.hasAt(beginning.place, beginning.sought))
        {
            const bool isWhole = beginning.place + beginning.sought.size() == number.digits.size();
            return {isWhole ? MatchRank::WHOLE : MatchRank::START,
                    number.range(beginning.place, beginning.sought.size())};
        }
    }
    const std::string& inside = significant_.empty() ? typed_ : significant_;
    const std::size_t place = hasPlus_ ? std::string_view::npos : number.digits.find(inside);
    return place == std::string_view::npos ? NumberMatch()
                                           : NumberMatch{MatchRank::INSIDE, number.range(place, inside.size())};
}

std::optional<TextRange> NumberQuery::findIn(std::string_view shownNumber) const
{
    const std::optional<DialText> shown = DialText::parse(shownNumber);
    if (!shown)
    {
        return std::nullopt;
    }
    const NumberMatch found = match((shown->hasPlus ? "+" : "") + shown->digits);
    if (found.rank == MatchRank::NONE)
    {
        return std::nullopt;
    }
    return TextRange{shown->places[found.digits.begin], shown->places[found.digits.end - 1] + 1};
}
} // namespace ConversationAPI
