/**
 * The item sources of an aggregator, in the order in which they were added. None is owned.
 *
 * A source that is asked for something may make the application take off another one, or itself: one that was
 * taken off is not asked any more.
 */
#pragma once

#include "Observers.h"

#include <string>
#include <vector>

namespace ConversationAPI
{
class ConversationItem;
class ConversationItemSourceIfc;
class ConversationItemSourceObserverIfc;

class ItemSources
{
  public:
    /** The source reports to the observer from now on. Whether it has items already; null has none. */
    bool add(ConversationItemSourceIfc* source, ConversationItemSourceObserverIfc& observer);

    /** The source reports to nobody any more. Whether it still has items. */
    bool remove(ConversationItemSourceIfc* source);

    /** New items of all sources, source by source; the caller owns them. */
    std::vector<ConversationItem*> getConversationItems();

    /** Whether the call goes on, and is not taken away only to come anew with its party changed. */
    bool haveCall(const std::string& callId);

    template <typename Request>
    void forEach(Request request)
    {
        tellEach(sources_, request);
    }

  private:
    static bool hasItems(ConversationItemSourceIfc& source);

    std::vector<ConversationItemSourceIfc*> sources_;
};
} // namespace ConversationAPI
