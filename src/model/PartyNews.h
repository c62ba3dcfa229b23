/**
 * Which of several calls of a conversation tell something new of their party, for one that is appended after the other.
 *
 * Calls of one number in a row tell the same: the first one decides for all of them. The conversation's contact is not
 * owned and outlives this object.
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
