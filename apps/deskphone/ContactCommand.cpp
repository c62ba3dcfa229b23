#include "ContactCommand.h"

#include "Contact.h"
#include "EventFields.h"
#include "ScreenText.h"
#include "Telephone.h"
#include "TextColumn.h"
#include "host/SimulatedEventLoop.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <vector>

namespace Deskphone
{
namespace
{
constexpr std::size_t NAME_COLUMNS = 26;

Contact contactWithId(Host::Phonebook& phonebook, const std::string& id)
{
    const std::string message = phonebook.read(readRequest(id));
    if (message.empty())
    {
        throw ContactProblem("there is no contact " + inQuotes(id));
    }
    return contactOf(message);
}

std::vector<Contact> allContacts(Host::Phonebook& phonebook)
{
    std::vector<Contact> all;
    for (const std::string& id : phonebook.contactIds())
    {
        all.push_back(contactWithId(phonebook, id));
    }
    return all;
}

/** Also a phonebook that was damaged and is empty now: the user should know before it fills again. */
void requireIntact(const Host::Phonebook& phonebook)
{
    if (!phonebook.isStored() || !phonebook.problem().empty())
    {
        throw ContactProblem(phonebook.problem());
    }
}

/** By what a list shows of it: an e-mail address or a company alone would be an empty line. */
bool namesSomebody(const Contact& contact)
{
    const std::array shown = {&contact.first, &contact.last,   &contact.work,
                              &contact.work2, &contact.mobile, &contact.home};
    return std::any_of(shown.begin(), shown.end(), [](const std::string* text) { return !text->empty(); });
}

std::string numberOfType(const Contact& contact, CallPartyIdentifier::PhoneNumberIconType type)
{
    switch (type)
    {
    case CallPartyIdentifier::HOME:
        return contact.home;
    case CallPartyIdentifier::WORK_1:
        return contact.work;
    case CallPartyIdentifier::WORK_2:
        return contact.work2;
    case CallPartyIdentifier::MOBILE:
        return contact.mobile;
    default:
        return "";
    }
}

/** The contact with what the options tell of it. */
Contact completed(Contact contact, const Options& options)
{
    for (const ContactField& field : CONTACT_FIELDS)
    {
        const auto told = options.contactFields.find(field.name);
        contact.*field.value = told == options.contactFields.end() ? contact.*field.value : told->second;
    }
    if (!namesSomebody(contact))
    {
        throw ContactProblem("a contact needs a name or a number");
    }
    if (numberOfType(contact, contact.mainNumber).empty())
    {
        contact.mainNumber = CallPartyIdentifier::NO_ICON; // which is gone with its number
    }
    return contact;
}

void write(Host::Phonebook& phonebook, const Contact& contact)
{
    if (!phonebook.write(writeRequest(contact), true))
    {
        throw ContactProblem("the phonebook refuses the contact");
    }
}

/** The contact as it stands in the phonebook from then on, or stood there. */
Contact act(Host::Phonebook& phonebook, const Options& options)
{
    if (options.command == Options::CONTACT_ADD)
    {
        write(phonebook, completed({}, options));
        return contactWithId(phonebook, phonebook.contactIds().back());
    }
    const Contact known = contactWithId(phonebook, options.contactId);
    if (options.command == Options::CONTACT_REMOVE)
    {
        phonebook.deleteContact(known.contactId);
        return known;
    }
    write(phonebook, completed(known, options));
    return contactWithId(phonebook, known.contactId);
}

void printTable(std::ostream& stream, const std::vector<Contact>& contacts)
{
    const auto printLine = [&stream](const std::string& name, const Contact& contact)
    {
        stream << "  " << leftAligned(name, NAME_COLUMNS) << ' ';
        for (const std::string* number : {&contact.work, &contact.work2, &contact.mobile, &contact.home})
        {
            stream << leftAligned(*number, NUMBER_COLUMNS) << ' ';
        }
        stream << leftAligned(contact.contactId, columnsOf(contact.contactId)) << '\n';
    };
    printLine("Name", {"Id", "", "", "Work", "Work 2", "Mobile", "Home"});
    for (const Contact& contact : contacts)
    {
        printLine(joined({contact.first, contact.last}, " "), contact);
    }
}

void printJson(std::ostream& stream, const std::vector<Contact>& contacts)
{
    for (const Contact& contact : contacts)
    {
        nlohmann::ordered_json object{{"contactId", contact.contactId}};
        for (const ContactField& field : CONTACT_FIELDS)
        {
            object[field.name] = contact.*field.value;
        }
        for (const auto& [name, type] : EventFields::partyTypes())
        {
            if (type == contact.mainNumber)
            {
                object["mainNumber"] = name;
            }
        }
        stream << object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
    }
}

void print(std::ostream& stream, const std::vector<Contact>& contacts, bool asJson)
{
    if (asJson)
    {
        printJson(stream, contacts);
    }
    else if (contacts.empty())
    {
        stream << "  no contacts\n";
    }
    else
    {
        printTable(stream, contacts);
    }
}

/** Where the contacts are: nowhere as long as there are none, for looking makes no phonebook. */
std::filesystem::path folderOf(const Options& options, std::ostream& errors)
{
    const std::filesystem::path folder = options.dataFolder();
    const std::filesystem::path file = Telephone::phonebookFile(folder);
    std::error_code error;
    if (options.command == Options::CONTACT_ADD || std::filesystem::exists(file, error) || error)
    {
        return folder;
    }
    errors << "deskphone: there is no stored phonebook: " << file.string() << '\n';
    return {};
}
} // namespace

void manageContacts(const Options& options, std::ostream& screen, std::ostream& errors)
{
    Host::SimulatedEventLoop loop(std::time(nullptr));
    const Host::EventLoop::Scope scope(loop);
    Telephone telephone(options.over({}), folderOf(options, errors));
    Host::Phonebook& phonebook = telephone.phonebook();
    if (options.command == Options::CONTACT_LIST)
    {
        print(screen, allContacts(phonebook), options.json); // what can be read at least
        requireIntact(phonebook);
        return;
    }
    requireIntact(phonebook);
    const Contact contact = act(phonebook, options);
    telephone.storeOrAbandon();
    requireIntact(phonebook);
    print(screen, {contact}, options.json);
}
} // namespace Deskphone
