/**
 * Telephone numbers as people type them, compared with numbers as they are stored or shown.
 *
 * Neither separators count ("030/123-4" is "0301234") nor the form: "030 12", "+49 30 12", "004930 12" and, behind the
 * prefix of an outside line, "0030 12" are all beginnings of "+49301234567". Where a country's code ends is known from
 * its first digits, so that "030" finds numbers of Berlin and not those that have a 30 somewhere.
 */
#pragma once

#include "ConversationAPI/TextRange.h"
#include "search/MatchRank.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ConversationAPI
{
/** A text that consists of digits, '*', '#' and separators. */
struct DialText
{
    /** Nothing for a text without digits and for one that holds something else, an address for instance. */
    static std::optional<DialText> parse(std::string_view text);

    bool hasPlus = false;
    std::string digits;
    std::vector<std::size_t> places; ///< of each digit in the text
};

struct NumberMatch
{
    MatchRank rank = MatchRank::NONE;
    TextRange digits; ///< of the stored number's
};

class NumberQuery
{
  public:
    explicit NumberQuery(const DialText& typed);

    /** In digits, and '+' before those of an international number. */
    NumberMatch match(std::string_view stored) const;

    /** The bytes of a number, in whatever form, that match. */
    std::optional<TextRange> findIn(std::string_view shownNumber) const;

    /** What every number that matches contains. */
    const std::string& needle() const;

  private:
    bool hasPlus_;
    std::string typed_;
    std::string significant_;   ///< without zeros at its beginning
    std::string international_; ///< with the country's code; "" when the typed text does not begin like that
    std::string national_;      ///< what of it follows the country's code
};
} // namespace ConversationAPI
