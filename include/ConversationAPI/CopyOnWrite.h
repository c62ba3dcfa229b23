/**
 * A value that its copies share until one of them writes to it.
 *
 * For records that are mostly empty or mostly copied. A default-constructed one allocates nothing.
 */
#pragma once

#include <memory>

namespace ConversationAPI
{
template <typename Value>
class CopyOnWrite
{
  public:
    const Value& operator*() const { return value_ ? *value_ : untouched(); }
    const Value* operator->() const { return &**this; }

    /** Whether the value was ever written to. */
    bool isSet() const { return value_ != nullptr; }

    /** Whether both are copies of which neither was written to since. */
    bool sharesWith(const CopyOnWrite& other) const { return value_ == other.value_; }

    /** The value to change: this object's own from now on. Valid until the next copy of this object. */
    Value& write()
    {
        if (!value_)
        {
            value_ = std::make_shared<Value>();
        }
        else if (value_.use_count() > 1)
        {
            value_ = std::make_shared<Value>(*value_);
        }
        return *value_;
    }

    /** Back to the untouched value. */
    void reset() { value_.reset(); }

  private:
    static const Value& untouched()
    {
        static const Value value{};
        return value;
    }

    std::shared_ptr<Value> value_;
};
} // namespace ConversationAPI
