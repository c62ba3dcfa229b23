/** The one way in which every kind of item is cloned. */
#pragma once

namespace ConversationAPI
{
/** A member-wise copy of the same kind that reports "[clone]"; the caller owns it. */
template <typename Kind>
Kind* cloneOf(const Kind& item)
{
    auto* copy = new Kind(item);
    copy->setClone();
    return copy;
}
} // namespace ConversationAPI
