/** Makes formatters of time strings for the display. Runs on the UI thread. */
#pragma once

#include "platform/DisplayAPI.h"

namespace ConversationAPI
{
class TimeStringFormatterFactory
{
  public:
    virtual ~TimeStringFormatterFactory() = default;

    /** A new formatter, never null; the caller owns it. */
    virtual DisplayAPI::TimeStringFormatter* create() = 0;
};
} // namespace ConversationAPI
