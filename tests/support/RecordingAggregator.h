/** An aggregator that answers every look-up with its first conversation and writes down what it is asked for. */
#pragma once

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationAggregatorIfc.h"
#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/ConversationObserver.h"

namespace Testing
{
using namespace ConversationAPI;
using Notes = std::vector<std::string>;
using Text = const std::string&;

/** A display; it knows the list that it was told last. */
struct Display : ConversationObserver
{
    explicit Display(std::string called = "") : name(std::move(called)) {}
    void conversationListChanged(ConversationList* list) override
    {
        ++timesTold;
        lastList = list;
        whenTold();
    }
    void conversationPresenceUpdated(Conversation*) override {}
    void conversationUpdatedAndMoved(Conversation*, int) override {}
    void newConversation(Conversation*, int) override {}
    void conversationDeleted(Conversation*) override {}

    std::string name;
    int timesTold = 0;
    ConversationList* lastList = nullptr;
    std::function<void()> whenTold = [] {};
};

struct RecordingAggregator : ConversationAggregatorIfc
{
    RecordingAggregator(std::string called, Notes& told) : name(std::move(called)), notes(told) {}

    void conversationUpdated(Conversation*) override { note("updated"); }
    void conversationsChanged() override { note("changed"); }
    void removeActiveItemForCall(Text, ConversationSourceIfc*) override { note("ended"); }
    bool hasConversationWithConversationId(Text) override { return note("has id") != nullptr; }
    void conversationSourcesReady() override { note("ready"); }
    ConversationList* getConversations() const override { return (note("list"), list.get()); }
    Conversation* getConversation(unsigned index) const override { return note("at " + std::to_string(index)); }
    Conversation* getConversation(std::string callId) const override { return note("call " + callId); }
    Conversation* getConversationByConversationID(Text id) override { return note("id " + id); }
    Conversation* getConversationByContact(Text a, Text b, Text c) const override { return note("any " + a + b + c); }
    Conversation* getDirectConversationByContact(Text a, Text b, Text c) const override
    {
        return note("1:1 " + a + b + c);
    }
    Conversation* getConversationForUser(Text user) const override { return note("user " + user); }
    void deleteConversation(Text id) override { note("delete " + id); }
    void deleteConversations() override { note("delete all"); }
    bool markAllMissedCallsRead() override { return note("read") != nullptr; }
    void setConversationItemFactory(ConversationItemFactory*) override { note("factory"); }
    void addObserver(ConversationObserver* added) override
    {
        note("add " + nameOf(added));
        observers.push_back(added);
    }
    void removeObserver(ConversationObserver* removed) override
    {
        note("remove " + nameOf(removed));
        observers.erase(std::remove(observers.begin(), observers.end(), removed), observers.end());
    }
    void start() override { note("start"); }
    void setSourcesInPreferredOrder(ConversationSourceIfc*, ConversationSourceIfc*, bool) override { note("sources"); }
    void setSources(std::vector<ConversationSourceIfc*>, bool) override { note("sources"); }
    void clearTemporaryConversations() override { note("clear"); }
    void makeTemporaryConversationPermanent(Conversation* kept) override { note("keep " + kept->getConversationId()); }
    void makeConversationPermanent(Text id) override { note("keep id " + id); }
    Conversation* getConversationThatHasAnyNumberMatching(Text number) const override { return note("has " + number); }

    void tellListChanged() const
    {
        std::for_each(observers.begin(), observers.end(), [this](auto* o) { o->conversationListChanged(list.get()); });
    }
    static std::string nameOf(ConversationObserver* observer)
    {
        const auto* display = dynamic_cast<Display*>(observer);
        return display ? display->name : "another";
    }
    Conversation* note(const std::string& what) const
    {
        notes.push_back(name + " " + what);
        return list->atIndex(0);
    }

    std::string name;
    Notes& notes;
    std::vector<ConversationObserver*> observers;
    std::unique_ptr<ConversationList> list = std::make_unique<ConversationList>();
};
} // namespace Testing
