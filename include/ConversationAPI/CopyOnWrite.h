/**
 * A value that its copies share until one of them writes to it.
 *
 * For records that are mostly empty or mostly copied. A default-constructed one allocates nothing.
 */
#pragma once

#include "ConversationAPI/PooledObject.h"
#include "ConversationAPI/ReferenceCount.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>

namespace ConversationAPI
{
template <typename Value>
class CopyOnWrite
{
  public:
    const Value& operator*() const { return shared_ ? *shared_ : untouched(); }
    const Value* operator->() const { return &**this; }

    /** Whether the value was ever written to. */
    bool isSet() const { return shared_ != nullptr; }

    /** Whether both are copies of which neither was written to since. */
    bool sharesWith(const CopyOnWrite& other) const { return shared_ == other.shared_; }

    /** The value to change: this object's own from now on. Valid until the next copy of this object. */
    Value& write()
    {
        if (!shared_ || shared_->use_count() > 1)
        {
            shared_ = new Shared(**this);
        }
        return *shared_;
    }

    /** Back to the untouched value. */
    void reset() { shared_.reset(); }

  private:
    /** The value is a base, so that the count takes no memory where the value's last member leaves some. */
    struct Shared : Value, boost::intrusive_ref_counter<Shared, ReferenceCount>, PooledObject
    {
        explicit Shared(const Value& initial) : Value(initial) {}
    };

    static const Value& untouched()
    {
        static const Value value{};
        return value;
    }

    boost::intrusive_ptr<Shared> shared_;
};
} // namespace ConversationAPI
