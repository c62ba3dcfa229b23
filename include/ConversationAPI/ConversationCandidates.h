/**
 * Where a condition names the conversations that it could hold for, so that a list need not try all.
 *
 * Each operation adds every conversation of the list that has the property. A condition that uses this names
 * at least every conversation for which it holds; naming too many only costs time.
 */
#pragma once

#include "ConversationAPI/SharedText.h"

#include <string>

namespace ConversationAPI
{
class ConversationCandidates
{
  public:
    virtual ~ConversationCandidates() = default;

    /** As main number or one of the four. */
    virtual void withNumber(const std::string& number) = 0;
    virtual void withConversationId(const SharedText& id) = 0;
    virtual void withExchangeContactId(const SharedText& id) = 0;

    /** Of any item; "" is the call id of live calls that have none. */
    virtual void withCallId(const std::string& callId) = 0;
    virtual void thatAreAnonymous() = 0;

    /** Whose initial item is a live call. */
    virtual void thatAreLive() = 0;
};
} // namespace ConversationAPI
