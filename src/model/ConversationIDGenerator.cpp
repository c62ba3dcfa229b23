#include "ConversationAPI/ConversationIDGenerator.h"

namespace ConversationAPI
{
void ConversationIDGenerator::callEnded(const std::string&, const std::string&, ConversationItem*) {}
} // namespace ConversationAPI
