/**
 * Passes what the cloud service reports on to the source of cloud conversations.
 *
 * Neither is owned; both live as long as this object, which is the service's observer meanwhile. UI thread only.
 */
#pragma once

#include "ConversationAPI/QuorvelServiceConversationSource.h"
#include "host/CloudService.h"

namespace Host
{
class CloudNotices final : public CloudServiceObserver
{
  public:
    CloudNotices(CloudService& service, ConversationAPI::QuorvelServiceConversationSource& source)
        : service_(service), source_(source)
    {
        source_.setQuorvelService(&service_);
        service_.setObserver(this);
    }

    ~CloudNotices() override
    {
        service_.setObserver(nullptr);
        source_.setQuorvelService(nullptr);
    }

    CloudNotices(const CloudNotices&) = delete;
    CloudNotices& operator=(const CloudNotices&) = delete;

    void loggedIn() override { source_.loggedIn(); }
    void loggedOut() override { source_.loggedOut(); }
    void newConversation(const Quorvel::ConversationIfc& conversation) override
    {
        source_.newConversation(&conversation);
    }
    void updatedConversation(const Quorvel::ConversationIfc& conversation) override
    {
        source_.updatedConversation(&conversation);
    }
    void newConversationItem(const Quorvel::ConversationItemIfc& item) override { source_.newConversationItem(&item); }
    void updatedConversationItem(const Quorvel::ConversationItemIfc& item) override
    {
        source_.updatedConversationItem(&item);
    }
    void updatedUser(const Quorvel::UserIfc& user) override { source_.updatedUser(&user); }
    void userPresenceChanged(const std::string& userId, Quorvel::PresenceState state) override
    {
        source_.userPresenceChanged(userId, state);
    }
    void sessionEvent(const Quorvel::RTCSessionEventIfc& event) override { source_.processRTCSessionEvent(&event); }

  private:
    CloudService& service_;
    ConversationAPI::QuorvelServiceConversationSource& source_;
};
} // namespace Host
