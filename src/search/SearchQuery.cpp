#include "search/SearchQuery.h"

#include <algorithm>

namespace ConversationAPI
{
namespace
{
constexpr auto NOWHERE = std::string_view::npos;

std::string_view withoutBlank(std::string_view word)
{
    return word.substr(1);
}

bool isShorter(const std::string& a, const std::string& b)
{
    return a.size() < b.size();
}

/** Where a word of the text begins with `word`, which has its blank; NOWHERE if none does. */
std::size_t findWord(std::string_view text, std::string_view word)
{
    for (std::size_t at = 0; at + word.size() <= text.size(); ++at)
    {
        // Two characters tell nearly always; asking the library for each blank takes twice as long.
        if (text[at] == ' ' && text[at + 1] == word[1] && text.substr(at, word.size()) == word)
        {
            return at;
        }
    }
    return NOWHERE;
}

/** Splits a text in which a blank stands before each word; calls `take` with each word and its blank. */
template <typename Take>
void forEachWord(std::string_view text, Take take)
{
    while (!text.empty())
    {
        const std::string_view word = text.substr(0, text.find(' ', 1));
        take(word);
        text.remove_prefix(word.size());
    }
}

MatchRank rankOfNumbers(const NumberQuery& query, std::string_view numbers)
{
    MatchRank best = MatchRank::NONE;
    forEachWord(numbers,
                [&](std::string_view number) { best = std::min(best, query.match(withoutBlank(number)).rank); });
    return best;
}

/** Where the word stands in a folded text: at the beginning of a word, or else anywhere; an empty part if nowhere. */
TextRange placeOf(std::string_view word, std::string_view folded)
{
    const std::string_view letters = withoutBlank(word);
    const std::size_t beginning = findWord(folded, word);
    const std::size_t begin = beginning == NOWHERE ? folded.find(letters) : beginning + 1;
    return begin == NOWHERE ? TextRange() : TextRange{begin, begin + letters.size()};
}

/** In order, those that overlap or touch as one. */
std::vector<TextRange> merged(std::vector<TextRange> ranges)
{
    std::sort(ranges.begin(), ranges.end(), [](const TextRange& a, const TextRange& b) { return a.begin < b.begin; });
    std::vector<TextRange> result;
    for (const TextRange& range : ranges)
    {
        if (!result.empty() && range.begin <= result.back().end)
        {
            result.back().end = std::max(result.back().end, range.end);
        }
        else
        {
            result.push_back(range);
        }
    }
    return result;
}

void addSource(std::vector<TextRange>& ranges, const FoldedText& text, const TextRange& place)
{
    if (place.begin != place.end)
    {
        ranges.push_back({text.sources[place.begin].begin, text.sources[place.end - 1].end});
    }
}
} // namespace

SearchQuery::SearchQuery(const std::string& typed, TextFolding& folding)
    : folded_(folding.fold(typed, Alphabet::LETTERS))
{
    const std::optional<DialText> dial = DialText::parse(typed);
    if (dial)
    {
        number_.emplace(*dial);
        takeKeys(*dial);
    }
    takeWords(folded_);
}

/** Digits among words may be those of a number: "ann 4711". Digits alone are one number, whatever divides them. */
void SearchQuery::takeWords(const std::string& folded)
{
    forEachWord(folded,
                [this](std::string_view text)
                {
                    Word word{std::string(text), std::nullopt};
                    const std::optional<DialText> dial = number_ ? std::nullopt : DialText::parse(withoutBlank(text));
                    if (dial)
                    {
                        word.number.emplace(*dial);
                    }
                    else if (text.size() > nameNeedle_.size() + 1)
                    {
                        nameNeedle_ = withoutBlank(text);
                    }
                    words_.push_back(std::move(word));
                });
    if (nameNeedle_.empty() && !words_.empty())
    {
        nameNeedle_ = withoutBlank(words_.front().text); // digits, but with something between that no number has
    }
}

/** The key of the blank is 0. */
void SearchQuery::takeKeys(const DialText& dial)
{
    if (dial.hasPlus || dial.digits.find_first_of("*#") != std::string::npos)
    {
        return;
    }
    std::string keys(dial.places.back() + 2, ' ');
    for (std::size_t i = 0; i < dial.digits.size(); ++i)
    {
        keys[dial.places[i] + 1] = dial.digits[i] == '0' ? ' ' : dial.digits[i];
    }
    forEachWord(keys,
                [this](std::string_view word)
                {
                    if (!withoutBlank(word).empty())
                    {
                        keys_.emplace_back(word);
                        keypadNeedle_ = std::max(keypadNeedle_, keys_.back(), isShorter);
                    }
                });
}

MatchRank SearchQuery::rankName(std::string_view folded, std::string_view numbers) const
{
    if (folded.substr(0, folded_.size()) == folded_)
    {
        return folded.size() == folded_.size() ? MatchRank::WHOLE : MatchRank::START;
    }
    MatchRank rank = MatchRank::WORD_STARTS;
    for (const Word& word : words_)
    {
        if (findWord(folded, word.text) != NOWHERE)
        {
            continue;
        }
        const bool isInside = folded.find(withoutBlank(word.text)) != NOWHERE;
        const MatchRank inNumbers = word.number ? rankOfNumbers(*word.number, numbers) : MatchRank::NONE;
        if (!isInside && inNumbers == MatchRank::NONE)
        {
            return MatchRank::NONE;
        }
        rank = inNumbers <= MatchRank::START ? rank : MatchRank::INSIDE;
    }
    return rank;
}

MatchRank SearchQuery::rankKeypad(std::string_view folded) const
{
    const bool hasAll = std::all_of(keys_.begin(), keys_.end(),
                                    [folded](const std::string& word) { return findWord(folded, word) != NOWHERE; });
    return hasAll ? MatchRank::KEYPAD : MatchRank::NONE;
}

MatchRank SearchQuery::rankNumbers(std::string_view numbers) const
{
    return number_ ? rankOfNumbers(*number_, numbers) : MatchRank::NONE;
}

std::vector<TextRange> SearchQuery::rangesInName(const std::string& name, TextFolding& folding) const
{
    std::vector<TextRange> ranges;
    const FoldedText letters = folding.foldWithSources(name, Alphabet::LETTERS);
    for (const Word& word : words_)
    {
        addSource(ranges, letters, placeOf(word.text, letters.text));
    }
    const FoldedText onKeypad = folding.foldWithSources(name, Alphabet::KEYPAD);
    if (!keys_.empty() && rankKeypad(onKeypad.text) == MatchRank::KEYPAD)
    {
        for (const std::string& word : keys_)
        {
            addSource(ranges, onKeypad, placeOf(word, onKeypad.text));
        }
    }
    return merged(std::move(ranges));
}

std::vector<TextRange> SearchQuery::rangesInNumber(const std::string& number, TextFolding& folding) const
{
    if (!DialText::parse(number))
    {
        return rangesInName(number, folding); // an address
    }
    std::vector<TextRange> ranges;
    const auto add = [&](const std::optional<NumberQuery>& query)
    {
        if (const auto found = query ? query->findIn(number) : std::nullopt)
        {
            ranges.push_back(*found);
        }
    };
    add(number_);
    for (const Word& word : words_)
    {
        add(word.number);
    }
    return merged(std::move(ranges));
}
} // namespace ConversationAPI
