#include "ConversationAPI/PartyNumbers.h"

namespace ConversationAPI
{
namespace
{
template <typename Test>
bool anySlot(Test test)
{
    return std::any_of(ALL_CONTACT_NUMBER_SLOTS.begin(), ALL_CONTACT_NUMBER_SLOTS.end(), test);
}
} // namespace

void PartyNumbers::setMain(const std::string& number)
{
    if (number == main_)
    {
        return;
    }
    if (slotsWithMain_ == 0 && !others_.isSet())
    {
        main_ = number;
        mainHash_ = hashOfText(main_);
        return;
    }
    const ContactNumbers before = four();
    main_ = number;
    mainHash_ = hashOfText(main_);
    setFour(before);
}

void PartyNumbers::set(unsigned slot, const std::string& number)
{
    const bool isMain = !number.empty() && number == main_;
    const auto bit = static_cast<std::uint8_t>(1U << slot);
    const std::string& stored = others_->at(slot);
    if (isMain ? !stored.empty() : stored != number)
    {
        const std::string other = isMain ? std::string() : number; // a copy, as the number may be one of these
        others_.write().at(slot) = other;
    }
    slotsWithMain_ = static_cast<std::uint8_t>(isMain ? slotsWithMain_ | bit : slotsWithMain_ & ~bit);
}

ContactNumbers PartyNumbers::four() const
{
    return {at(WORK_1_SLOT), at(WORK_2_SLOT), at(MOBILE_SLOT), at(HOME_SLOT)};
}

void PartyNumbers::setFour(const ContactNumbers& numbers)
{
    for (const ContactNumberSlot slot : ALL_CONTACT_NUMBER_SLOTS)
    {
        set(slot, numbers[slot]);
    }
}

bool PartyNumbers::hasAmongTheFour(const std::string& candidate) const
{
    return (slotsWithMain_ != 0 && candidate == main_) ||
           (others_.isSet() && std::find(others_->begin(), others_->end(), candidate) != others_->end());
}

bool PartyNumbers::hasNoneOfTheFour() const
{
    return slotsWithMain_ == 0 && !hasFurther();
}

bool PartyNumbers::hasFurther() const
{
    return others_.isSet() &&
           std::any_of(others_->begin(), others_->end(), [](const std::string& number) { return !number.empty(); });
}

bool PartyNumbers::hasFreeSlotFor(ContactNumberSlot slot, const std::string& candidate) const
{
    return slot < CONTACT_NUMBER_SLOTS && !candidate.empty() && at(slot).empty() && !hasAmongTheFour(candidate);
}

bool PartyNumbers::hasSameFourAs(const PartyNumbers& other) const
{
    return !anySlot([&](ContactNumberSlot slot) { return at(slot) != other.at(slot); });
}
} // namespace ConversationAPI
