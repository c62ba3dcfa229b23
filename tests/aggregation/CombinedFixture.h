/**
 * The item aggregator of AggregatorFixture.h and a directory, combined for a display that writes down what it is told.
 *
 * Events are told as text ("ring c1 4711", "past e1 4712", "on end c1" for what the display does when it is told
 * something next), and so are rows: "B *Ann: c1/10 e7" is the row with the
 * second id that was seen, "P" stands for the id that phantoms show.
 */
#pragma once

#include "AggregatorFixture.h"
#include "ConversationAPI/ConversationAggregator.h"
#include "ConversationAPI/ConversationIDCondition.h"
#include "ConversationAPI/WellKnownNames.h"
#include "host/DisplayModel.h"

#include <sstream>

namespace Aggregation
{
/** Contacts with times of their own, all before that of the first call. */
class Directory : public ConversationSourceIfc
{
  public:
    ConversationList* getConversations() const override { return &held; }
    Conversation* getConversation(const std::string& id) override
    {
        return held.find(ConversationListConditions::ConversationIDCondition(id));
    }
    void addObserver(ConversationSourceObserverIfc* added) override { observers.push_back(added); }
    void removeObserver(ConversationSourceObserverIfc* gone) override
    {
        observers.erase(std::remove(observers.begin(), observers.end(), gone), observers.end());
    }
    Conversation* getConversationForUser(const std::string& user) override { return user == "u" ? &any() : nullptr; }
    std::vector<std::string> getInUseConversationIds() override
    {
        Texts ids;
        held.getInUseConversationIds(ids);
        return ids;
    }
    void clearSearchResults() override { notes.push_back("clear"); }
    void voiceMailChanged(const std::string& from, const std::string& to) override { notes.push_back(from + ">" + to); }
    void deleteConversation(const std::string& id) override
    {
        notes.push_back("delete");
        held.findAndDeleteConversationsThatMatch(ConversationListConditions::ConversationIDCondition(id));
    }
    void deleteConversations() override { notes.push_back("delete all"); }
    int getSourceType() override { return type; }
    void conversationUpdated(Conversation*) override { notes.push_back("updated"); }
    void markAllMissedCallsRead() override { notes.push_back("read"); }

    Conversation& any() const { return *held.atIndex(0); }
    Conversation* named(const std::string& name) const
    {
        const auto found = std::find_if(held.begin(), held.end(),
                                        [&](const auto* contact) { return contact->getFirstName() == name; });
        return found == held.end() ? nullptr : *found;
    }

    void tell(Conversation* contact)
    {
        const auto told = observers;
        std::for_each(told.begin(), told.end(), [&](auto* each) { each->conversationUpdated(contact); });
    }
    void tellChanged()
    {
        const auto told = observers;
        std::for_each(told.begin(), told.end(), [](auto* each) { each->conversationsChanged(); });
    }

    mutable ConversationList held; ///< which knows no const list
    std::vector<ConversationSourceObserverIfc*> observers;
    Texts notes;
    int type = 2;
};

/** A display that keeps rows by what it is told alone, and names ids by letters in the order in which it sees them. */
class Screen : public Host::DisplayModel
{
  public:
    void conversationListChanged(ConversationList* list) override
    {
        DisplayModel::conversationListChanged(list);
        note("list");
    }
    void conversationPresenceUpdated(Conversation* row) override { note("presence " + nameOf(*row)); }
    void conversationUpdatedAndMoved(Conversation* row, int index) override
    {
        DisplayModel::conversationUpdatedAndMoved(row, index);
        note("moved " + nameOf(*row) + "@" + std::to_string(index));
    }
    void newConversation(Conversation* row, int index) override
    {
        DisplayModel::newConversation(row, index);
        note("new " + nameOf(*row) + "@" + std::to_string(index));
    }
    void conversationDeleted(Conversation* row) override
    {
        DisplayModel::conversationDeleted(row);
        note("deleted " + nameOf(*row));
    }

    std::string nameOf(const Conversation& row)
    {
        const std::string id = row.getConversationId();
        return id == PHANTOM_CONVERSATION_ID
                   ? "P"
                   : std::string(1, names.emplace(id, static_cast<char>('A' + names.size())).first->second);
    }

    std::string take() { return join(std::exchange(told, {})); }

    Texts told;
    std::function<void()> reaction = [] {}; ///< runs once

  private:
    void note(const std::string& text)
    {
        told.push_back(text);
        std::exchange(reaction, [] {})();
    }

    std::map<std::string, char> names;
};

struct Combined : World
{
    explicit Combined(bool isReady = true)
    {
        ids.setConversationSources({&aggregator, &directory});
        combined.addObserver(&screen);
        combined.setSources({&aggregator, &directory}, true);
        if (isReady)
        {
            aggregator.sourceSubscribed();
        }
        screen.take();
    }
    ~Combined() { combined.setSources({}, false); }

    /** Lets what the text says happen. */
    void run(const std::string& text)
    {
        std::istringstream words(text);
        std::string what, id, number, name;
        words >> what >> id >> number >> name;
        number = number == "-" ? "" : number;
        static const std::map<std::string, ActiveCall::activeCallState> states = {
            {"ring", ActiveCall::INCOMING_CALL},
            {"dial", ActiveCall::OUTGOING_CALL},
            {"answer", ActiveCall::CONNECTED},
            {"hold", ActiveCall::LOCAL_ON_HOLD},
            {"held", ActiveCall::REMOTE_ON_HOLD},
            {"group", ActiveCall::GROUP_PICKUP_INCOMING},
            {"pickup", ActiveCall::GROUP_PICKUP_CONNECTED}};
        const std::map<std::string, std::function<void()>> others = {
            {"conference", [&] { calls.activeCallEvent(conference(id, number, name)); }},
            {"end", [&] { calls.clearActiveCallEvent(id); }},
            {"past", [&] { history(id, number, name); }},
            {"contact", [&] { contactIs(id, number, name); }},
            {"delete", [&] { combined.deleteConversation(rowOf(id) ? rowOf(id)->getConversationId() : id); }},
            {"regroup", [&] { aggregator.conversationItemsChanged(); }},
            {"combine", [&] { combined.conversationsChanged(); }},
            {"clear", [&] { combined.clearTemporaryConversations(); }},
            {"read", [&] { combined.markAllMissedCallsRead(); }},
            {"leave", [&] { combined.removeObserver(&screen); }},
            {"on", [&] { screen.reaction = [this, then = text.substr(3)] { run(then); }; }}};
        if (const auto other = others.find(what); other != others.end())
        {
            other->second();
            return;
        }
        number = numbers[id] = number.empty() ? numbers[id] : number;
        event(id, states.at(what), number, name);
    }

    static ActiveCall conference(const std::string& id, const std::string& number, const std::string& other)
    {
        ++now();
        return ActiveCall(&clock, id, party(number, ""), party(other, ""), ActiveCall::SMALL_CONFERENCE);
    }

    /** A new contact or other numbers of a known one; "gone" as a number takes it away. */
    void contactIs(const std::string& name, const std::string& work, const std::string& mobile)
    {
        Conversation* known = directory.named(name);
        if (work == "gone")
        {
            directory.held.remove(known);
            directory.tellChanged();
            return;
        }
        if (!known)
        {
            known = conversations.createConversation(name, "", work, ++contactTime, "", CallPartyIdentifier::WORK_1);
        }
        known->setPhoneNumbers(work, "", mobile, "", work, CallPartyIdentifier::WORK_1);
        known->setContactSource(Conversation::DIRECTORY_CONTACT);
        known->setSource(&directory);
        known->init(contactTime);
        directory.held.push_back(known);
        directory.tell(known);
    }

    ConversationList& rowsOf() const { return *combined.getConversations(); }

    /** The combined row that holds the call or history entry, or is called so; null when none does. */
    Conversation* rowOf(const std::string& sought) const
    {
        for (Conversation* row : rowsOf())
        {
            const auto& held = row->items();
            const auto isIt = [&](const auto& item)
            { return item->getCallId() == sought || item->getItemId() == sought; };
            if (std::any_of(held.begin(), held.end(), isIt) || row->getFirstName() == sought)
            {
                return row;
            }
        }
        return nullptr;
    }

    std::string shown()
    {
        std::string text;
        for (const Conversation* row : rowsOf())
        {
            text += (text.empty() ? "" : " | ") + screen.nameOf(*row) + " " + describe(*row);
        }
        return text;
    }

    /** What the combined list contradicts: its sources, its order, the display; "" when nothing. */
    std::string disagreements() const
    {
        std::map<std::string, int> counts;
        std::set<std::string> seen;
        std::string found;
        for (const Conversation* row : rowsOf())
        {
            found += seen.insert(row->getConversationId()).second ? "" : "; twice the id of " + describe(*row);
            for (const auto& item : row->items())
            {
                ++counts[describe(*item)];
            }
        }
        for (const Conversation* own : list())
        {
            for (const auto& item : own->items())
            {
                found += --counts[describe(*item)] == 0 ? "" : "; not once: " + describe(*item);
            }
        }
        for (const auto& count : counts)
        {
            found += count.second <= 0 ? "" : "; nobody's " + count.first;
        }
        const auto isWrong = [](const Conversation* a, const Conversation* b) { return *b < *a; };
        const bool isSorted = std::adjacent_find(rowsOf().begin(), rowsOf().end(), isWrong) == rowsOf().end();
        const bool isMirrored = screen.rows() == std::vector<Conversation*>(rowsOf().begin(), rowsOf().end());
        return found + (isSorted ? "" : "; not sorted") + (isMirrored ? "" : "; display shows something else");
    }

    /** The id of the row of each history entry. */
    std::map<std::string, std::string> historyIds() const
    {
        std::map<std::string, std::string> found;
        for (const Conversation* row : rowsOf())
        {
            for (const auto& item : row->items())
            {
                found.emplace(item->getCallId().empty() ? item->getItemId() : "", row->getConversationId());
            }
        }
        found.erase("");
        return found;
    }

    Directory directory;
    ConversationAggregator combined{&items};
    Screen screen;
    std::map<std::string, std::string> numbers; ///< of calls
    long contactTime = 0;
};
} // namespace Aggregation
