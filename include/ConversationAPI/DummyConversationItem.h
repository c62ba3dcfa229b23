/**
 * A placeholder: stands for a contact's details where an item is asked for. See ConversationItem for who owns items.
 */
#pragma once

#include "ConversationAPI/ConversationItem.h"

namespace ConversationAPI
{
class DummyConversationItem : public ConversationItem
{
  public:
    DummyConversationItem(long time, const std::string& number, const std::string& firstName,
                          const std::string& lastName, ConversationParticipantFactory* factory,
                          CallPartyIdentifier::PhoneNumberIconType numberType);

    ConversationItemState getState() const override { return ConversationItemState::PLACEHOLDER; }
    ConversationItem* clone() override;
    std::string toDetailsString() const override { return formatLocalTime(); }
    std::string toTimeString() const override { return formatLocalTime(); }
};
} // namespace ConversationAPI
