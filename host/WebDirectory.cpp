#include "host/WebDirectory.h"

#include "host/internal/NameMatch.h"
#include "platform/Logging.h"

#include <algorithm>

namespace Host
{
namespace
{
constexpr const char* WEB_DIRECTORY_LOG_FILE = "./host/WebDirectory";

bool isNoDigit(char character)
{
    return character < '0' || character > '9';
}

bool beginsWithDigits(std::string number, const std::string& digits)
{
    number.erase(std::remove_if(number.begin(), number.end(), isNoDigit), number.end());
    return !number.empty() && number.compare(0, digits.size(), digits) == 0;
}
} // namespace

void WebDirectory::setObserver(WSIServiceConversationObserverIfc* observer)
{
    observer_ = observer;
}

bool WebDirectory::put(const WSIItem& contact)
{
    if (contact.id.empty())
    {
        logAppOrv("Host", WEB_DIRECTORY_LOG_FILE, 2, __LINE__, "A contact without an id is not kept");
        return false;
    }
    WSIItem kept = contact;
    kept.searchId.clear(); // which says why it is told now, and nothing of who it is
    const auto known = find(contact.id);
    if (known == contacts_.end())
    {
        contacts_.push_back(kept);
    }
    else
    {
        *known = kept;
    }
    if (observer_ != nullptr && !contact.searchId.empty())
    {
        observer_->wsiSearchResponseEvent(contact);
    }
    return true;
}

void WebDirectory::search(const std::string& text, int, int max, std::vector<WSIItem>& items)
{
    const NameMatch isMeant(text);
    for (const WSIItem& contact : contacts_)
    {
        if (max > 0 && isMeant(contact.firstName, contact.lastName))
        {
            items.push_back(contact);
            --max;
        }
    }
}

bool WebDirectory::searchPhonebook(const std::string& digits, std::vector<WSIItem>& items)
{
    std::copy_if(contacts_.begin(), contacts_.end(), std::back_inserter(items),
                 [&digits](const WSIItem& contact)
                 {
                     const std::string* const numbers[] = {&contact.workNumber1, &contact.workNumber2,
                                                           &contact.mobileNumber, &contact.homeNumber};
                     return std::any_of(std::begin(numbers), std::end(numbers),
                                        [&digits](const auto* number) { return beginsWithDigits(*number, digits); });
                 });
    return true;
}

void WebDirectory::deleteItem(const std::string& id)
{
    const auto known = find(id);
    if (known == contacts_.end())
    {
        logAppOrv("Host", WEB_DIRECTORY_LOG_FILE, 3, __LINE__, "There is no contact %s to delete", id.c_str());
        return;
    }
    contacts_.erase(known);
}

std::vector<WSIItem>::iterator WebDirectory::find(const std::string& id)
{
    return std::find_if(contacts_.begin(), contacts_.end(), [&id](const WSIItem& one) { return one.id == id; });
}
} // namespace Host
