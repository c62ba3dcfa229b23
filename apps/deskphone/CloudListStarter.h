/**
 * Has the cloud's first list delivered when somebody has signed in.
 *
 * An aggregator tells whole lists to nobody before its sources are ready, and the cloud's source is ready only after
 * it has reported the conversations that came with the log-in: that list would be lost without start(). The aggregator
 * is not owned, and null until it is there. UI thread only.
 */
#pragma once

#include "ConversationAPI/ConversationAggregatorIfc.h"
#include "ConversationAPI/QuorvelServiceObserverIfc.h"

namespace Deskphone
{
class CloudListStarter : public ConversationAPI::QuorvelServiceObserverIfc
{
  public:
    void setAggregator(ConversationAPI::ConversationAggregatorIfc* aggregator) { aggregator_ = aggregator; }

    void serviceLoggedIn(bool loggedIn) override
    {
        if (loggedIn && aggregator_ != nullptr)
        {
            aggregator_->start();
        }
    }

  private:
    ConversationAPI::ConversationAggregatorIfc* aggregator_ = nullptr;
};
} // namespace Deskphone
