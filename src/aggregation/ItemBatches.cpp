#include "aggregation/ItemBatches.h"

#include "ConversationAPI/ConversationItem.h"
#include "model/ItemOrder.h"
#include "model/KeyIndex.h"
#include "model/Prefetch.h"

#include <cstdint>
#include <limits>

namespace ConversationAPI
{
/** Items by number, or alone, before they are sorted. */
class ItemBatches::Grouping
{
  public:
    struct Group
    {
        std::string_view number; ///< empty of an item that stands alone
        bool hasNumberOfItsOwn;
        std::size_t size = 0;
    };

    explicit Grouping(std::size_t items)
    {
        items_.reserve(items);
        groupOfItem_.reserve(items);
    }

    /** A journal gives calls of one number in a row: most need no looking up. */
    void add(const Ranked& item, const PartyNumbers& numbers)
    {
        if (groups_.empty() || numbers.main() != groups_[lastGroup_].number)
        {
            lastGroup_ = groupOf(numbers);
        }
        addTo(lastGroup_, item);
    }

    void addAlone(const Ranked& item)
    {
        lastGroup_ = groups_.size();
        groups_.push_back({{}, false});
        addTo(lastGroup_, item);
    }

    /** The items of these numbers do not belong together. */
    void split(const Numbers& numbers)
    {
        for (const std::string_view number : numbers)
        {
            if (const std::uint32_t* group = find(number, hashOfText(number)))
            {
                groups_[*group].hasNumberOfItsOwn = false;
            }
        }
    }

    const std::vector<Group>& groups() const { return groups_; }

    /** Group by group. */
    std::vector<Ranked> items() const
    {
        std::vector<std::size_t> next(groups_.size() + 1);
        for (std::size_t group = 0; group < groups_.size(); ++group)
        {
            next[group + 1] = next[group] + groups_[group].size;
        }
        std::vector<Ranked> all(items_.size());
        for (std::size_t i = 0; i < items_.size(); ++i)
        {
            all[next[groupOfItem_[i]]++] = items_[i];
        }
        return all;
    }

  private:
    const std::uint32_t* find(std::string_view number, std::uint32_t hash) const
    {
        return groupOfNumber_.findHash(hash, [&](std::uint32_t group) { return groups_[group].number == number; });
    }

    std::size_t groupOf(const PartyNumbers& numbers)
    {
        if (const std::uint32_t* known = find(numbers.main(), numbers.mainHash()))
        {
            return *known;
        }
        groupOfNumber_.addHash(numbers.mainHash(), static_cast<std::uint32_t>(groups_.size()));
        groups_.push_back({numbers.main(), true});
        return groups_.size() - 1;
    }

    void addTo(std::size_t group, const Ranked& item)
    {
        ++groups_[group].size;
        items_.push_back(item);
        groupOfItem_.push_back(static_cast<std::uint32_t>(group));
    }

    std::vector<Ranked> items_;
    std::vector<std::uint32_t> groupOfItem_;
    std::vector<Group> groups_;
    KeyIndex<std::uint32_t> groupOfNumber_;
    std::size_t lastGroup_ = 0;
};

ItemBatches::ItemBatches(const std::vector<ConversationItem*>& items)
{
    Grouping grouping(items.size());
    Numbers sharedNumbers;
    std::vector<Ranked> others;
    for (std::size_t place = 0; place < items.size(); ++place)
    {
        ConversationItem& item = *items[place];
        prefetch(*items[std::min(place + PREFETCH_DISTANCE, items.size() - 1)]);
        const Ranked ranked{item.timeStampUTC(), place, &item};
        if (isPlain(item))
        {
            grouping.add(ranked, item.participants().front().numbers());
            continue;
        }
        collectNumbers(item, sharedNumbers);
        if (isOrderedByTimeAlone(item.getState()))
        {
            grouping.addAlone(ranked);
        }
        else
        {
            others.push_back(ranked);
        }
    }
    grouping.split(sharedNumbers);
    timed_ = grouping.items();
    addOthers(std::move(others));
    addTimed(grouping);
    std::stable_sort(batches_.begin(), batches_.end(),
                     [](const Batch& a, const Batch& b) { return a.first < b.first; });
}

bool ItemBatches::isPlain(const ConversationItem& item)
{
    if (!isOrderedByTimeAlone(item.getState()) || item.participants().size() != 1 || item.hasConversationId() ||
        item.hasExchangeContactId() || item.hasConversationItemId() || item.isGroupCall() ||
        item.isConferenceConversation())
    {
        return false;
    }
    const ConversationParticipant& party = item.participants().front();
    return !party.isAnonymous() && !party.isCTIAssisted() && !party.comparableNumberText().empty() &&
           !party.hasFurtherNumbers();
}

void ItemBatches::collectNumbers(const ConversationItem& item, Numbers& numbers)
{
    for (const ConversationParticipant& party : item.participants())
    {
        numbers.insert(party.comparableNumberText());
        for (const ContactNumberSlot slot : ALL_CONTACT_NUMBER_SLOTS)
        {
            numbers.insert(party.contactNumber(slot));
        }
    }
}

/** They take the rank of the item before which they stand, and stand before it because they are added first. */
void ItemBatches::addOthers(std::vector<Ranked> others)
{
    insertionSort(others, [](const Ranked& a, const Ranked& b)
                  { return a.item->lessThanOtherConsideringCreationTime(*b.item); });
    Ranked rank{std::numeric_limits<long>::max(), 0, nullptr};
    for (const Ranked& other : others)
    {
        rank = firstBehind(other, rank);
        batches_.push_back({{rank.time, rank.place, other.item}, nullptr, nullptr, false});
    }
}

/** The first item of this rank or a later one that does not come before `other`. */
ItemBatches::Ranked ItemBatches::firstBehind(const Ranked& other, const Ranked& from) const
{
    Ranked first{std::numeric_limits<long>::min(), std::numeric_limits<std::size_t>::max(), nullptr};
    for (const Ranked& one : timed_)
    {
        if (one < first && !(one < from) && !comesBefore(*one.item, *other.item, one.place < other.place))
        {
            first = one;
        }
    }
    return first;
}

void ItemBatches::addTimed(const Grouping& grouping)
{
    batches_.reserve(batches_.size() + grouping.groups().size());
    Ranked* first = timed_.data();
    for (const Grouping::Group& group : grouping.groups())
    {
        Ranked* end = first + group.size;
        std::sort(first, end);
        if (group.hasNumberOfItsOwn)
        {
            add(first, end, true);
            first = end;
        }
        for (; first != end; ++first)
        {
            add(first, first + 1, false);
        }
    }
}
} // namespace ConversationAPI
