/** Makes formatters of relative times that share one clock. Runs on the UI thread. */
#pragma once

#include "ConversationAPI/RelativeTimeFormatter.h"
#include "ConversationAPI/TimeStringFormatterFactory.h"

namespace ConversationAPI
{
class RelativeTimeStringFormatterFactory : public TimeStringFormatterFactory
{
  public:
    explicit RelativeTimeStringFormatterFactory(RelativeTimeFormatter::Clock clock);

    /** A new formatter whose timer runs already; the caller owns it. */
    RelativeTimeFormatter* create() override;

  private:
    RelativeTimeFormatter::Clock clock_;
};
} // namespace ConversationAPI
