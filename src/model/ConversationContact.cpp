#include "ConversationAPI/ConversationContact.h"

#include "ConversationAPI/ConversationItem.h"
#include "ConversationAPI/WellKnownNames.h"
#include "platform/DigitAnalysisServiceIfc.h"

#include <algorithm>
#include <cctype>

namespace ConversationAPI
{
namespace
{
std::string joinedByComma(const std::string& a, const std::string& b)
{
    const char* comma = a.empty() || b.empty() ? "" : ", ";
    return a + comma + b;
}

/** A display name may be nothing but a number. Bytes of other than ASCII letters count as letters. */
bool hasLetter(const std::string& text)
{
    return std::any_of(text.begin(), text.end(), [](unsigned char c) { return std::isalpha(c) != 0 || c >= 0x80; });
}
} // namespace

ConversationContact::ConversationContact() = default;

ConversationContact::ConversationContact(const ConversationContact& other) = default;

ConversationContact::~ConversationContact() = default;

std::string ConversationContact::convertToCanonical(std::string number) const
{
    if (digitAnalysis_ && !number.empty())
    {
        digitAnalysis_->convertDialString(number);
    }
    return number;
}

std::vector<std::string> ConversationContact::getConversationNumbers() const
{
    const ContactNumbers numbers = contact_->numbers.four();
    return {numbers.begin(), numbers.end()};
}

bool ConversationContact::hasAnyNumberMatching(const std::string& number) const
{
    return !number.empty() && contact_->numbers.has(number);
}

void ConversationContact::updateContactNumber(PhoneNumberIconType type, const std::string& number)
{
    const CopyOnWrite<ContactDetails> before = contact_;
    const std::string canonical = convertToCanonical(number);
    if (type == contact_->numberType)
    {
        contact_.write().numbers.setMain(canonical);
    }
    const ContactNumberSlot slot = slotForNumberType(type);
    if (slot < CONTACT_NUMBER_SLOTS)
    {
        contact_.write().numbers.set(slot, canonical);
    }
    contactChanged();
    contactNumbersChanged(before);
}

// A number that is stored twice shows the icon of the first of mobile, home, work 2 and work 1: of a
// contact's numbers, the one that says most about where the person is.
ConversationContact::PhoneNumberIconType ConversationContact::getMatchingNumberType(const ConversationItem& item) const
{
    if (item.participants().empty())
    {
        return CallPartyIdentifier::NO_ICON;
    }
    const std::string& number = item.participants().front().comparableNumberText();
    for (const unsigned slot : {MOBILE_SLOT, HOME_SLOT, WORK_2_SLOT, WORK_1_SLOT})
    {
        if (!number.empty() && number == contact_->numbers.at(slot))
        {
            return numberTypeForSlot(slot);
        }
    }
    return CallPartyIdentifier::NO_ICON;
}

std::string ConversationContact::getContactName() const
{
    if (!getDisplayName().empty())
    {
        return getDisplayName();
    }
    const std::string names = joinNames(getFirstName(), getLastName());
    return names.empty() ? getNumber() : names;
}

std::string ConversationContact::nameList() const
{
    std::string names = joinNames(getFirstName(), getLastName());
    if (names.empty() && hasLetter(getDisplayName()))
    {
        names = getDisplayName();
    }
    return joinedByComma(names, joinNames(secondParty().firstName, secondParty().lastName));
}

std::string ConversationContact::groupNames() const
{
    std::string names;
    for (const ConversationParticipant& participant : group_->participants)
    {
        names = joinedByComma(names, participant.getName());
    }
    return names;
}

std::string ConversationContact::toString() const
{
    if (getType() != GROUP)
    {
        return nameList();
    }
    const std::string& name = getGroupConversationName();
    return name.empty() ? groupNames() : name;
}

void ConversationContact::updateName(const std::string& firstName, const std::string& lastName)
{
    const bool isKnown = firstName == getFirstName() && lastName == getLastName();
    if (isKnown || (firstName.empty() && lastName.empty()))
    {
        return;
    }
    takeNames(firstName, lastName);
}

/** By value: who calls may have the texts from this very contact. */
void ConversationContact::takeNames(std::string firstName, std::string lastName)
{
    ContactDetails& contact = contact_.write();
    contact.firstName = std::move(firstName);
    contact.lastName = std::move(lastName);
    contactChanged();
}

void ConversationContact::updateNumber(const std::string& number, PhoneNumberIconType type)
{
    if (number.empty() || (number == getNumber() && type == getNumberType()))
    {
        return;
    }
    const std::string canonical = convertToCanonical(number);
    ContactDetails& contact = contact_.write();
    contact.numbers.setMain(canonical);
    contact.numberType = type;
    contactChanged();
}

void ConversationContact::saveFirstName(const std::string& firstName)
{
    contact_.write().firstName = firstName;
    contactChanged();
}

void ConversationContact::saveLastName(const std::string& lastName)
{
    contact_.write().lastName = lastName;
    contactChanged();
}

void ConversationContact::saveContactNumber(ContactNumberSlot slot, const std::string& number)
{
    const CopyOnWrite<ContactDetails> before = contact_;
    const std::string canonical = convertToCanonical(number);
    contact_.write().numbers.set(slot, canonical);
    contactChanged();
    contactNumbersChanged(before);
}

void ConversationContact::setPhoneNumbers(const std::string& work1, const std::string& work2, const std::string& mobile,
                                          const std::string& home, const std::string& mainNumber,
                                          PhoneNumberIconType mainType)
{
    const CopyOnWrite<ContactDetails> before = contact_;
    const ContactNumbers canonical = {convertToCanonical(work1), convertToCanonical(work2), convertToCanonical(mobile),
                                      convertToCanonical(home)};
    const std::string canonicalMain = convertToCanonical(mainNumber);
    ContactDetails& contact = contact_.write();
    contact.numbers.setMain(canonicalMain);
    contact.numbers.setFour(canonical);
    contact.numberType = mainType;
    contactChanged();
    contactNumbersChanged(before);
}

void ConversationContact::setPersonalData(const std::string& firstName, const std::string& lastName,
                                          const std::string& email, const std::string& company,
                                          const std::string& address1, const std::string& address2,
                                          const std::string& role)
{
    ContactProfile changed = *profile_;
    changed.email = email;
    changed.company = company;
    changed.address1 = address1;
    changed.address2 = address2;
    changed.role = role;
    profile_.write() = std::move(changed);
    takeNames(firstName, lastName);
}

void ConversationContact::setExchangeContactId(const std::string& id)
{
    exchangeContactId_.assign(id);
    contactChanged();
}

void ConversationContact::setDialStringConverter(DigitAnalysisServiceIfc* digitAnalysis)
{
    digitAnalysis_ = digitAnalysis;
    if (!contact_.isSet() || !digitAnalysis)
    {
        return;
    }
    const CopyOnWrite<ContactDetails> before = contact_;
    convertNumbers();
    contactChanged();
    contactNumbersChanged(before);
}

void ConversationContact::convertNumbers()
{
    ContactDetails& contact = contact_.write();
    contact.numbers.setMain(convertToCanonical(contact.numbers.main()));
    for (const ContactNumberSlot slot : ALL_CONTACT_NUMBER_SLOTS)
    {
        contact.numbers.set(slot, convertToCanonical(contact.numbers.at(slot)));
    }
}

void ConversationContact::cloneContactInfo(const ConversationContact& other)
{
    const CopyOnWrite<ContactDetails> before = contact_;
    const Type ownType = type_;
    contact_ = other.contact_;
    takeContactDetails(other);
    type_ = ownType;
    contactSource_ = other.contactSource_;
    contactChanged();
    contactNumbersChanged(before);
}

void ConversationContact::updateNameAndNumber(const ConversationItem& item, const ConversationItem* shown)
{
    if (item.participants().empty() || contactSource_ != NO_CONTACT)
    {
        return;
    }
    const ConversationParticipant& party = item.participants().front();
    if (!shown || !shown->isLaterThan(item))
    {
        takeFrom(party);
    }
    else if (getFirstName().empty() && getLastName().empty() && !party.isAnonymous() && !party.isCTIAssisted())
    {
        // Whether an older call with a name comes before or after newer ones without, as in a rebuild: it tells.
        updateName(party.firstNameText(), party.surnameText());
    }
    takeFreeNumbersFrom(party);
}

/** An item that will stand behind what is shown, a call of the history beside a conference, has no say. */
void ConversationContact::updateSecondPartyNameAndNumber(const ConversationItem& item, const ConversationItem* shown)
{
    const bool hasSecondParty = item.participants().size() > 1;
    if ((!hasSecondParty && secondParty().isNobody()) || (shown && shown->lessThanOtherConsideringCreationTime(item)))
    {
        return;
    }
    if (!hasSecondParty)
    {
        setSecondParty({});
        return;
    }
    const ConversationParticipant& party = item.participants()[1];
    setSecondParty({party.firstNameText(), party.surnameText(), party.comparableNumberText()});
}

bool ConversationContact::hasNothingToLearnFrom(const ConversationParticipant& party) const
{
    const bool isNamed = !getFirstName().empty() || !getLastName().empty();
    const std::string& number = party.comparableNumberText();
    const bool isKnown = number.empty() || contact_->numbers.hasAmongTheFour(number);
    return contactSource_ != NO_CONTACT || (isNamed && !party.hasFurtherNumbers() && isKnown);
}

void ConversationContact::takeFrom(const ConversationParticipant& party)
{
    updateName(party.firstNameText(), party.surnameText());
    updateNumber(party.comparableNumberText(), party.getPhoneNumberType());
}

void ConversationContact::takeFreeNumbersFrom(const ConversationParticipant& party)
{
    const std::string& comparable = party.comparableNumberText();
    if (!comparable.empty() && !party.hasFurtherNumbers() && contact_->numbers.hasAmongTheFour(comparable))
    {
        return;
    }
    for (const ContactNumberSlot slot : ALL_CONTACT_NUMBER_SLOTS)
    {
        const std::string& number = party.contactNumber(slot);
        if (!number.empty())
        {
            takeFreeNumber(slot, number);
        }
    }
    if (contact_->numbers.hasNoneOfTheFour())
    {
        takeFreeNumber(slotForNumberType(party.getPhoneNumberType()), comparable);
    }
}

void ConversationContact::takeFreeNumber(ContactNumberSlot slot, const std::string& number)
{
    if (contact_->numbers.hasFreeSlotFor(slot, number))
    {
        contact_.write().numbers.set(slot, number);
        contactChanged();
    }
}

void ConversationContact::setSecondParty(const SecondParty& party)
{
    if (!(party == profile_->secondParty))
    {
        profile_.write().secondParty = party;
    }
}

void ConversationContact::takeGroupFields(const ConversationContact& other)
{
    if (!group_.isSet() && !other.group_.isSet())
    {
        return;
    }
    GroupDetails& group = group_.write();
    group.participants = other.group_->participants;
    group.userIsAGroupParticipant = other.group_->userIsAGroupParticipant;
    group.name = other.group_->name;
    group.isModerated = other.group_->isModerated;
}

void ConversationContact::takeContactDetails(const ConversationContact& other)
{
    const CopyOnWrite<ContactDetails> mine = contact_;
    contact_ = other.contact_;
    if (getFirstName().empty() && getLastName().empty() && mine.isSet())
    {
        contact_.write().firstName = mine->firstName;
        contact_.write().lastName = mine->lastName;
    }
    if (getNumber().empty() && mine.isSet())
    {
        contact_.write().numbers.setMain(mine->numbers.main());
        contact_.write().numberType = mine->numberType;
    }
    if (digitAnalysis_ != other.digitAnalysis_)
    {
        convertNumbers();
    }
    if (profile_.isSet() || other.profile_.isSet())
    {
        const ContactProfile before = *profile_;
        profile_ = other.profile_;
        profile_.write().secondParty = before.secondParty;
        profile_.write().searchId = before.searchId;
    }
    if (other.group_.isSet())
    {
        group_.write().bridgeNumbers = other.group_->bridgeNumbers;
        group_.write().pin = other.group_->pin;
    }
    type_ = other.type_;
    presence_ = other.presence_;
    exchangeContactId_ = other.exchangeContactId_;
    contactChanged();
}
} // namespace ConversationAPI
