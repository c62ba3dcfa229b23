#include "ConversationAPI/ConversationFactory.h"

#include "ConversationAPI/Conversation.h"
#include "ConversationAPI/ConversationIDGenerator.h"
#include "Log.h"

namespace ConversationAPI
{
namespace
{
constexpr const char* FACTORY_LOG_FILE = "./src/ConversationFactory";
}

ConversationFactory::ConversationFactory() = default;

ConversationFactory::~ConversationFactory() = default;

bool ConversationFactory::hasIDGenerator() const
{
    if (!idGenerator_)
    {
        CONVERSATION_LOG(FACTORY_LOG_FILE, 2, "createConversation() no id generator is set");
    }
    return idGenerator_ != nullptr;
}

Conversation* ConversationFactory::createConversation(ConversationIDGenerator& generator)
{
    auto* conversation = new Conversation(generator, itemFactory_);
    conversation->setDialStringConverter(digitAnalysis_);
    return conversation;
}

Conversation* ConversationFactory::createConversation()
{
    return hasIDGenerator() ? createConversation(*idGenerator_) : nullptr;
}

Conversation* ConversationFactory::createConversation(ConversationItem* item, ConversationIDGenerator& generator)
{
    return new Conversation(digitAnalysis_, item, generator, itemFactory_);
}

Conversation* ConversationFactory::createConversation(ConversationItem* item)
{
    if (!hasIDGenerator())
    {
        delete item;
        return nullptr;
    }
    return createConversation(item, *idGenerator_);
}

Conversation* ConversationFactory::createConversation(const std::string& firstName, const std::string& lastName,
                                                      const std::string& number, ConversationIDGenerator& generator,
                                                      long time, const std::string& searchId,
                                                      PhoneNumberIconType numberType)
{
    auto* conversation =
        new Conversation(firstName, lastName, number, generator, time, searchId, itemFactory_, numberType);
    conversation->setDialStringConverter(digitAnalysis_);
    return conversation;
}

Conversation* ConversationFactory::createConversation(const std::string& firstName, const std::string& lastName,
                                                      const std::string& number, long time, const std::string& searchId,
                                                      PhoneNumberIconType numberType)
{
    return hasIDGenerator() ? createConversation(firstName, lastName, number, *idGenerator_, time, searchId, numberType)
                            : nullptr;
}

void ConversationFactory::garbageCollectIDs()
{
    if (idGenerator_)
    {
        idGenerator_->garbageCollect();
    }
}
} // namespace ConversationAPI
