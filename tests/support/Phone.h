/**
 * What a telephone wires before the first conversation, with builders for items and a look at the log.
 *
 * The digit analysis is the reference one: numbers of up to five digits are extensions and stay as they are.
 */
#pragma once

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationFactory.h"
#include "ConversationAPI/ConversationItemFactory.h"
#include "ConversationAPI/ConversationParticipantFactory.h"
#include "ConversationAPI/MissedCallConversationItem.h"
#include "ConversationAPI/RandomCachingConversationIDGenerator.h"
#include "ConversationAPI/SharedText.h"
#include "host/DigitAnalysis.h"
#include "host/LogSink.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace Testing
{
using Items = std::vector<ConversationAPI::ConversationItem*>;

/** The name of a caller who withholds it. */
inline const std::string ANONYMOUS = "Caller.Unknown.XXX";

inline Host::DigitAnalysis& digitAnalysis()
{
    static Host::DigitAnalysis service;
    return service;
}

/** Whether what can tell its ids in use by their hashes, a source or a list, tells the same ones. */
template <typename Holder>
bool tellsTheHashesOf(const std::vector<std::string>& ids, const Holder& holder)
{
    std::vector<std::uint32_t> told;
    holder.appendIdHashes(told);
    std::vector<std::uint32_t> hashes;
    std::transform(ids.begin(), ids.end(), std::back_inserter(hashes), ConversationAPI::hashOfText);
    return std::is_permutation(hashes.begin(), hashes.end(), told.begin(), told.end());
}

struct Phone
{
    Phone()
    {
        conversations.setConversationItemFactory(&items);
        conversations.setConversationIDGenerator(&ids);
        conversations.setDigitAnalysisServiceIfc(&digitAnalysis());
    }

    ConversationAPI::ConversationItem* missed(long time, const std::string& number, const std::string& first = "",
                                              const std::string& last = "", const std::string& entry = "")
    {
        ConversationAPI::ConversationItem* item = items.getMissedCallConversationItem(time, number, first, last);
        item->setEntryId(entry);
        return item;
    }

    ConversationAPI::ConversationItem* groupCall(long time, const std::string& number, const std::string& group)
    {
        auto* item = static_cast<ConversationAPI::MissedCallConversationItem*>(missed(time, number));
        item->setGroupStatus(true);
        item->setGroupName(group);
        return item;
    }

    ConversationAPI::ConversationItem* live(const std::string& callId,
                                            ConversationAPI::ActiveCall::activeCallState state, long time,
                                            const std::vector<CallPartyIdentifier>& parties)
    {
        using ConversationAPI::ActiveCall;
        const bool isConference = parties.size() > 1;
        ActiveCall call(nullptr, callId, parties.front(),
                        isConference ? ActiveCall::SMALL_CONFERENCE : ActiveCall::NO_CONFERENCE);
        std::for_each(parties.begin() + 1, parties.end(), [&call](const auto& other) { call.addParticipant(other); });
        call.setState(state);
        call.setCallInitiatedTime(time);
        return items.getActiveCallConversationItem(call);
    }

    ConversationAPI::ConversationItem* live(const std::string& callId,
                                            ConversationAPI::ActiveCall::activeCallState state, long time,
                                            const std::string& number, const std::string& last = "")
    {
        return live(callId, state, time, {party(number, "", last)});
    }

    static CallPartyIdentifier party(const std::string& number, const std::string& first = "",
                                     const std::string& last = "",
                                     CallPartyIdentifier::PhoneNumberIconType type = CallPartyIdentifier::NO_ICON)
    {
        return CallPartyIdentifier(first, last, number, type, "", false);
    }

    /** A conversation that holds these items. */
    std::unique_ptr<ConversationAPI::Conversation> conversation(const Items& held)
    {
        std::unique_ptr<ConversationAPI::Conversation> made(conversations.createConversation());
        std::for_each(held.begin(), held.end(), [&made](auto* item) { made->append(item); });
        return made;
    }

    std::unique_ptr<ConversationAPI::Conversation>
    contact(const std::string& last, const std::string& number, const std::string& mobile = "",
            ConversationAPI::Conversation::ContactSource source = ConversationAPI::Conversation::DIRECTORY_CONTACT)
    {
        std::unique_ptr<ConversationAPI::Conversation> made(
            conversations.createConversation("", last, number, 0, "", CallPartyIdentifier::WORK_1));
        made->setPhoneNumbers(number, "", mobile, "", number, CallPartyIdentifier::WORK_1);
        made->setContactSource(source);
        made->init();
        return made;
    }

    ConversationAPI::ConversationParticipantFactory participants{&digitAnalysis()};
    ConversationAPI::ConversationItemFactory items{&participants, &digitAnalysis()};
    ConversationAPI::RandomCachingConversationIDGenerator ids;
    ConversationAPI::ConversationFactory conversations;
};

/** An item in any state, whether a kind of item has it or not. */
class ItemInState : public ConversationAPI::ConversationItem
{
  public:
    ItemInState(int state, long time, const std::string& itemId = "", const std::string& callId = "")
        : state_(static_cast<ConversationAPI::ConversationItemState>(state))
    {
        setTimeStampUTC(time);
        setConversationItemId(itemId);
        setCallId(callId);
    }

    std::string toDetailsString() const override { return {}; }
    std::string toTimeString() const override { return {}; }
    ConversationItem* clone() override { return new ItemInState(*this); }
    ConversationAPI::ConversationItemState getState() const override { return state_; }

  private:
    ConversationAPI::ConversationItemState state_;
};

/** The log's lines while it lives, as plain text. */
class LogCapture
{
  public:
    explicit LogCapture(int level)
    {
        Host::LogSink& sink = Host::LogSink::instance();
        sink.setLevel(level);
        sink.setPlainText(true);
        sink.writeTo([this](const std::string& line) { lines_.push_back(line); });
    }

    ~LogCapture() { Host::LogSink::instance().reset(); }

    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    std::size_t count(const std::string& text) const
    {
        return static_cast<std::size_t>(std::count_if(lines_.begin(), lines_.end(),
                                                      [&text](const std::string& line)
                                                      { return line.find(text) != std::string::npos; }));
    }

  private:
    std::vector<std::string> lines_;
};

inline std::vector<long> timesOf(const ConversationAPI::Conversation& conversation)
{
    std::vector<long> times;
    for (const auto& item : conversation.items())
    {
        times.push_back(item->timeStampUTC());
    }
    return times;
}

inline void deleteAll(const Items& items)
{
    std::for_each(items.begin(), items.end(), [](auto* item) { delete item; });
}
} // namespace Testing
