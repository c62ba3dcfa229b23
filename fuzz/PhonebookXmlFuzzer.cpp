/**
 * Contacts as PhoneBook XML messages. Each line of an input is what a phonebook tells: "new", "changed", "bluetooth"
 * and a message, "gone" and a contact's id, or "reread". A contact that is read is written and read without a loss,
 * and whatever is told, each stands among the stored ones once.
 */
#include "ConversationAPI/ConversationList.h"
#include "ConversationAPI/DirectoryServiceConversationSource.h"
#include "FuzzTarget.h"
#include "platform/ClientUtils.h"
#include "support/InMemoryDirectory.h"
#include "support/Phone.h"

namespace
{
using namespace ConversationAPI;
using Texts = std::vector<std::string>;

/** A source and the phonebook that it reads. */
struct Phonebook
{
    std::unique_ptr<Conversation> read(const std::string& xml)
    {
        return std::unique_ptr<Conversation>(source.createConversationFromXml(xml));
    }

    Testing::Phone phone;
    Testing::InMemoryDirectory directory;
    DirectoryServiceConversationSource source{&phone.conversations, &directory, nullptr};
};

std::string join(const Texts& texts)
{
    std::string all;
    std::for_each(texts.begin(), texts.end(), [&all](const std::string& text) { all += text + "|"; });
    return all;
}

std::string describe(const Conversation& contact)
{
    return join({contact.getFirstName(), contact.getLastName(), contact.getWorkNumber1(), contact.getWorkNumber2(),
                 contact.getMobileNumber(), contact.getHomeNumber(), contact.getEmail(), contact.getCompany(),
                 contact.getAddress1(), contact.getAddress2(), contact.getRole(),
                 contact.getOrderedContactSourceAsString()});
}

void tryMessage(const std::string& xml)
{
    Phonebook book;
    const std::unique_ptr<Conversation> contact = book.read(xml);
    const Texts numbers = contact->getConversationNumbers();
    const std::string& number = contact->getNumber();
    Fuzz::expect(number.empty() || std::count(numbers.begin(), numbers.end(), number) != 0,
                 "the number to call is one of the contact's", number);
    book.source.saveContact(contact.get());
    Fuzz::expect(book.directory.written.size() == 1, "a saved contact is written");
    const std::unique_ptr<Conversation> again = book.read(book.directory.written.front());
    Fuzz::expect(describe(*again) == describe(*contact), "a contact that is written is read as the same",
                 describe(*contact) + "\n       " + describe(*again));
}

/** Id and texts of every stored contact. */
Texts stored(const DirectoryServiceConversationSource& source)
{
    Texts all;
    for (const Conversation* contact : *source.getConversations())
    {
        all.push_back(contact->getConversationId() + "|" + describe(*contact));
    }
    return all;
}

void checkStored(Phonebook& book)
{
    Texts contactIds;
    for (Conversation* contact : *book.source.getConversations())
    {
        const std::string id = contact->getConversationId();
        Fuzz::expect(book.source.getConversation(id) == contact, "a stored contact is found by its id", id);
        contactIds.push_back(book.source.findContactIdForConversationID(id));
        Fuzz::expect(contactIds.back().empty() || book.directory.contacts.count(contactIds.back()) != 0,
                     "a stored contact is one of the phonebook's", contactIds.back());
    }
    contactIds.erase(std::remove(contactIds.begin(), contactIds.end(), ""), contactIds.end());
    Fuzz::expect(!Fuzz::hasDuplicates(contactIds), "no contact is stored twice");
    Fuzz::expect(!Fuzz::hasDuplicates(book.source.getInUseConversationIds()), "no id stands for two conversations");
}

void tell(Phonebook& book, const std::string& what, const std::string& rest)
{
    const std::string id = Testing::InMemoryDirectory::idOf(rest);
    if (what == "new" || what == "changed")
    {
        if (!id.empty())
        {
            book.directory.contacts[id] = rest;
        }
        what == "new" ? book.source.newContact(rest) : book.source.contactUpdated(rest);
    }
    else if (what == "bluetooth")
    {
        book.source.newContact(rest, what);
    }
    else if (what == "gone")
    {
        book.directory.deleteContact(rest);
    }
    else if (what == "reread")
    {
        book.source.phonebookDatabaseUpdated(true);
        book.phone.ids.garbageCollect(); // as an aggregator has it done
        const Texts before = stored(book.source);
        book.source.phonebookDatabaseUpdated(true);
        const Texts after = stored(book.source);
        Fuzz::expect(after == before, "the same phonebook is read as the same contacts",
                     join(before) + "\n" + join(after));
    }
}
} // namespace

void Fuzz::tryInput(const std::string& input)
{
    tryMessage(input);
    Phonebook book;
    book.directory.observer = &book.source;
    book.phone.ids.setConversationSources({&book.source});
    for (const std::string& line : ClientUtils::tokenizeString(input, '\n'))
    {
        const std::size_t end = std::min(line.find(' '), line.size());
        tell(book, line.substr(0, end), line.substr(std::min(end + 1, line.size())));
        book.phone.ids.garbageCollect();
        checkStored(book);
    }
}
