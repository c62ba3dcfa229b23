/**
 * What a display asks for conversations, whichever source they come from at the moment.
 *
 * Neither the source nor the observers are owned. UI thread only.
 */
#pragma once

#include "ConversationAPI/ConversationHandlerIfc.h"
#include "ConversationAPI/ConversationSourceObserverIfc.h"

namespace ConversationAPI
{
class ConversationObserver;
class ConversationSourceIfc;

class ConversationListProviderIfc : public ConversationSourceObserverIfc, public ConversationHandlerIfc
{
  public:
    /** Each observer once, told in the order in which they were added. */
    virtual void addObserver(ConversationObserver* observer) = 0;
    virtual void removeObserver(ConversationObserver* observer) = 0;

    /** Tells the observers the list. */
    virtual void start() = 0;

    /** The source from now on, null for none; with `notify`, the observers are told its list. */
    virtual void setSource(ConversationSourceIfc* source, bool notify) = 0;
};
} // namespace ConversationAPI
