#include "lists/ListMembers.h"

#include <utility>

namespace ConversationAPI
{
ListMember* ListMembers::find(const Conversation* conversation) const
{
    if (!conversation || empty())
    {
        return nullptr;
    }
    if (!isIndexed_)
    {
        makeIndex();
    }
    ListMember* const* found = byConversation_.findHash(hashOf(conversation), [conversation](const ListMember* member)
                                                        { return member->conversation == conversation; });
    return found ? *found : nullptr;
}

ListMember& ListMembers::add(Conversation* conversation)
{
    ListMember* member = nullptr;
    if (unused_.empty())
    {
        member = &members_.emplace_back();
    }
    else
    {
        member = unused_.back();
        unused_.pop_back();
    }
    member->conversation = conversation;
    if (isIndexed_)
    {
        byConversation_.addHash(hashOf(conversation), member);
    }
    return *member;
}

void ListMembers::remove(ListMember& member)
{
    if (isIndexed_)
    {
        byConversation_.removeHash(hashOf(member.conversation), &member);
    }
    member = ListMember();
    unused_.push_back(&member);
}

ListMembers::Detached ListMembers::detachAll()
{
    byConversation_.clear();
    isIndexed_ = false;
    unused_.clear();
    return std::exchange(members_, Detached());
}

void ListMembers::makeIndex() const
{
    byConversation_.reserve(members_.size());
    for (ListMember& member : members_)
    {
        if (member.conversation)
        {
            byConversation_.addHash(hashOf(member.conversation), &member);
        }
    }
    isIndexed_ = true;
}

/** Of an address the middle tells most: the last bits are always the same, the first ones nearly always. */
std::uint32_t ListMembers::hashOf(const Conversation* conversation)
{
    constexpr std::uint64_t GOLDEN_RATIO = 0x9E3779B97F4A7C15U;
    return static_cast<std::uint32_t>((reinterpret_cast<std::uintptr_t>(conversation) * GOLDEN_RATIO) >> 32U);
}
} // namespace ConversationAPI
