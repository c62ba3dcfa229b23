/**
 * The item aggregator with a journal, the source of live calls and an observer that writes down what it is told.
 *
 * Conversations are told as text: "*Ann Lee: c1/10 e7" is an extra live one with call c1 in state 10 and the
 * history entry e7. Numbers of up to five digits are extensions, which the digit analysis leaves alone.
 */
#pragma once

#include "ConversationAPI/ActiveCallConversationItemSource.h"
#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationFactory.h"
#include "ConversationAPI/ConversationItemAggregator.h"
#include "ConversationAPI/ConversationItemFactory.h"
#include "ConversationAPI/ConversationItemSourceIfc.h"
#include "ConversationAPI/ConversationParticipantFactory.h"
#include "ConversationAPI/ConversationSourceObserverIfc.h"
#include "ConversationAPI/MissedCallConversationItem.h"
#include "host/DigitAnalysis.h"

namespace Aggregation
{
using namespace ConversationAPI;
using Texts = std::vector<std::string>;

inline std::string join(const Texts& texts)
{
    std::string all;
    for (const std::string& text : texts)
    {
        all += (all.empty() ? "" : " ") + text;
    }
    return all;
}

inline std::string describe(const ConversationItem& item)
{
    const std::string call = item.getCallId();
    return call.empty() ? item.getItemId() : call + "/" + std::to_string(static_cast<int>(item.getState()));
}

inline std::string describe(const Conversation& conversation)
{
    std::string text = (conversation.extraActiveConversation() ? "*" : "") + conversation.getContactName() + ":";
    for (const auto& item : conversation.items())
    {
        text += " " + describe(*item);
    }
    return text;
}

/** A journal that keeps what it is given and deletes what it is told to. */
class Journal : public ConversationItemSourceIfc
{
  public:
    std::vector<ConversationItem*> getConversationItems() override
    {
        ++timesAsked;
        std::vector<ConversationItem*> items;
        for (const auto& item : held)
        {
            items.push_back(item ? item->clone() : nullptr);
        }
        return items;
    }

    void reloadCalls(const Texts& entries) override
    {
        note("reload " + join(entries));
        for (const auto& item : held)
        {
            if (observer && std::count(entries.begin(), entries.end(), item->getItemId()) != 0)
            {
                observer->newConversationItem(item->clone());
            }
        }
    }

    void deleteAllCalls() override
    {
        held.clear();
        note("deleteAll");
    }

    void deleteCalls(const Texts& entries) override
    {
        held.erase(std::remove_if(held.begin(), held.end(),
                                  [&](const auto& item)
                                  { return std::count(entries.begin(), entries.end(), item->getItemId()) != 0; }),
                   held.end());
        note("delete " + join(entries));
    }

    void setObserver(ConversationItemSourceObserverIfc* told) override { observer = told; }
    void clearObserver() override { observer = nullptr; }
    int getItemSourceType() override { return 1; }

    bool ageAllMissedCalls(const Texts& entries) override
    {
        note("age " + join(entries));
        return false;
    }

    void keep(ConversationItem* item) { held.emplace_back(item); }

    void add(ConversationItem* item)
    {
        keep(item);
        observer->newConversationItem(item->clone());
    }

    std::vector<std::unique_ptr<ConversationItem>> held;
    ConversationItemSourceObserverIfc* observer = nullptr;
    int timesAsked = 0;
    std::string name;
    Texts* notes = nullptr;
    std::function<void()> whenCalled = [] {};

  private:
    void note(const std::string& text)
    {
        if (notes)
        {
            notes->push_back(name + text);
        }
        std::exchange(whenCalled, [] {})();
    }
};

class Recorder : public ConversationSourceObserverIfc
{
  public:
    using Reaction = std::function<void(Conversation*)>;

    void conversationUpdated(Conversation* conversation) override
    {
        note("updated " + describe(*conversation), conversation);
    }
    void conversationsChanged() override { note("changed"); }
    void removeActiveItemForCall(const std::string& callId, ConversationSourceIfc* source) override
    {
        note((source ? "not null " : "ended ") + callId);
    }
    bool hasConversationWithConversationId(const std::string&) override { return false; }
    void conversationSourcesReady() override { note("ready"); }

    /** What was told since the last time. */
    Texts take() { return std::exchange(told, {}); }

    Texts told;
    Reaction reaction; ///< runs once

  private:
    void note(const std::string& text, Conversation* conversation = nullptr)
    {
        told.push_back(text);
        if (const Reaction reacts = std::exchange(reaction, nullptr))
        {
            reacts(conversation);
        }
    }
};

struct World
{
    World()
    {
        conversations.setConversationItemFactory(&items);
        conversations.setConversationIDGenerator(&ids);
        conversations.setDigitAnalysisServiceIfc(&digits());
        ids.setConversationSources({&aggregator});
        aggregator.addObserver(&observer);
        aggregator.addItemSource(&journal);
        aggregator.addItemSource(&calls);
    }

    static Host::DigitAnalysis& digits()
    {
        static Host::DigitAnalysis service;
        return service;
    }

    static long& now()
    {
        static long seconds = 100;
        return seconds;
    }

    static std::time_t clock(std::time_t* seconds) { return *seconds = static_cast<std::time_t>(now()); }

    static CallPartyIdentifier party(const std::string& number, const std::string& first, const std::string& last = "")
    {
        return CallPartyIdentifier(first, last, number, CallPartyIdentifier::NO_ICON, "", false);
    }

    static ActiveCall call(const std::string& id, ActiveCall::activeCallState state, const std::string& number,
                           const std::string& first = "", const std::string& last = "")
    {
        ActiveCall made(&clock, id, party(number, first, last), ActiveCall::NO_CONFERENCE);
        made.setState(state);
        return made;
    }

    /** An event of call control, a second after the one before. */
    void event(const std::string& id, ActiveCall::activeCallState state, const std::string& number,
               const std::string& first = "", const std::string& last = "")
    {
        ++now();
        calls.activeCallEvent(call(id, state, number, first, last));
    }

    /** A missed call, a second after what was before; `entry` is its journal entry. */
    ConversationItem* missed(const std::string& entry, const std::string& number, const std::string& first = "",
                             const std::string& last = "")
    {
        ConversationItem* item = items.getMissedCallConversationItem(++now(), number, first, last);
        item->setEntryId(entry);
        return item;
    }

    void history(const std::string& entry, const std::string& number, const std::string& first = "",
                 const std::string& last = "")
    {
        journal.add(missed(entry, number, first, last));
    }

    std::unique_ptr<Conversation> contact(const std::string& name, const std::string& work, const std::string& mobile)
    {
        std::unique_ptr<Conversation> made(
            conversations.createConversation(name, "", work, 0, "", CallPartyIdentifier::WORK_1));
        made->setPhoneNumbers(work, "", mobile, "", work, CallPartyIdentifier::WORK_1);
        made->setContactSource(Conversation::DIRECTORY_CONTACT);
        made->init();
        return made;
    }

    Texts rows() const
    {
        Texts texts;
        for (const Conversation* conversation : list())
        {
            texts.push_back(describe(*conversation));
        }
        return texts;
    }

    /** The conversation that holds the call or history entry; null when none does. */
    Conversation* holding(const std::string& callOrEntry) const
    {
        for (Conversation* conversation : list())
        {
            for (const auto& item : conversation->items())
            {
                if (item->getCallId() == callOrEntry || item->getItemId() == callOrEntry)
                {
                    return conversation;
                }
            }
        }
        return nullptr;
    }

    std::string idOf(const std::string& callOrEntry) const
    {
        const Conversation* found = holding(callOrEntry);
        return found ? found->getConversationId() : "none";
    }

    ConversationList& list() const { return *aggregator.getConversations(); }

    /** What contradicts the sources or the order; "" when nothing does. */
    std::string contradictions();

    ConversationParticipantFactory participants{&digits()};
    ConversationItemFactory items{&participants, &digits()};
    RandomCachingConversationIDGenerator ids;
    ConversationFactory conversations;
    Journal journal;
    ActiveCallConversationItemSource calls{&items};
    Recorder observer;
    ConversationItemAggregator aggregator{&conversations};
};

inline std::string World::contradictions()
{
    std::map<std::string, int> shown, entries;
    std::set<std::string> known, trimmed;
    std::string found;
    for (const Conversation* row : list())
    {
        found += row->items().empty() ? "; an empty conversation" : "";
        for (const auto& item : row->items())
        {
            ++shown[describe(*item)];
            found += item->conversationId() == row->getConversationId() ? "" : "; unstamped " + describe(*item);
        }
        for (const std::string& entry : row->getJournalServiceEntries())
        {
            ++entries[entry];
            trimmed.insert(row->getConversationItemsSize() >= 10 ? entry : "");
        }
    }
    for (ConversationItem* live : calls.getConversationItems())
    {
        found += shown[describe(*live)] == 1 ? "" : "; not once: " + describe(*live);
        known.insert(describe(*live));
        delete live;
    }
    for (const auto& item : journal.held)
    {
        const std::string entry = *known.insert(item->getItemId()).first;
        found += entries[entry] == 1 && shown[entry] <= 1 ? "" : "; not in one row: " + entry;
        found += shown[entry] == 1 || trimmed.count(entry) != 0 ? "" : "; lost " + entry;
    }
    for (const auto& other : shown)
    {
        found += known.count(other.first) != 0 ? "" : "; nobody's " + other.first;
    }
    list().sort();
    const auto isWrong = [](const Conversation* a, const Conversation* b) { return *b < *a; };
    const bool isSorted = std::adjacent_find(list().begin(), list().end(), isWrong) == list().end();
    return found + (isSorted ? "" : "; not sorted");
}
} // namespace Aggregation
