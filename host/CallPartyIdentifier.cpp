#include "platform/CallPartyIdentifier.h"

#include "ConversationAPI/PooledObject.h"
#include "ConversationAPI/ReferenceCount.h"

#include <boost/smart_ptr/intrusive_ref_counter.hpp>

#include <memory>
#include <utility>

/** What the copies of one party share. Never changed once it is reachable from a party. */
struct CallPartyIdentifier::Details : boost::intrusive_ref_counter<Details, ConversationAPI::ReferenceCount>,
                                      ConversationAPI::PooledObject
{
    Details(const std::string& first, const std::string& last, const std::string& dialled, PhoneNumberIconType type,
            const std::string& picture, bool callControlFlag)
        : numberType(type), flag(callControlFlag), firstName(first), surname(last), number(dialled),
          picturePath(picture.empty() ? nullptr : std::make_unique<const std::string>(picture))
    {
    }

    PhoneNumberIconType numberType : 8; // small, so that these lie where the names begin
    bool flag;
    std::string firstName;
    std::string surname;
    std::string number;
    std::unique_ptr<const std::string> picturePath; ///< null: there is none, as of nearly every party
};

namespace
{
const std::string& emptyText()
{
    static const std::string text;
    return text;
}
} // namespace

CallPartyIdentifier::CallPartyIdentifier() = default;

CallPartyIdentifier::CallPartyIdentifier(const std::string& firstName, const std::string& surname,
                                         const std::string& number, PhoneNumberIconType numberType,
                                         const std::string& picturePath, bool flag)
{
    setDetails(firstName, surname, number, numberType, picturePath, flag);
}

CallPartyIdentifier::CallPartyIdentifier(const CallPartyIdentifier& other) : details_(other.details_)
{
    if (details_)
    {
        intrusive_ptr_add_ref(details_);
    }
}

CallPartyIdentifier::CallPartyIdentifier(CallPartyIdentifier&& other) noexcept
    : details_(std::exchange(other.details_, nullptr))
{
}

CallPartyIdentifier& CallPartyIdentifier::operator=(const CallPartyIdentifier& other)
{
    return *this = CallPartyIdentifier(other);
}

CallPartyIdentifier& CallPartyIdentifier::operator=(CallPartyIdentifier&& other) noexcept
{
    std::swap(details_, other.details_);
    return *this;
}

CallPartyIdentifier::~CallPartyIdentifier()
{
    if (details_)
    {
        intrusive_ptr_release(details_);
    }
}

void CallPartyIdentifier::setDetails(const std::string& firstName, const std::string& surname,
                                     const std::string& number, PhoneNumberIconType numberType,
                                     const std::string& picturePath, bool flag)
{
    CallPartyIdentifier replacement;
    replacement.details_ = new Details(firstName, surname, number, numberType, picturePath, flag);
    intrusive_ptr_add_ref(replacement.details_);
    std::swap(details_, replacement.details_);
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
