/** A source that can be searched by free text. The observer is not owned. UI thread only. */
#pragma once

#include <string>
#include <vector>

namespace ConversationAPI
{
class ConversationSearchObserverIfc;

class SearchableConversationSourceIfc
{
  public:
    virtual ~SearchableConversationSourceIfc() = default;

    /** Answers at once, in the source's order. */
    virtual std::vector<std::string> getMatchingConversationIds(std::string searchString) = 0;

    /** Answers later, through the observer, under `searchId`. */
    virtual void getMatchingConversationIds(const std::string& searchString, const std::string& searchId,
                                            ConversationSearchObserverIfc* observer) = 0;
    virtual void cancelSearch(const std::string& searchId) = 0;

    /** The source's place among the others: the lower, the earlier it is asked. */
    virtual unsigned getSourceTypeWithPriority() const = 0;
};
} // namespace ConversationAPI
