/** A flag that is set for as long as something goes on, however that ends. */
#pragma once

#include <utility>

namespace ConversationAPI
{
class ScopedFlag
{
  public:
    explicit ScopedFlag(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
    ~ScopedFlag() { flag_ = before_; }

    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;

  private:
    bool& flag_;
    const bool before_;
};
} // namespace ConversationAPI
