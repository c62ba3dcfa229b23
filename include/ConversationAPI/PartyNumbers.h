/**
 * The number by which a party is known, the main one, and the four that a contact can have.
 *
 * Nearly every party has no other number than its main one, at one of the four places: only where it stands is noted
 * then, and no memory taken for the four. A value, whose copies share what they have in common; an empty text is a
 * number that is not known. References live until the value is changed. One that was moved from is only fit to be
 * destroyed or assigned to.
 */
#pragma once

#include "ConversationAPI/ContactNumbers.h"
#include "ConversationAPI/CopyOnWrite.h"
#include "ConversationAPI/SharedText.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace ConversationAPI
{
class PartyNumbers
{
  public:
    PartyNumbers() = default;

    /** None of the four is known. */
    explicit PartyNumbers(const std::string& main) : mainHash_(hashOfText(main)), main_(main) {}

    const std::string& main() const { return main_; }

    /** hashOfText() of the main number, which is known without reading it. */
    std::uint32_t mainHash() const { return mainHash_; }

    /** The four stay what they are. */
    void setMain(const std::string& number);

    /** The number at this place of the four. */
    const std::string& at(unsigned slot) const { return slotsWithMain_ & (1U << slot) ? main_ : others_->at(slot); }
    void set(unsigned slot, const std::string& number);
    ContactNumbers four() const;
    void setFour(const ContactNumbers& numbers);

    /** Whether `candidate`, which is not empty, is the main number or one of the four. */
    bool has(const std::string& candidate) const { return candidate == main_ || hasAmongTheFour(candidate); }

    /** Whether `candidate`, which is not empty, is one of the four. */
    bool hasAmongTheFour(const std::string& candidate) const;
    bool hasNoneOfTheFour() const;

    /** Whether one of the four is another number than the main one. */
    bool hasFurther() const;

    /** Whether the slot is empty and none of the four is the candidate yet. */
    bool hasFreeSlotFor(ContactNumberSlot slot, const std::string& candidate) const;
    bool hasSameFourAs(const PartyNumbers& other) const;
    bool operator==(const PartyNumbers& other) const
    {
        return mainHash_ == other.mainHash_ && main_ == other.main_ && hasSameFourAs(other);
    }

    /** Where the others of the four are kept, the main one's place being empty; null when there never was any. */
    const ContactNumbers* others() const { return others_.isSet() ? &*others_ : nullptr; }

    /** Calls `use` for every number that is known, once each, the main one first. */
    template <typename Use>
    void forEach(Use use) const
    {
        if (!main_.empty())
        {
            use(main_);
        }
        if (others_.isSet())
        {
            forEachOther(use);
        }
    }

    /** The same with hashOfText() of each. Different numbers may have one hash, which may then come twice. */
    template <typename Use>
    void forEachHash(Use use) const
    {
        if (mainHash_ != 0)
        {
            use(mainHash_);
        }
        if (others_.isSet())
        {
            forEachOther([&use](const std::string& number) { use(hashOfText(number)); });
        }
    }

  private:
    template <typename Use>
    void forEachOther(Use use) const
    {
        for (auto number = others_->begin(); number != others_->end(); ++number)
        {
            if (!number->empty() && std::find(others_->begin(), number, *number) == number)
            {
                use(*number);
            }
        }
    }

    // What a party is looked for by comes first, close to what else tells where an item belongs.
    std::uint32_t mainHash_ = 0;
    std::uint8_t slotsWithMain_ = 0;     ///< bit n: number n of the four is the main one
    CopyOnWrite<ContactNumbers> others_; ///< never the main one
    std::string main_;
};
} // namespace ConversationAPI
