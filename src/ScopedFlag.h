#pragma once

#include <utility>

namespace ConversationAPI
{
/** A flag that is set as long as the scope lasts. */
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
