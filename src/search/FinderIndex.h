/**
 * The folded texts of a list's rows, made when a search first needs them and kept until the row changes.
 *
 * Knows conversations by their addresses alone and follows those of the list only, so it must be told of rows that
 * changed or went before others may have their addresses. Folding is not owned. UI thread only.
 */
#pragma once

#include "search/MatchRank.h"
#include "search/RowTexts.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace ConversationAPI
{
class Conversation;
class ConversationList;
class SearchQuery;
class TextFolding;

class FinderIndex
{
  public:
    explicit FinderIndex(TextFolding& folding);

    /** Nothing is known of any row any more. */
    void forgetAll();

    /** A row came, changed or is about to go. */
    void forget(const Conversation* conversation);

    /** Makes texts for the rows of the list that have none and takes over their order. Does nothing without a change.
     */
    void follow(const ConversationList& list);

    /** The ids of the rows that match, the best first, of equals that which stands first in the list. */
    std::vector<std::string> find(const SearchQuery& query) const;

  private:
    using Row = std::uint32_t;

    Row add(const Conversation& conversation);
    std::vector<MatchRank> rank(const SearchQuery& query) const;

    TextFolding& folding_;
    RowTexts ids_;
    RowTexts names_;
    RowTexts keypads_;
    RowTexts numbers_;
    std::unordered_map<const Conversation*, Row> rows_;
    std::vector<Row> inOrder_;
    bool isInOrder_ = false;
};
} // namespace ConversationAPI
