/**
 * The rows of a combined list: how they change when one conversation of a source changes or a live call ends.
 *
 * A changed conversation is folded into its row or starts one; a contact joins the rows of its numbers; a contact's
 * second live call is shown as a phantom. After each change the list is sorted and the observers are told. Nothing
 * that is given to the constructor is owned, and all of it outlives this object.
 */
#pragma once

#include "aggregation/PhantomCalls.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace ConversationAPI
{
class Conversation;
class ConversationList;
class ConversationSourceIfc;
class DisplayObservers;
class NotificationRound;
class TemporaryConversations;

class CombinedRows
{
  public:
    CombinedRows(ConversationList& list, DisplayObservers& observers, TemporaryConversations& temporaries,
                 NotificationRound& round);

    /** A source's conversation has changed. */
    void update(Conversation& update);

    /** A live call has ended; `source` is whose conversation it was, null when it was of no particular one. */
    void removeActiveItemForCall(const std::string& callId, const ConversationSourceIfc* source);

    /**
     * Items that no row can take make everything be combined anew at the end of the round, which must be going on.
     * With `isUpdate` false, `update` is another row of the list, whose calls are others and whose id is given up.
     */
    void mergeIntoExistingConversation(Conversation& existing, Conversation& update, bool isUpdate = true);

    /** Tells that the row goes, and takes it off the list. */
    void removeRow(Conversation* row);

    /** After combining; `before` is what liveRows() was. */
    void separateRowsOfOneId(const PhantomCalls::LiveRows& before);
    PhantomCalls::LiveRows liveRows() const { return phantom_.liveRows(); }
    bool isAnyLive() const;

  private:
    using Rows = std::vector<Conversation*>;

    /** What a contact has besides the row that is updated. */
    struct Gathered
    {
        Rows joined;
        Rows named; ///< additional calls, which only take the names
    };

    std::pair<Conversation*, unsigned> findMatchingConversation(const Conversation& conversation) const;
    void createNewConversation(Conversation& update);
    void mergeUpdate(Conversation& existing, Conversation& update);
    void calculateConversationsThatNeedChanging(const Conversation& existing, const Conversation& contact,
                                                Gathered& rows) const;
    void finishUpdate(Conversation* updated, Conversation& update, const Gathered& gathered);

    void createPhantomConversation(Conversation& existing, const Conversation& update);
    std::unique_ptr<Conversation> updateUsingPhantomConversation(Conversation*& target, const Conversation& update);
    void foldPhantomInto(Conversation& root);
    Conversation* foldPhantomBack();

    bool hasContactRowBeside(const Conversation& row) const;
    void forgetCallElsewhere(const std::string& callId);
    void settleRowAfterCall(Conversation* row);
    void notifyObserversOfConversationDeleted(Conversation* row);

    ConversationList& list_;
    DisplayObservers& observers_;
    TemporaryConversations& temporaries_;
    NotificationRound& round_;
    PhantomCalls phantom_;
};
} // namespace ConversationAPI
