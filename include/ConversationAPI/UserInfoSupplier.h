/** Who is signed in to the cloud service. The observer is not owned. UI thread only. */
#pragma once

#include <string>

namespace ConversationAPI
{
class UserInfoObserverIfc;

class UserInfoSupplier
{
  public:
    virtual ~UserInfoSupplier() = default;

    /** The user's own name; "" while nobody is signed in. */
    virtual std::string displayName() const = 0;

    /** The user's own id; "" while nobody is signed in. */
    virtual std::string getUserId() const = 0;

    /** The one that is told when name or id change; null for nobody. */
    virtual void setMyUserInfoObserver(UserInfoObserverIfc* observer) = 0;
};
} // namespace ConversationAPI
