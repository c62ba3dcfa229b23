/** Whoever wants to know whether the cloud service can be used. UI thread only. */
#pragma once

namespace ConversationAPI
{
class QuorvelServiceObserverIfc
{
  public:
    virtual ~QuorvelServiceObserverIfc() = default;

    /** The user was signed in, and the cloud's conversations are there; or the user was signed out. */
    virtual void serviceLoggedIn(bool loggedIn) = 0;
};
} // namespace ConversationAPI
