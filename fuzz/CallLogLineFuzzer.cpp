/** Lines of the network's call log, one by one and as a log: what is understood is written and read without a loss. */
#include "ConversationAPI/BroadsoftServiceConversationItemSource.h"
#include "ConversationAPI/ConversationList.h"
#include "FuzzTarget.h"
#include "host/Clock.h"
#include "platform/BroadsoftServiceIfc.h"
#include "platform/ClientUtils.h"
#include "support/Phone.h"

#include <algorithm>
#include <memory>

namespace
{
using namespace ConversationAPI;
using Texts = std::vector<std::string>;

struct Service : BroadsoftServiceIfc
{
    Texts entries() override { return {}; }
    void deleteCallLogEntry(const std::string& path) override { deleted.push_back(path); }

    Texts deleted;
};

/** A source and what it is built of. */
struct CallLog
{
    std::unique_ptr<ConversationItem> item(const std::string& line)
    {
        return std::unique_ptr<ConversationItem>(source.stringToConversationItem(line, false));
    }

    std::size_t shown(const char* filter)
    {
        source.bwCallLogFilterChanged(filter);
        return source.getConversations()->size();
    }

    Testing::Phone phone;
    Service service;
    BroadsoftServiceConversationItemSource source{&service, &phone.items, &phone.conversations};
};

bool isCall(const ConversationItem& item)
{
    return item.isEndingRemoteCall();
}

std::string typeOf(const ConversationItem& item)
{
    switch (item.getState())
    {
    case ConversationItemState::DIALLED:
        return "Placed";
    case ConversationItemState::MISSED:
        return "Missed";
    case ConversationItemState::RECEIVED:
        return "Received";
    default:
        return "Personal";
    }
}

std::string describe(const ConversationItem& item)
{
    const ConversationParticipant party = item.getParticipantsCopy().at(0);
    return typeOf(item) + "|" + item.getItemId() + "|" + party.getNumber() + "|" + party.getFirstName() + "|" +
           party.getSurname() + "|" + std::to_string(item.timeStampUTC());
}

/** The line that tells of this item. */
std::string lineOf(const ConversationItem& item)
{
    const ConversationParticipant party = item.getParticipantsCopy().at(0);
    std::string name = party.getFirstName();
    std::replace(name.begin(), name.end(), ' ', '#');
    return "{{" + Host::localIso8601(item.timeStampUTC()) + "}" + party.getNumber() + ":" + name + ":{" +
           item.getItemId() + "}:" + typeOf(item) + ":*}}";
}

std::string withBlanks(std::string text)
{
    std::replace(text.begin(), text.end(), '#', ' ');
    return text;
}

/** What the item tells stands in the line, in the line's order. */
bool isToldBy(const ConversationItem& item, const std::string& line)
{
    const ConversationParticipant party = item.getParticipantsCopy().at(0);
    const std::string told = "}" + party.getNumber() + ":" + party.getFirstName() + ":{" + item.getItemId() + "}:";
    return withBlanks(line).find(withBlanks(told) + (isCall(item) ? typeOf(item) : "")) != std::string::npos;
}

bool isWrittenWithFourDigits(long time)
{
    constexpr long YEAR_1400 = -17987443200;
    constexpr long YEAR_10000 = 253402300800;
    return time >= YEAR_1400 && time < YEAR_10000;
}

void tryLine(CallLog& log, const std::string& line)
{
    const std::unique_ptr<ConversationItem> item = log.item(line);
    const std::unique_ptr<Conversation> conversation(log.source.stringToConversation(line));
    Fuzz::expect((conversation != nullptr) == (item != nullptr), "an item is understood when its conversation is");
    if (!item)
    {
        return;
    }
    const std::string found = describe(*item);
    Fuzz::expect(isToldBy(*item, line), "an item tells what the line tells", found);
    Fuzz::expect(describe(*conversation->initialItem()) == found, "the conversation holds the same item", found);
    Fuzz::expect(conversation->getConversationId() == conversation->initialItem()->conversationId(),
                 "item and conversation have one id", conversation->getConversationId());
    Fuzz::expect(isCall(*item) || item->timeStampUTC() == 0, "a contact has no time", found);
    if (isWrittenWithFourDigits(item->timeStampUTC()))
    {
        const std::unique_ptr<ConversationItem> again = log.item(lineOf(*item));
        Fuzz::expect(again && describe(*again) == found, "a line that is written anew is read as the same", found);
    }
}

/** Everything that is understood is there once, is shown by its filter, and can be asked to be deleted. */
void tryLog(CallLog& log, const Texts& lines)
{
    log.source.broadsoftCallLogChanged(lines, lines);
    const Testing::Items items = log.source.getConversationItems();
    const auto calls = static_cast<std::size_t>(
        std::count_if(items.begin(), items.end(), [](const auto* item) { return isCall(*item); }));
    Testing::deleteAll(items);
    const Texts ids = log.source.getInUseConversationIds();
    Fuzz::expect(ids.size() == items.size(), "there are as many conversations as items");
    Fuzz::expect(!Fuzz::hasDuplicates(ids), "no id stands for two conversations");
    Fuzz::expect(log.shown("CvuDispIF.Missed") + log.shown("CvuDispIF.Received") + log.shown("CvuDispIF.Dialled") ==
                     calls,
                 "every call is shown by one filter");
    log.source.sortBroadsoftCallLogs(0);
    log.source.sortBroadsoftCallLogs(1);
    for (const std::string& id : ids)
    {
        Fuzz::expect(log.source.getConversation(id) != nullptr, "a conversation is found by its id", id);
        log.source.deleteConversation(id);
    }
    Fuzz::expect(log.service.deleted.size() == ids.size(), "the service is asked to delete each entry");
}
} // namespace

void Fuzz::tryInput(const std::string& input)
{
    CallLog log;
    tryLine(log, input);
    const Texts lines = ClientUtils::tokenizeString(input, '\n');
    for (const std::string& line : lines)
    {
        tryLine(log, line);
    }
    tryLog(log, lines);
}
