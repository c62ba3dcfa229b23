#include "search/FinderIndex.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationList.h"
#include "search/NumberQuery.h"
#include "search/SearchQuery.h"
#include "search/TextFolding.h"

#include <algorithm>
#include <array>

namespace ConversationAPI
{
namespace
{
constexpr std::size_t RANKS = static_cast<std::size_t>(MatchRank::NONE);
} // namespace

FinderIndex::FinderIndex(TextFolding& folding) : folding_(folding) {}

void FinderIndex::forgetAll()
{
    for (RowTexts* texts : {&ids_, &names_, &keypads_, &numbers_})
    {
        texts->clear();
    }
    rows_.clear();
    isInOrder_ = false;
}

void FinderIndex::forget(const Conversation* conversation)
{
    isInOrder_ = false;
    const auto known = rows_.find(conversation);
    if (known != rows_.end())
    {
        for (RowTexts* texts : {&names_, &keypads_, &numbers_})
        {
            texts->blank(known->second);
        }
        rows_.erase(known);
    }
}

void FinderIndex::follow(const ConversationList& list)
{
    // A row that is told to go is still listed, and so taken in again if somebody searches then.
    if (isInOrder_ && inOrder_.size() == list.size())
    {
        return;
    }
    if (ids_.size() > 2 * rows_.size())
    {
        forgetAll(); // most of the memory is that of rows that are gone
    }
    inOrder_.clear();
    for (const Conversation* conversation : list)
    {
        const auto known = rows_.find(conversation);
        inOrder_.push_back(known != rows_.end() ? known->second : add(*conversation));
    }
    isInOrder_ = true;
}

/** An address in place of a number counts as more words of the name. */
FinderIndex::Row FinderIndex::add(const Conversation& conversation)
{
    std::string words = conversation.toString();
    std::string numbers;
    conversation.contactDetails()->numbers.forEach(
        [&](const std::string& number)
        {
            if (const auto dial = DialText::parse(number))
            {
                numbers += (dial->hasPlus ? " +" : " ") + dial->digits;
            }
            else
            {
                words += " " + number;
            }
        });
    const auto row = static_cast<Row>(ids_.size());
    ids_.append(conversation.getConversationId());
    names_.append(folding_.fold(words, Alphabet::LETTERS));
    keypads_.append(folding_.fold(words, Alphabet::KEYPAD));
    numbers_.append(numbers);
    rows_.emplace(&conversation, row);
    return row;
}

std::vector<std::string> FinderIndex::find(const SearchQuery& query) const
{
    const std::vector<MatchRank> ranks = rank(query);
    std::array<std::vector<Row>, RANKS> found;
    for (const Row row : inOrder_)
    {
        if (ranks[row] != MatchRank::NONE)
        {
            found[static_cast<std::size_t>(ranks[row])].push_back(row);
        }
    }
    std::vector<std::string> ids;
    for (const std::vector<Row>& ofSameRank : found)
    {
        ids.reserve(ids.size() + ofSameRank.size());
        for (const Row row : ofSameRank)
        {
            ids.emplace_back(ids_[row]);
        }
    }
    return ids;
}

std::vector<MatchRank> FinderIndex::rank(const SearchQuery& query) const
{
    std::vector<MatchRank> ranks(ids_.size(), query.matchesAll() ? MatchRank::WHOLE : MatchRank::NONE);
    const auto rankRows = [&ranks](const RowTexts& texts, std::string_view needle, auto rankText)
    {
        if (!needle.empty())
        {
            texts.forEachContaining(needle, [&](std::size_t row, std::string_view text)
                                    { ranks[row] = std::min(ranks[row], rankText(row, text)); });
        }
    };
    rankRows(names_, query.nameNeedle(),
             [&](std::size_t row, std::string_view text) { return query.rankName(text, numbers_[row]); });
    rankRows(keypads_, query.keypadNeedle(),
             [&](std::size_t, std::string_view text) { return query.rankKeypad(text); });
    rankRows(numbers_, query.numberNeedle(),
             [&](std::size_t, std::string_view text) { return query.rankNumbers(text); });
    return ranks;
}
} // namespace ConversationAPI
