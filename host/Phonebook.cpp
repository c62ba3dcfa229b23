#include "host/Phonebook.h"

#include "host/internal/ContactMessage.h"
#include "host/internal/PhonebookContacts.h"
#include "host/internal/PhonebookDatabase.h"
#include "host/internal/ReportQueue.h"
#include "host/internal/WriteBehind.h"
#include "platform/Logging.h"
#include "src/Observers.h"

#include <array>
#include <sodium.h>
#include <utility>

namespace Host
{
namespace
{
using Observer = DirectoryServiceObserverIfc;

constexpr const char* PHONEBOOK_LOG_FILE = "./host/Phonebook";

/** Drawn at random: none comes twice, whichever of the phonebook's files is in reach. */
std::string newId()
{
    std::array<unsigned char, 16> bytes{};
    randombytes_buf(bytes.data(), bytes.size());
    std::array<char, 2 * bytes.size() + 1> digits{};
    return sodium_bin2hex(digits.data(), digits.size(), bytes.data(), bytes.size());
}
} // namespace

Phonebook::Phonebook()
    : contacts_(std::make_unique<PhonebookContacts>()), reports_(std::make_unique<ReportQueue<Notice>>())
{
}

Phonebook::Phonebook(const std::filesystem::path& file, std::uint64_t maxFileSize) : Phonebook()
{
    file_ = std::make_unique<WriteBehind<PhonebookDatabase>>(file, maxFileSize);
    store();
}

Phonebook::~Phonebook()
{
    if (directory_)
    {
        directory_->setObserver(nullptr);
    }
    write();
}

void Phonebook::addObserver(DirectoryServiceObserverIfc* observer)
{
    ConversationAPI::addOnce(observers_, observer);
}

void Phonebook::removeObserver(DirectoryServiceObserverIfc* observer)
{
    ConversationAPI::removeOne(observers_, observer);
}

void Phonebook::setDirectory(DirectorySearch* directory)
{
    if (directory_)
    {
        directory_->setObserver(nullptr);
    }
    directory_ = directory;
    if (directory_)
    {
        directory_->setObserver(this);
    }
    for (const std::string& searchId : std::exchange(searches_, {}))
    {
        report({[searchId](Observer& observer) { observer.directorySearchEnded(searchId); }});
    }
}

bool Phonebook::isStored() const
{
    return !file_ || file_->isUpToDate();
}

bool Phonebook::store()
{
    settle("", {});
    return isStored();
}

void Phonebook::abandon()
{
    if (file_)
    {
        file_->abandon();
    }
}

std::string Phonebook::problem() const
{
    return file_ ? file_->problem() : std::string();
}

bool Phonebook::write(const std::string& xml, bool notify)
{
    std::optional<ContactMessage> message = parseContactMessage(xml, "write_request");
    if (!message)
    {
        return false;
    }
    const std::string id = message->id.empty() ? newId() : message->id;
    const PhonebookContact* known = contacts_->find(id);
    const bool isNew = known == nullptr;
    if (known)
    {
        complete(message->values, known->values);
    }
    if (!namesSomebody(message->values))
    {
        logAppOrv("Host", PHONEBOOK_LOG_FILE, 2, __LINE__, "A contact of which nothing is told is not stored");
        return false;
    }
    contacts_->put(id, std::move(message->values));
    Notices notices;
    if (notify)
    {
        notices.emplace_back([isNew, told = messageOf(id)](Observer& observer)
                             { isNew ? observer.newContact(told) : observer.contactUpdated(told); });
    }
    settle(id, std::move(notices));
    return true;
}

std::string Phonebook::read(const std::string& xml)
{
    const std::optional<ContactMessage> message = parseContactMessage(xml, "read_request");
    return message ? messageOf(message->id) : std::string();
}

/** "" when there is none. */
std::string Phonebook::messageOf(const std::string& contactId) const
{
    const PhonebookContact* contact = contacts_->find(contactId);
    return contact ? formatContactMessage({contact->id, contact->values}) : std::string();
}

std::vector<std::string> Phonebook::contactIds()
{
    return contacts_->ids();
}

void Phonebook::deleteContact(const std::string& contactId)
{
    const std::string id = contactId; // observers may change what it refers to
    if (!contacts_->remove(id))
    {
        logAppOrv("Host", PHONEBOOK_LOG_FILE, 3, __LINE__, "There is no contact %s to delete", id.c_str());
        return;
    }
    settle(id, {[id](Observer& observer) { observer.contactDeleted(id); }});
}

void Phonebook::search(const std::string& searchId, const std::string& text)
{
    if (!directory_)
    {
        report({[searchId](Observer& observer) { observer.directorySearchEnded(searchId); }});
        return;
    }
    searches_.insert(searchId);
    directory_->search(searchId, text);
}

void Phonebook::cancelSearch(const std::string& searchId)
{
    if (directory_ && searches_.count(searchId) != 0)
    {
        directory_->cancel(searchId);
    }
}

void Phonebook::searchResults(const std::string& searchId, const PhonebookSearchResults& results)
{
    if (searches_.count(searchId) != 0)
    {
        report({[searchId, results](Observer& observer) { observer.directorySearchResults(searchId, results); }});
    }
}

void Phonebook::searchEnded(const std::string& searchId)
{
    const auto search = searches_.find(searchId);
    if (search != searches_.end())
    {
        searches_.erase(search);
        report({[searchId](Observer& observer) { observer.directorySearchEnded(searchId); }});
    }
}

/** What follows every change: to be written, then told. */
void Phonebook::settle(const std::string& contactId, Notices notices)
{
    if (file_)
    {
        if (!contactId.empty())
        {
            file_->changed(contactId);
        }
        for (Notice& notice : write())
        {
            notices.push_back(std::move(notice));
        }
        file_->startTimer([this] { store(); });
    }
    report(std::move(notices));
}

/** Gives what is to be told because a file was opened. */
Phonebook::Notices Phonebook::write()
{
    Notices notices;
    const auto adopt = [&](std::vector<PhonebookContact> stored)
    {
        const PhonebookContacts before = *contacts_;
        std::set<std::string> differing = contacts_->adopt(std::move(stored));
        if (!contacts_->isSameAs(before))
        {
            notices.emplace_back([](Observer& observer) { observer.phonebookDatabaseUpdated(true); });
        }
        return differing;
    };
    if (file_)
    {
        file_->write(*contacts_, adopt);
    }
    return notices;
}

void Phonebook::report(Notices notices)
{
    reports_->report(std::move(notices),
                     [this](const Notice& notice) { ConversationAPI::tellEach(observers_, notice); });
}
} // namespace Host
