#include "ConversationAPI/ConversationMatcher.h"

#include "ConversationAPI/Conversation.h"

#include <algorithm>
#include <locale>

namespace ConversationAPI
{
namespace
{
std::string lowerCased(std::string text)
{
    const std::locale locale;
    const auto& characters = std::use_facet<std::ctype<char>>(locale);
    characters.tolower(text.data(), text.data() + text.size());
    return text;
}
} // namespace

ConversationMatcher::~ConversationMatcher() = default;

bool ConversationMatcher::matches(Conversation* conversation, const std::string& searchString)
{
    if (lowerCased(conversation->toString()).find(lowerCased(searchString)) != std::string::npos)
    {
        return true;
    }
    if (!is_digits(searchString))
    {
        return false;
    }
    const ContactNumbers numbers = conversation->contactDetails()->numbers.four();
    return std::any_of(numbers.begin(), numbers.end(),
                       [&searchString](const std::string& number)
                       { return number.find(searchString) != std::string::npos; });
}

bool is_digits(const std::string& text)
{
    return text.find_first_not_of("0123456789*#") == std::string::npos;
}
} // namespace ConversationAPI
