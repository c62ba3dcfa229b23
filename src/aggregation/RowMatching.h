/** How the aggregator finds the row of its list to which something belongs. Lists and conversations are not owned. */
#pragma once

#include "ConversationAPI/SharedText.h"

#include <string>
#include <utility>
#include <vector>

namespace ConversationAPI
{
class Conversation;
class ConversationList;

/** A row and its index; null when there is none. */
using ListedRow = std::pair<Conversation*, unsigned>;

/**
 * The row of a conversation. The row that shows the conversation's live
 * call comes first, then the one that its initial item belongs to, for a contact finally that of its id: the
 * initial item of a contact knows but one of its numbers. A phantom is found by its call, and only if nothing else is.
 */
ListedRow findRowOf(const ConversationList& list, const Conversation& conversation);

/** Null for "" and when no row has the id. */
Conversation* findRowById(const ConversationList& list, const std::string& conversationId);
Conversation* findRowById(const ConversationList& list, const SharedText& conversationId);

/** All rows that have the number, in the list's order; none for "". */
std::vector<Conversation*> findRowsOfNumber(const ConversationList& list, const std::string& number);

/** Who has a live call or shows an ended one, wherever the call stands among its items; nobody for "". */
ListedRow findRowOfCall(const ConversationList& list, const std::string& callId);

/** A row of nobody who is known, which is not in the list, takes the contact details of a row with its number. */
void takeContactOfNumber(const ConversationList& list, Conversation& created);
} // namespace ConversationAPI
