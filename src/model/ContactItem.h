/**
 * The contact of a conversation as an item.
 *
 * It stands for a conversation that has no items, and is what a contact is remembered by.
 */
#pragma once

#include <memory>

namespace ConversationAPI
{
class ConversationContact;
class ConversationItem;
class ConversationItemFactory;

/** Null without a factory, which may be null. `time` is the item's, in seconds since the epoch, UTC. */
std::unique_ptr<ConversationItem> makeContactItem(const ConversationContact& contact, ConversationItemFactory* factory,
                                                  long time);
} // namespace ConversationAPI
