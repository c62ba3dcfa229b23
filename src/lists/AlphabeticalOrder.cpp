#include "lists/AlphabeticalOrder.h"

#include "ConversationAPI/Conversation.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <utility>

namespace ConversationAPI
{
namespace
{
/** Characters compare as signed values: bytes of other letters than ASCII come before all ASCII ones. */
bool precedesAlphabetically(const std::string& a, const std::string& b)
{
    const auto value = [](char c) { return static_cast<signed char>(std::tolower(static_cast<unsigned char>(c))); };
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [&value](char x, char y) { return value(x) < value(y); });
}
} // namespace

std::vector<Conversation*> inAlphabeticalOrder(const std::vector<Conversation*>& conversations)
{
    std::vector<std::pair<std::string, Conversation*>> named;
    named.reserve(conversations.size());
    for (Conversation* conversation : conversations)
    {
        named.emplace_back(conversation->getContactName(), conversation);
    }
    std::stable_sort(named.begin(), named.end(),
                     [](const auto& a, const auto& b) { return precedesAlphabetically(a.first, b.first); });
    std::vector<Conversation*> sorted;
    sorted.reserve(named.size());
    for (const auto& entry : named)
    {
        sorted.push_back(entry.second);
    }
    return sorted;
}
} // namespace ConversationAPI
