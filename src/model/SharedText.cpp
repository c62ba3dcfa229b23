#include "ConversationAPI/SharedText.h"

namespace ConversationAPI
{
const std::string& SharedText::emptyText() noexcept
{
    static const std::string empty;
    return empty;
}

void SharedText::assign(const std::string& text)
{
    if (str() != text)
    {
        *this = SharedText(text);
    }
}
} // namespace ConversationAPI
