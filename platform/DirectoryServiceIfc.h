/**
 * The telephone's directory service: the local phonebook and the searches in it and in LDAP directories.
 *
 * Contacts travel as PhoneBook XML messages. Called, and calling, on the UI thread. Answers to a search come later,
 * from the event loop; its end may come at once when there is nobody to ask.
 */
#pragma once

#include <map>
#include <string>
#include <vector>

/** One contact as a directory search finds it; texts that the directory does not have are empty. */
struct DirectoryContact
{
    std::string searchId;
    std::string firstName;
    std::string lastName;
    std::string workNumber1;
    std::string workNumber2;
    std::string mobileNumber;
    std::string homeNumber;
    std::string email;
    std::string company;
    std::string address1;
    std::string address2;
    std::string role;
    std::string picturePath;
    std::string nickname;
    std::string contactSource;
};

/**
 * What a directory search found: one map of key and value for each entry. A key that is missing counts as empty.
 *
 * Read are "Surname", "Firstname", the numbers "Office", "Office2", "Mobile" and "Private", "Email", "Company",
 * "JobFunction", "Address", "Address2", "Avatar" (path of the picture), "Nickname" (shown of whoever has no name) and
 * "ContactSource" (where the contact comes from, kept as it is). The number to call is the first that there is, in the
 * order above. Passed over is an entry without any of these, or with "ContactSource" alone, and one that has the key
 * "NICKNAME_RESULTS", or this as its "Nickname": it is a list of nicknames, and no contact.
 */
struct PhonebookSearchResults
{
    using Entry = std::map<std::string, std::string>;
    std::vector<Entry> entries;
};

class DirectoryServiceIfc
{
  public:
    virtual ~DirectoryServiceIfc() = default;

    /**
     * Stores the contact of a write request; `notify` asks that the observers are told, at once or later. False when
     * the contact is refused: then nothing is stored, and nobody told.
     */
    virtual bool write(const std::string& xml, bool notify) = 0;

    /** Answers a read request with the contact's message; "" when there is no such contact. */
    virtual std::string read(const std::string& xml) = 0;

    virtual std::vector<std::string> contactIds() = 0;
    virtual void deleteContact(const std::string& contactId) = 0;

    /** Starts a search; results and exactly one end reach the observer under `searchId`. */
    virtual void search(const std::string& searchId, const std::string& text) = 0;
    virtual void cancelSearch(const std::string& searchId) = 0;
};

class DirectoryServiceObserverIfc
{
  public:
    virtual ~DirectoryServiceObserverIfc() = default;

    /** The phonebook changed as a whole: all contacts are to be read anew. False: nothing changed after all. */
    virtual void phonebookDatabaseUpdated(bool updated) = 0;

    /** There is one more contact; `xml` is its message as read() answers it, with its UniqueID. */
    virtual void newContact(const std::string& xml) = 0;

    /**
     * The contact of the message's UniqueID is now what the message says: an element that is missing counts as empty.
     * One that the observer does not know is passed over.
     */
    virtual void contactUpdated(const std::string& xml) = 0;

    /** The phonebook does not have the contact any more. */
    virtual void contactDeleted(const std::string& contactId) = 0;

    /**
     * Entries that the search has found beyond those told before; any number of times, until its end. Those of a search
     * that nobody waits for are passed over.
     */
    virtual void directorySearchResults(const std::string& searchId, const PhonebookSearchResults& results) = 0;

    /** Nothing more comes of the search: it is done, has failed or was cancelled. */
    virtual void directorySearchEnded(const std::string& searchId) = 0;

    /** The name under which the observer subscribes. */
    virtual std::string getSubscribingService() = 0;
};
