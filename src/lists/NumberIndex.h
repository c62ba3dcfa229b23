/**
 * Which conversation of a list has a telephone number: one for each number, the last that claimed it.
 *
 * Lists are filled and emptied far more often than they are asked for a number: what is claimed and given up is
 * written down, and the index is brought up to date when it is asked or when too much has gathered. Of conversations
 * that fill an empty index not even their numbers are written down: all changes that they tell of later come behind.
 *
 * Forgetting a conversation takes time by its numbers, not by those of the list. "First" and "last" are meant in
 * the order of the numbers' bytes; they are asked for rarely, so the index itself is not kept in that order.
 */
#pragma once

#include "ConversationAPI/ContactDetails.h"
#include "ConversationAPI/CopyOnWrite.h"
#include "ConversationAPI/SharedText.h"

#include <boost/container/small_vector.hpp>

#include <deque>
#include <memory_resource>
#include <string>
#include <unordered_map>
#include <vector>

namespace ConversationAPI
{
class Conversation;

class NumberIndex
{
  public:
    using Numbers = std::pmr::unordered_map<std::string, Conversation*>;

    /** The number is this conversation's from now on; "" is nobody's. */
    void associate(const std::string& number, Conversation* conversation);

    /** All four numbers, in their order. The conversation lives until it is removed or everything is cleared. */
    void associate(Conversation* conversation);
    void remove(const std::string& number);
    void remove(Conversation* conversation);
    void clear();

    /** For so many conversations in all. */
    void reserve(std::size_t count) { first_.reserve(count); }

    /** Null when nobody has the number. */
    Conversation* find(const std::string& number) const;

    /** The conversation with the first or last number of those for which the predicate holds; null without one. */
    template <typename Predicate>
    Conversation* findFirst(Predicate predicate) const
    {
        return findExtreme(predicate, [](const auto& a, const auto& b) { return a < b; });
    }

    template <typename Predicate>
    Conversation* findLast(Predicate predicate) const
    {
        return findExtreme(predicate, [](const auto& a, const auto& b) { return a > b; });
    }

  private:
    using Claims = boost::container::small_vector<Numbers::pointer, 1>;

    /**
     * What a conversation claims, all of a contact's numbers or the one of a slot or another number; or, when it claims
     * nothing, that it goes; or, without conversation, that the number goes. A contact's numbers are not copied, as
     * there may be thousands of changes before somebody asks.
     */
    struct Change
    {
        Conversation* conversation;
        CopyOnWrite<ContactDetails> contact;
        SharedText number;
        unsigned slot = CONTACT_NUMBER_SLOTS;
    };

    template <typename Predicate, typename Precedes>
    Conversation* findExtreme(Predicate predicate, Precedes precedes) const
    {
        applyChanges();
        const Numbers::value_type* best = nullptr;
        for (const auto& entry : numbers_)
        {
            if ((!best || precedes(entry.first, best->first)) && predicate(*entry.second))
            {
                best = &entry;
            }
        }
        return best ? best->second : nullptr;
    }

    void note(Change change);
    void applyChanges() const;
    void apply(const Change& change) const;
    void associateContact(const ContactDetails& contact, unsigned slot, Conversation* conversation) const;
    void associateNumberWithConversation(const char* type, const std::string& number, Conversation* conversation) const;
    void removeNow(const std::string& number) const;
    void removeNow(Conversation* conversation) const;
    void forgetClaim(Numbers::value_type& number) const;

    mutable std::vector<Conversation*> first_; ///< with all their numbers, before the changes
    mutable std::unordered_map<Conversation*, CopyOnWrite<ContactDetails>> gone_; ///< of the first, by their addresses
    mutable std::deque<Change> changes_;                                          ///< that the index does not show yet
    mutable std::pmr::unsynchronized_pool_resource memory_;                       ///< of everything below
    mutable Numbers numbers_{&memory_};
    mutable std::pmr::unordered_map<Conversation*, Claims> claims_{&memory_};
};
} // namespace ConversationAPI
