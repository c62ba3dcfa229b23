/**
 * The local conversations of a search, found the way people expect.
 *
 * What is typed matches
 * - the beginnings of words of the name, in any order, without regard to case, accents, hyphens and apostrophes;
 * - the same words as digits, typed on a telephone's keypad ("266 533" or "2660533" for "Ann Lee");
 * - numbers, without regard to separators and in whichever form ("030 12", "+49 30 12", "0049 30 12");
 * - digits of a number beside words of the name ("ann 4711");
 * - with less weight, what stands inside a name or a number.
 * A text without letters and digits matches everything. Rows come by how well they match (whole name or number, its
 * beginning, beginnings of words, keypad, inside), then in the order of the list.
 *
 * Takes the place of a SearchableConversationSource in a searcher. It observes the aggregator, which is not owned
 * and outlives it, and folds the texts of rows when a search first needs them: the first search after the whole list
 * changed takes longer than those that follow. A display that searches from inside a callback is to be attached to
 * the aggregator after the finder was made. UI thread only.
 */
#pragma once

#include "ConversationAPI/ConversationObserver.h"
#include "ConversationAPI/SearchableConversationSourceIfc.h"
#include "ConversationAPI/TextRange.h"

#include <memory>
#include <string>
#include <vector>

namespace ConversationAPI
{
class ConversationAggregatorIfc;
class FinderIndex;
class TextFolding;

class ConversationFinder : public SearchableConversationSourceIfc, public ConversationObserver
{
  public:
    explicit ConversationFinder(ConversationAggregatorIfc& aggregator);
    ~ConversationFinder() override;

    ConversationFinder(const ConversationFinder&) = delete;
    ConversationFinder& operator=(const ConversationFinder&) = delete;

    /** The best first. */
    std::vector<std::string> getMatchingConversationIds(std::string searchString) override;

    /** The finder always answers at once. */
    void getMatchingConversationIds(const std::string&, const std::string&, ConversationSearchObserverIfc*) override {}
    void cancelSearch(const std::string&) override {}
    unsigned getSourceTypeWithPriority() const override { return 0; }

    /**
     * The parts of a name, as it is shown in UTF-8, to be highlighted; in order, none overlaps another. Each word is
     * marked once, where it is the beginning of a word if there is such a place.
     */
    std::vector<TextRange> matchingRangesInName(const std::string& searchString, const std::string& name);

    /** The same for a number in any form, with separators or without. */
    std::vector<TextRange> matchingRangesInNumber(const std::string& searchString, const std::string& number);

    void conversationListChanged(ConversationList* list) override;
    void conversationPresenceUpdated(Conversation*) override {}
    void conversationUpdatedAndMoved(Conversation* conversation, int index) override;
    void newConversation(Conversation* conversation, int index) override;
    void conversationDeleted(Conversation* conversation) override;

  private:
    ConversationAggregatorIfc& aggregator_;
    const std::unique_ptr<TextFolding> folding_;
    const std::unique_ptr<FinderIndex> index_;
    bool hearsOfAllChanges_ = false;
};
} // namespace ConversationAPI
