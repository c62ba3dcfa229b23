/**
 * The web-service directory: contacts kept by an exchange server.
 *
 * Called, and calling, on the UI thread.
 */
#pragma once

#include <string>
#include <vector>

/** The values are those of the conversations' own presence. */
enum class WSIPresence
{
    OFFLINE = 0,
    AVAILABLE = 1,
    AWAY = 2,
    BUSY = 3,
    UNKNOWN = 4
};

/** One contact of the web-service directory; texts that it does not have are empty. */
struct WSIItem
{
    std::string id;
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
    std::string picture;           ///< the picture's bytes, or empty
    std::string exchangeContactId; ///< the contact's id on the exchange server
    WSIPresence presence = WSIPresence::UNKNOWN;
};

class WSIServiceIfc
{
  public:
    virtual ~WSIServiceIfc() = default;

    /** Appends at most `max` items that match; `kind` selects the directory's sort of search. */
    virtual void search(const std::string& text, int kind, int max, std::vector<WSIItem>& items) = 0;

    /** Appends the entries of the system phonebook whose number begins with `digits`; false on failure. */
    virtual bool searchPhonebook(const std::string& digits, std::vector<WSIItem>& items) = 0;

    virtual void deleteItem(const std::string& id) = 0;
};

class WSIServiceConversationObserverIfc
{
  public:
    virtual ~WSIServiceConversationObserverIfc() = default;

    /**
     * Contacts that a search has found, told by whoever asked the service, which does not know the search's id. Those
     * of a search that nobody waits for are passed over.
     */
    virtual void wsiSearchResults(const std::string& searchId, std::vector<WSIItem> items) = 0;

    /**
     * The web service finds nothing more for this search. Whoever searches is told the first end, this or the
     * directory's; where the directory tells one, this one need not come.
     */
    virtual void wsiSearchEnded(const std::string& searchId) = 0;

    /**
     * A contact appeared or changed, whether anybody searches or not. `item` has all that the web service knows of it,
     * and the id of the search that led to it, if one did.
     */
    virtual void wsiSearchResponseEvent(const WSIItem& item) = 0;
};
