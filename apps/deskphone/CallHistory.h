/**
 * The history of calls and the voice mailbox as a source of items, filled from outside.
 *
 * It stands where a telephone has its call journal, and like that it owns the voicemail handler. Calls of one
 * entry share their entry id. Item factory and observer are not owned and outlive the history or are taken off
 * it. UI thread only.
 */
#pragma once

#include "ConversationAPI/ConversationItemSourceIfc.h"
#include "ConversationAPI/VoicemailHandler.h"
#include "platform/CallPartyIdentifier.h"

#include <optional>
#include <string>
#include <vector>

namespace ConversationAPI
{
class ConversationItem;
class ConversationItemFactory;
} // namespace ConversationAPI

namespace Deskphone
{
/** One call of the history. */
struct HistoryCall
{
    /** In the order in which the history tells its calls. */
    enum Kind
    {
        DIALLED,
        RECEIVED,
        MISSED,
        FORWARDED
    };

    Kind kind = MISSED;
    std::string entryId;
    CallPartyIdentifier party;
    long time = 0;            ///< seconds since the epoch, UTC
    long durationSeconds = 0; ///< 0 when not known
    bool seen = false;        ///< the rest concerns missed calls
    bool answeredElsewhere = false;
    std::string groupName;
    std::string groupNumber; ///< not empty for a group call

    /** Who redirected the call, or for a dialled or forwarded one, to whom it went. */
    std::optional<CallPartyIdentifier> forwardedParty;
};

class CallHistory : public ConversationAPI::ConversationItemSourceIfc
{
  public:
    explicit CallHistory(ConversationAPI::ConversationItemFactory& itemFactory);

    /** One more call. */
    void add(const HistoryCall& call);

    /** Somebody else took an entry away; one that is unknown is passed over. */
    void remove(const std::string& entryId);

    /** The history is to be read anew as a whole. */
    void reload();

    /** What the mailbox tells of its messages; see VoicemailHandler. */
    void setVoiceMailMessagesCount(int count) { voicemail_.setVoiceMailMessagesCount(count); }
    void setNoVoiceMailMessageWaiting() { voicemail_.setNoVoiceMailMessageWaiting(); }

    std::vector<ConversationAPI::ConversationItem*> getConversationItems() override;
    void reloadCalls(const std::vector<std::string>& entryIds) override;
    void deleteAllCalls() override;
    void deleteCalls(const std::vector<std::string>& entryIds) override;
    void setObserver(ConversationAPI::ConversationItemSourceObserverIfc* observer) override;
    void clearObserver() override;
    int getItemSourceType() override;
    bool ageAllMissedCalls(const std::vector<std::string>& entryIds) override;

  private:
    ConversationAPI::ConversationItem* makeItem(const HistoryCall& call) const;
    void addVoicemailTo(std::vector<ConversationAPI::ConversationItem*>& items);

    ConversationAPI::ConversationItemFactory& itemFactory_;
    ConversationAPI::ConversationItemSourceObserverIfc* observer_ = nullptr;
    std::vector<HistoryCall> calls_;
    ConversationAPI::VoicemailHandler voicemail_;
};
} // namespace Deskphone
