/**
 * Makes every conversation of the library.
 *
 * Item factory, identifier generator, digit analysis and contact storage are set before the first conversation
 * is made, not owned, and outlive the conversations. Whoever asks for a conversation owns it; without a
 * generator there is none, and the answer is null. UI thread only.
 */
#pragma once

#include "platform/CallPartyIdentifier.h"

#include <string>

class DigitAnalysisServiceIfc;

namespace ConversationAPI
{
class ContactStorageIfc;
class Conversation;
class ConversationIDGenerator;
class ConversationItem;
class ConversationItemFactory;

class ConversationFactory
{
  public:
    using PhoneNumberIconType = CallPartyIdentifier::PhoneNumberIconType;

    ConversationFactory();
    virtual ~ConversationFactory();

    ConversationFactory(const ConversationFactory&) = delete;
    ConversationFactory& operator=(const ConversationFactory&) = delete;

    void setConversationItemFactory(ConversationItemFactory* factory) { itemFactory_ = factory; }
    void setConversationIDGenerator(ConversationIDGenerator* generator) { idGenerator_ = generator; }

    /** Null when there is none. */
    ConversationIDGenerator* getConversationIDGenerator() const { return idGenerator_; }
    void setDigitAnalysisServiceIfc(DigitAnalysisServiceIfc* digitAnalysis) { digitAnalysis_ = digitAnalysis; }
    void setContactStorage(ContactStorageIfc* storage) { contactStorage_ = storage; }

    /** Null when contacts cannot be saved. */
    ContactStorageIfc* getContactStorage() const { return contactStorage_; }

    /** An empty conversation. */
    Conversation* createConversation(ConversationIDGenerator& generator);
    Conversation* createConversation();

    /** A conversation built around the item, which it owns. */
    Conversation* createConversation(ConversationItem* item, ConversationIDGenerator& generator);
    Conversation* createConversation(ConversationItem* item);

    /**
     * A contact; `time` is that of its placeholder, `searchId` names the search that found it or is "". Call init()
     * when its details are complete: an id given before would be that of any contact of the same number.
     */
    Conversation* createConversation(const std::string& firstName, const std::string& lastName,
                                     const std::string& number, ConversationIDGenerator& generator, long time,
                                     const std::string& searchId, PhoneNumberIconType numberType);
    Conversation* createConversation(const std::string& firstName, const std::string& lastName,
                                     const std::string& number, long time, const std::string& searchId,
                                     PhoneNumberIconType numberType);

    /** Has the generator forget the identifiers that nobody uses. */
    void garbageCollectIDs();

  private:
    bool hasIDGenerator() const;

    ConversationItemFactory* itemFactory_ = nullptr;
    ConversationIDGenerator* idGenerator_ = nullptr;
    DigitAnalysisServiceIfc* digitAnalysis_ = nullptr;
    ContactStorageIfc* contactStorage_ = nullptr;
};
} // namespace ConversationAPI
