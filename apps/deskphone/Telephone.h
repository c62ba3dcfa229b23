/**
 * A telephone: library and platform services, wired together.
 *
 * The members stand in the order in which they need each other, so that each is destroyed before what it points
 * to. Whoever makes a telephone has declared an event loop the current one of the thread (Host::EventLoop::Scope)
 * and keeps it for the telephone's whole life: the timers of the display run on it. UI thread only.
 */
#pragma once

#include "CallHistory.h"
#include "ConversationAPI/ActiveCallConversationItemSource.h"
#include "ConversationAPI/ConversationFactory.h"
#include "ConversationAPI/ConversationItemAggregator.h"
#include "ConversationAPI/ConversationItemFactory.h"
#include "ConversationAPI/ConversationParticipantFactory.h"
#include "ConversationAPI/RandomCachingConversationIDGenerator.h"
#include "ConversationAPI/RelativeTimeFormatter.h"
#include "TelephoneSettings.h"
#include "host/DigitAnalysis.h"
#include "host/Translator.h"

#include <string>
#include <vector>

namespace Deskphone
{
class Telephone
{
  public:
    explicit Telephone(const TelephoneSettings& settings);
    ~Telephone();

    Telephone(const Telephone&) = delete;
    Telephone& operator=(const Telephone&) = delete;

    /** Where call control reports. */
    ConversationAPI::ActiveCallConversationItemSource& liveCalls() { return liveCalls_; }

    CallHistory& history() { return history_; }

    ConversationAPI::ConversationSourceIfc& conversationSource() { return aggregator_; }

    /** What the screen shows, from top to bottom; valid until the next event. */
    std::vector<ConversationAPI::Conversation*> conversations();

    /** The form in which spellings of one number are equal. */
    std::string comparable(const std::string& number);

    DisplayAPI::TimeStringFormatter& times() { return times_; }

  private:
    // What the library builds on.
    Host::DigitAnalysis digitAnalysis_;
    Host::Translator translator_;

    // Factories; the generator remembers which conversation had which id.
    ConversationAPI::ConversationParticipantFactory participantFactory_;
    ConversationAPI::ConversationItemFactory itemFactory_;
    ConversationAPI::RandomCachingConversationIDGenerator idGenerator_;
    ConversationAPI::ConversationFactory conversationFactory_;

    // Sources of items, and what makes conversations of them.
    ConversationAPI::ActiveCallConversationItemSource liveCalls_;
    CallHistory history_;
    ConversationAPI::ConversationItemAggregator aggregator_;

    ConversationAPI::RelativeTimeFormatter times_;
};
} // namespace Deskphone
