/**
 * One contact's fields, wherever they come from: a search's entry, the web service, a conversation.
 *
 * A DirectoryContact holds them; fields that are not known are empty.
 */
#pragma once

#include "ConversationAPI/ContactNumbers.h"
#include "platform/DirectoryServiceIfc.h"
#include "platform/WSIServiceIfc.h"

#include <array>
#include <string>

namespace ConversationAPI
{
class Conversation;

struct MainNumber
{
    std::string number;
    CallPartyIdentifier::PhoneNumberIconType type = CallPartyIdentifier::NO_ICON;
};

/** Work 1, work 2, mobile and home, the order in which a number to call is looked for. */
std::array<MainNumber, CONTACT_NUMBER_SLOTS> numbersOf(const DirectoryContact& contact);

/** The first that is not empty. */
MainNumber firstNumberOf(const DirectoryContact& contact);

/** Whether there is nothing by which anybody would recognise the contact. */
bool namesNobody(const DirectoryContact& contact);

/** Whether the entry is no contact but the list of nicknames that searches answer as well. */
bool entryIsNicknameResults(const PhonebookSearchResults::Entry& entry);

DirectoryContact contactOfEntry(const PhonebookSearchResults::Entry& entry, const std::string& searchId);

/** Without its picture, of which the web service gives the bytes. */
DirectoryContact contactOfWSIItem(const WSIItem& item);

/** Numbers are in comparable form. */
DirectoryContact contactOfConversation(const Conversation& conversation);

/** Whether the directory knows only the number of whom the web service knows. */
bool isOnlyWSIContactPresent(const Conversation* known, const DirectoryContact& hit);

/** Whether the directory says something of a web-service contact that is not known, or is known otherwise. */
bool wsiContactNeedsUpdateWithLdap(const Conversation* known, const DirectoryContact& hit);

/** The hit with what is known where it says nothing. */
DirectoryContact completedBy(DirectoryContact hit, const DirectoryContact& known);
DirectoryContact completedBy(DirectoryContact hit, const Conversation& known);
} // namespace ConversationAPI
