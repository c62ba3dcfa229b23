/** What was typed, ready to be compared with the folded texts of many rows. Holds no reference to anything. */
#pragma once

#include "ConversationAPI/TextRange.h"
#include "search/MatchRank.h"
#include "search/NumberQuery.h"
#include "search/TextFolding.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ConversationAPI
{
class SearchQuery
{
  public:
    SearchQuery(const std::string& typed, TextFolding& folding);

    /** A text without letters and digits: it says nothing yet, so every row matches. */
    bool matchesAll() const { return words_.empty() && !number_; }

    // What a row has to contain to be looked at closer; "" when none can match that way.
    const std::string& nameNeedle() const { return nameNeedle_; }
    const std::string& keypadNeedle() const { return keypadNeedle_; }
    std::string_view numberNeedle() const { return number_ ? number_->needle() : std::string_view(); }

    /** `numbers` of the same row may have those of the words that are digits. */
    MatchRank rankName(std::string_view folded, std::string_view numbers) const;

    /** Of a text on the keypad. */
    MatchRank rankKeypad(std::string_view folded) const;

    /** The best of the numbers, each with a blank before it. */
    MatchRank rankNumbers(std::string_view numbers) const;

    /** Bytes of a shown name and of a shown number that match, in order. */
    std::vector<TextRange> rangesInName(const std::string& name, TextFolding& folding) const;
    std::vector<TextRange> rangesInNumber(const std::string& number, TextFolding& folding) const;

  private:
    struct Word
    {
        std::string text; ///< with a blank before it
        std::optional<NumberQuery> number;
    };

    void takeWords(const std::string& folded);
    void takeKeys(const DialText& dial);

    std::string folded_;
    std::vector<Word> words_;
    std::vector<std::string> keys_; ///< words on the keypad, with a blank before each
    std::optional<NumberQuery> number_;
    std::string nameNeedle_;
    std::string keypadNeedle_;
};
} // namespace ConversationAPI
