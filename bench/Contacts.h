/** Invented contacts, half of which have calls in the history, and a directory that holds them. */
#pragma once

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationFactory.h"
#include "ConversationAPI/ConversationIDCondition.h"
#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/ConversationSourceIfc.h"
#include "ConversationAPI/IdsInUseIfc.h"
#include "JournalRecords.h"

#include <string>
#include <vector>

namespace Bench
{
struct ContactRecord
{
    std::string firstName;
    std::string lastName;
    std::string workNumber;
    std::string mobileNumber;
};

inline std::string partyNumber(std::size_t party)
{
    return "+4930" + std::to_string(1'000'000 + party);
}

/** As many calls as parties, each with one. */
inline std::vector<CallRecord> oneCallEach(std::size_t count)
{
    std::vector<CallRecord> records;
    for (std::size_t i = 0; i < count; ++i)
    {
        records.push_back({"e" + std::to_string(i), journalTime(static_cast<long>(i * 7919 % count) * 97),
                           partyNumber(i), "First" + std::to_string(i), "Surname" + std::to_string(i),
                           static_cast<int>(i % 3)});
    }
    return records;
}

/** Of every two contacts one has called; each has a second number from which nobody called. */
inline std::vector<ContactRecord> contactRecords(std::size_t count)
{
    std::vector<ContactRecord> records;
    for (std::size_t i = 0; i < count; ++i)
    {
        const std::size_t party = i % 2 == 0 ? i / 2 : 5'000'000 + i;
        records.push_back({"Known" + std::to_string(i), "Contact" + std::to_string(i), partyNumber(party),
                           "+49171" + std::to_string(1'000'000 + i)});
    }
    return records;
}

class ContactSource : public ConversationAPI::ConversationSourceIfc, public ConversationAPI::IdsInUseIfc
{
  public:
    void add(ConversationAPI::ConversationFactory& factory, const ContactRecord& record)
    {
        ConversationAPI::Conversation* contact = factory.createConversation(
            record.firstName, record.lastName, record.workNumber, 0, "", CallPartyIdentifier::WORK_1);
        contact->setPhoneNumbers(record.workNumber, "", record.mobileNumber, "", record.workNumber,
                                 CallPartyIdentifier::WORK_1);
        contact->setContactSource(ConversationAPI::Conversation::DIRECTORY_CONTACT);
        contact->setSource(this);
        contact->init();
        contacts_.push_back(contact);
    }

    ConversationAPI::ConversationList* getConversations() const override { return &contacts_; }
    ConversationAPI::Conversation* getConversation(const std::string& id) override
    {
        return contacts_.find(ConversationAPI::ConversationListConditions::ConversationIDCondition(id));
    }
    std::vector<std::string> getInUseConversationIds() override
    {
        std::vector<std::string> ids;
        contacts_.getInUseConversationIds(ids);
        return ids;
    }
    void appendIdHashes(std::vector<std::uint32_t>& hashes) const override { contacts_.appendIdHashes(hashes); }
    void addObserver(ConversationAPI::ConversationSourceObserverIfc*) override {}
    void removeObserver(ConversationAPI::ConversationSourceObserverIfc*) override {}
    ConversationAPI::Conversation* getConversationForUser(const std::string&) override { return nullptr; }
    void clearSearchResults() override {}
    void voiceMailChanged(const std::string&, const std::string&) override {}
    void deleteConversation(const std::string&) override {}
    void deleteConversations() override {}
    int getSourceType() override { return 2; }
    void conversationUpdated(ConversationAPI::Conversation*) override {}
    void markAllMissedCallsRead() override {}

  private:
    mutable ConversationAPI::ConversationList contacts_;
};
} // namespace Bench
