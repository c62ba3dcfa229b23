#include "platform/CallPartyIdentifier.h"

/** What the copies of one party share. Never changed once it is reachable from a party. */
struct CallPartyIdentifier::Details
{
    std::string firstName;
    std::string surname;
    std::string number;
    std::unique_ptr<const std::string> picturePath; ///< null: there is none, as of nearly every party
    PhoneNumberIconType numberType = NO_ICON;
    bool flag = false;
};

namespace
{
const std::string& emptyText()
{
    static const std::string text;
    return text;
}

std::unique_ptr<const std::string> textUnlessEmpty(const std::string& text)
{
    return text.empty() ? nullptr : std::make_unique<const std::string>(text);
}
} // namespace

CallPartyIdentifier::CallPartyIdentifier() = default;

CallPartyIdentifier::CallPartyIdentifier(const std::string& firstName, const std::string& surname,
                                         const std::string& number, PhoneNumberIconType numberType,
                                         const std::string& picturePath, bool flag)
    : details_(std::make_shared<const Details>(
          Details{firstName, surname, number, textUnlessEmpty(picturePath), numberType, flag}))
{
}

CallPartyIdentifier::CallPartyIdentifier(const CallPartyIdentifier& other) = default;
CallPartyIdentifier::CallPartyIdentifier(CallPartyIdentifier&& other) noexcept = default;
CallPartyIdentifier& CallPartyIdentifier::operator=(const CallPartyIdentifier& other) = default;
CallPartyIdentifier& CallPartyIdentifier::operator=(CallPartyIdentifier&& other) noexcept = default;
CallPartyIdentifier::~CallPartyIdentifier() = default;

void CallPartyIdentifier::setDetails(const std::string& firstName, const std::string& surname,
                                     const std::string& number, PhoneNumberIconType numberType,
                                     const std::string& picturePath, bool flag)
{
    details_ = std::make_shared<const Details>(
        Details{firstName, surname, number, textUnlessEmpty(picturePath), numberType, flag});
}

const std::string& CallPartyIdentifier::getFirstName() const
{
    return details_ ? details_->firstName : emptyText();
}

const std::string& CallPartyIdentifier::getSurname() const
{
    return details_ ? details_->surname : emptyText();
}

const std::string& CallPartyIdentifier::getNumber() const
{
    return details_ ? details_->number : emptyText();
}

CallPartyIdentifier::PhoneNumberIconType CallPartyIdentifier::getPhoneNumberType() const
{
    return details_ ? details_->numberType : NO_ICON;
}

const std::string& CallPartyIdentifier::getContactImagePath() const
{
    return details_ && details_->picturePath ? *details_->picturePath : emptyText();
}
