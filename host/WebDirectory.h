/**
 * The web-service directory in memory: contacts of an exchange server, which it finds at once.
 *
 * Stands in for a server where none can be asked. A contact is found by its names, as in a PeopleDirectory, whatever
 * the sort of search; in the system phonebook by the first digits of a number, its other characters left aside. The
 * observer is not owned; it is told before the operation returns and may change the directory meanwhile. UI thread
 * only.
 */
#pragma once

#include "platform/WSIServiceIfc.h"

#include <functional>
#include <string>
#include <vector>

namespace Host
{
class WebDirectory final : public WSIServiceIfc
{
  public:
    /** Null, as at first, for nobody. */
    void setObserver(WSIServiceConversationObserverIfc* observer);

    /**
     * A new contact, or all that is known from now on of the one of the same id. With a search id the observer is told:
     * the server tells of it by itself. False, and nothing happens, without an id.
     */
    bool put(const WSIItem& contact);

    /** In the order in which the contacts came first. */
    void search(const std::string& text, int kind, int max, std::vector<WSIItem>& items) override;
    bool searchPhonebook(const std::string& digits, std::vector<WSIItem>& items) override;

    /** One that is not there is logged. */
    void deleteItem(const std::string& id) override;

  private:
    std::vector<WSIItem>::iterator find(const std::string& id);

    std::vector<WSIItem> contacts_;
    WSIServiceConversationObserverIfc* observer_ = nullptr;
};
} // namespace Host
