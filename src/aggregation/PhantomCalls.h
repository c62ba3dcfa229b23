/**
 * Second live calls of one party, as far as a combined list is concerned.
 *
 * Two live calls of a contact on two of its numbers carry one conversation id. The list keeps the first as the
 * contact's row, the root, and shows the other as the phantom, of which there is one at most. The list is not
 * owned and outlives this object.
 */
#pragma once

#include "ConversationAPI/SharedText.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace ConversationAPI
{
class Conversation;
class ConversationList;

class PhantomCalls
{
  public:
    explicit PhantomCalls(ConversationList& list) : list_(list) {}

    /** Whether the update is a live call of a row that is in another one. */
    static bool needsPhantomConversation(const Conversation& existing, const Conversation& update);
    bool needsCreatingNewPhantomConversation(const Conversation& existing, const Conversation& update) const;
    bool needsPhantomConversationUpdate(const Conversation& existing, const Conversation& update) const;

    /** Whether the update of another row has the phantom's call, be it as the first item or behind newer history. */
    bool bringsPhantomsCall(const Conversation& existing, Conversation& update) const;

    /** Whether the phantom shows nothing but its call while the update brings history, which is the root's. */
    bool needsToTransferJournalItemsToRootConversation(const Conversation& update) const;
    bool needsDestroyingPhantomConversation(const std::string& callId) const;

    /** Whether the row, whose call has ended, is the phantom's root. */
    bool rootConversationsCallEndedFirst(const Conversation& row) const;

    /** The row of the phantom's contact; null when it is gone. */
    Conversation* root() const;

    /** The update without this call, of which the receiver gets a copy. */
    static std::unique_ptr<Conversation> giveCallTo(Conversation& receiver, const Conversation& update,
                                                    const std::string& callId);

    /** Folds a row in that has the same id: nothing of it is a stranger, whichever numbers are known. */
    static void unite(Conversation& root, Conversation& other);

    /** As unite(), with what is left of a row without its call. Of nobody's that is nothing: the call's own number. */
    static void takeRest(Conversation& root, Conversation& rest);

    /** Makes the row, which is in the list, the phantom, which shows nothing but its call; answers the rest. */
    std::unique_ptr<Conversation> makePhantom(Conversation* row);

    /** Makes the phantom a row as all others. */
    void makeRowOfPhantom();

    /** Which call the phantom shows, "" without one, and the ids of the rows of the others, by their calls. */
    struct LiveRows
    {
        std::string phantomCallId;
        std::map<std::string, SharedText> ids;

        bool showed(const std::string& callId) const { return callId == phantomCallId || ids.count(callId) != 0; }
    };
    LiveRows liveRows() const;

    /** A row and the one whose id it has, too. */
    struct SameId
    {
        Conversation* root;
        Conversation* other;
    };

    /**
     * Rows of an id that another one keeps: a live one if there is any, and the one that had it before rather than
     * another. First of them is the one whose call was the phantom's, if it is among them.
     */
    std::vector<SameId> rowsOfOneId(const LiveRows& before) const;

  private:
    ConversationList& list_;
};
} // namespace ConversationAPI
