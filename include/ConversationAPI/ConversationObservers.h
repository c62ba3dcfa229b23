/** The lists that observe a conversation, none of them owned, and what they are told. */
#pragma once

#include "ConversationAPI/ContactDetails.h"
#include "ConversationAPI/CopyOnWrite.h"
#include "ConversationAPI/NumberUpdateReason.h"
#include "ConversationAPI/SharedText.h"

#include <boost/container/small_vector.hpp>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace ConversationAPI
{
class Conversation;
class ConversationModificationObserverIfc;

class ConversationObservers
{
  public:
    /** Once each; null is ignored. The observer is told. */
    void add(ConversationModificationObserverIfc* observer, Conversation& conversation);
    void remove(ConversationModificationObserverIfc* observer, Conversation& conversation);
    bool isKnown(const ConversationModificationObserverIfc* observer) const;

    /** The conversation is being destroyed. */
    void tellEnd(Conversation& conversation);

    void tellModified(const SharedText& conversationId);
    void tellKeysChanged(Conversation& conversation)
    {
        if (first_)
        {
            tellAllKeysChanged(conversation);
        }
    }

    /** How the four numbers differ from what they were. */
    void tellNumberChanges(Conversation& conversation, const CopyOnWrite<ContactDetails>& before);

    /** `before` should be four. */
    void tellNumberChanges(Conversation& conversation, const std::vector<std::string>& before);

  private:
    using Observers = boost::container::small_vector<ConversationModificationObserverIfc*, 2>;

    /** Those of this moment, whatever they do when they are told something. */
    Observers all() const;
    template <typename Tell>
    void tellEach(Tell tell);

    void tellAllKeysChanged(Conversation& conversation);

    template <typename NumberBefore>
    void tellNumberChanges(Conversation& conversation, std::size_t count, NumberBefore before);

    /** `first` is the number now, `second` the number before; "" where there is none. */
    void notifyObserversNumbersUpdated(numberUpdateReason reason, Conversation& conversation, const std::string& first,
                                       const std::string& second);

    // Nearly always there is just the one list.
    ConversationModificationObserverIfc* first_ = nullptr; ///< null: there is none
    std::unique_ptr<std::vector<ConversationModificationObserverIfc*>> others_;
};
} // namespace ConversationAPI
