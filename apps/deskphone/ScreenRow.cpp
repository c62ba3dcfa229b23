#include "ScreenRow.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/WellKnownNames.h"
#include "Telephone.h"
#include "TextColumn.h"

#include <algorithm>

namespace Deskphone
{
using ConversationAPI::ActiveCall;
using ConversationAPI::Conversation;
using State = ConversationAPI::ConversationItemState;

namespace
{
struct StateText
{
    const char* text;
    ScreenRow::Liveness liveness;
};

StateText describeLive(State state)
{
    switch (state)
    {
    case State::CONNECTED:
        return {"Connected", ScreenRow::TALKING};
    case State::LOCALLY_HELD:
        return {"On hold", ScreenRow::ON_HOLD};
    case State::REMOTELY_HELD:
        return {"Held by the other side", ScreenRow::ON_HOLD};
    case State::CONFERENCE:
        return {"Conference", ScreenRow::TALKING};
    case State::PROGRESSING_INCOMING:
        return {"Ringing", ScreenRow::RINGING};
    case State::PROGRESSING_OUTGOING:
        return {"Calling", ScreenRow::RINGING};
    case State::STARTED_REMOTE_CALL:
        return {"On another telephone", ScreenRow::TALKING};
    case State::CLEARING:
        return {"Ending", ScreenRow::ENDING};
    case State::GROUP_PICKUP_CONNECTED:
        return {"Picked up", ScreenRow::TALKING};
    case State::GROUP_PICKUP_INCOMING:
        return {"Ringing in the group", ScreenRow::RINGING};
    case State::ISOLATED:
        return {"Isolated", ScreenRow::TALKING};
    case State::CALL_WAITING_ISOLATED:
        return {"Waiting, isolated", ScreenRow::RINGING};
    case State::CALL_WAITING_IGNORED:
        return {"Waiting, ignored", ScreenRow::RINGING};
    case State::CALL_WAITING:
        return {"Waiting", ScreenRow::RINGING};
    case State::REPRESENTED_HELD_CALL:
        return {"Held call is back", ScreenRow::RINGING};
    case State::BLIND_TRANSFERRING:
        return {"Transferring", ScreenRow::ENDING};
    default:
        return {"", ScreenRow::HISTORY};
    }
}

const char* describeHistory(State state)
{
    switch (state)
    {
    case State::MISSED:
        return "Missed";
    case State::DIALLED:
        return "Dialled";
    case State::RECEIVED:
        return "Received";
    case State::FORWARDED:
        return "Forwarded";
    case State::MISSED_ANSWERED_ELSEWHERE:
        return "Answered elsewhere";
    case State::MISSED_GROUP_CALL:
        return "Missed group call";
    case State::VOICEMAIL:
        return "Voicemail";
    case State::TEXT:
        return "Message";
    case State::SYSTEM_MESSAGE:
        return "Notice";
    default:
        return "";
    }
}

ScreenRow::Direction directionOf(const Conversation& conversation)
{
    switch (conversation.getState())
    {
    case State::MISSED:
    case State::MISSED_GROUP_CALL:
        return ScreenRow::MISSED;
    case State::RECEIVED:
    case State::MISSED_ANSWERED_ELSEWHERE:
    case State::PROGRESSING_INCOMING:
        return ScreenRow::INCOMING;
    case State::DIALLED:
    case State::PROGRESSING_OUTGOING:
        return ScreenRow::OUTGOING;
    case State::FORWARDED:
        return ScreenRow::FORWARDED;
    default:
        break;
    }
    const ActiveCall::callDirection direction = conversation.activeCallDirection();
    if (direction == ActiveCall::NO_DIRECTION)
    {
        return ScreenRow::NEITHER;
    }
    return direction == ActiveCall::OUTGOING ? ScreenRow::OUTGOING : ScreenRow::INCOMING;
}

std::string readableName(const std::string& first, const std::string& last)
{
    return last == ConversationAPI::ANONYMOUS_NAME ? "Unknown caller" : joined({first, last}, " ");
}

/** A user of the cloud of whom nothing is known is shown by his id, and is no anonymous caller. */
std::string partyName(const Conversation& conversation)
{
    const std::string& first = conversation.getFirstName();
    const std::string& last = conversation.getLastName();
    const bool isNameless = (first.empty() && last.empty()) || last == ConversationAPI::ANONYMOUS_NAME;
    if (isNameless && !conversation.getUserId().empty())
    {
        return conversation.getUserId();
    }
    return conversation.isCallAnonymous() ? "Unknown caller" : readableName(first, last);
}

std::size_t newMissedCallsOf(const Conversation& conversation)
{
    std::size_t count = 0;
    for (const auto& item : conversation.items())
    {
        const bool isMissed = item->getState() == State::MISSED || item->getState() == State::MISSED_GROUP_CALL;
        count += isMissed && !item->getViewed() ? 1 : 0;
    }
    return count;
}

std::optional<int> newVoicemailsOf(const Conversation& conversation)
{
    const auto& items = conversation.items();
    const auto voicemail =
        std::find_if(items.begin(), items.end(), [](const auto& item) { return item->isVoiceMail(); });
    if (voicemail == items.end())
    {
        return std::nullopt;
    }
    return conversation.getConversationItems()[static_cast<std::size_t>(voicemail - items.begin())]
        ->numberOfNewEvents();
}

const char* describe(ConversationAPI::ConversationSearchObserverIfc::SearchResultsType answer)
{
    switch (answer)
    {
    case ConversationAPI::ConversationSearchObserverIfc::DIRECTORY_RESULTS:
        return "Directory";
    case ConversationAPI::ConversationSearchObserverIfc::WEB_SERVICE_RESULTS:
        return "Web service";
    default:
        return "";
    }
}

ScreenRow screenRow(const Conversation& conversation, DisplayAPI::TimeStringFormatter& times)
{
    ScreenRow row;
    row.name = nameOf(conversation);
    row.number = numberOf(conversation);
    row.state = stateText(conversation.getState());
    row.direction = directionOf(conversation);
    row.liveness = describeLive(conversation.getState()).liveness;
    row.items = conversation.getConversationItemsSize();
    row.newMissedCalls = newMissedCallsOf(conversation);
    row.newVoicemails = newVoicemailsOf(conversation);
    row.time = conversation.timeStampUTC();
    row.when = row.hasTime() ? times.formatFromUTC(row.time) : "";
    row.shortId = conversation.isPhantomConversation() ? "phantom" : conversation.getShortConversationId();
    row.cloud = cloudDetailsOf(conversation);
    return row;
}
} // namespace

std::string stateText(State state)
{
    const StateText live = describeLive(state);
    return live.liveness != ScreenRow::HISTORY ? live.text : describeHistory(state);
}

std::string nameOf(const Conversation& conversation)
{
    std::string name = conversation.getDisplayName();
    if (name.empty())
    {
        name = partyName(conversation);
    }
    const ConversationAPI::SecondParty& second = conversation.secondParty();
    const std::string secondName = readableName(second.firstName, second.lastName);
    name = joined({name, secondName.empty() ? second.number : secondName}, ", ");
    if (conversation.getType() == Conversation::GROUP)
    {
        return name; // which is the group's already
    }
    const std::string group =
        conversation.getGroupName().empty() ? conversation.getGroupNumber() : conversation.getGroupName();
    return group.empty() ? name : joined({name, "(" + group + ")"}, " ");
}

std::string numberOf(const Conversation& conversation)
{
    const std::string& number = conversation.getNumber();
    const bool isNone = number == ConversationAPI::NO_NUMBER_PROVIDED || number == ConversationAPI::ANONYMOUS_NAME;
    return isNone ? "" : number;
}

std::vector<ScreenRow> screenRows(Telephone& telephone)
{
    std::vector<ScreenRow> rows;
    for (const Conversation* conversation : telephone.rows())
    {
        rows.push_back(screenRow(*conversation, telephone.times()));
    }
    return rows;
}

std::vector<ScreenRow> foundRows(Telephone& telephone)
{
    std::vector<ScreenRow> rows;
    for (const Telephone::Found& found : telephone.found())
    {
        rows.push_back(screenRow(*found.conversation, telephone.times()));
        rows.back().foundBy = describe(found.type);
    }
    return rows;
}
} // namespace Deskphone
