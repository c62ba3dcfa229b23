#include "ConversationAPI/RelativeTimeStringFormatterFactory.h"

namespace ConversationAPI
{
RelativeTimeStringFormatterFactory::RelativeTimeStringFormatterFactory(RelativeTimeFormatter::Clock clock)
    : clock_(clock)
{
}

RelativeTimeFormatter* RelativeTimeStringFormatterFactory::create()
{
    return new RelativeTimeFormatter(clock_);
}
} // namespace ConversationAPI
