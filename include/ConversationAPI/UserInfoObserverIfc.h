/** Whoever shows who is signed in to the cloud service. UI thread only. */
#pragma once

namespace ConversationAPI
{
class UserInfoObserverIfc
{
  public:
    virtual ~UserInfoObserverIfc() = default;

    /** The supplier has another name or id for the user now. */
    virtual void userInfoChanged() = 0;
};
} // namespace ConversationAPI
