/**
 * Tells which calls may bring news of their party, when many are appended to a conversation one after the other.
 *
 * Most have the number of the call before and tell the same: the first of them decides for all. The conversation's
 * contact is not owned and outlives this object.
 */
#pragma once

#include "ConversationAPI/ConversationContact.h"
#include "ConversationAPI/ConversationParticipant.h"

#include <optional>
#include <string>

namespace ConversationAPI
{
class PartyNews
{
  public:
    explicit PartyNews(const ConversationContact& contact) : contact_(contact) {}

    /** Asked of each call's party, in the order in which the calls are appended. */
    bool mayComeFrom(const ConversationParticipant& party)
    {
        if (number_ != party.comparableNumberText())
        {
            number_ = party.comparableNumberText();
            isKnown_ = contact_.hasNothingToLearnFrom(party);
        }
        return !isKnown_;
    }

  private:
    const ConversationContact& contact_;
    std::optional<std::string> number_; ///< of the call before
    bool isKnown_ = false;
};
} // namespace ConversationAPI
