/** What the user does to a row, asked for by a trace or on the command line. */
#pragma once

#include <string>

namespace ConversationAPI
{
class Conversation;
}

namespace Deskphone
{
class Telephone;

/** The row at a place, counted from 1. Throws NotPossible when there is none. */
const ConversationAPI::Conversation& rowAtPlace(const Telephone& telephone, long place);

/** The first row with the number, in any spelling. Throws NotPossible when there is none. */
const ConversationAPI::Conversation& rowWithNumber(Telephone& telephone, const std::string& number);

/** With all of its calls. Throws NotPossible for the row of the mailbox, for that of a live call, for one of which a
 *  network's call is the newest, and for a contact in the network's own list. */
void deleteRow(Telephone& telephone, const ConversationAPI::Conversation& row);

/** Stores somebody whom a search found, counted from 1, in the phonebook. Throws NotPossible when there is no such one,
 *  or it is one of the cloud's or of the phonebook's own. */
void saveFound(Telephone& telephone, long place);
} // namespace Deskphone
