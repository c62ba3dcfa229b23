/**
 * One party of a call as call control and the journal name it: names, number, number type and picture.
 *
 * A value. Copies share their texts until one of them is changed, because parties are copied far more often
 * than changed.
 */
#pragma once

#include <string>

class CallPartyIdentifier
{
  public:
    /** Which icon the display shows beside the number; the values match NumberType::NT. */
    enum PhoneNumberIconType
    {
        NO_ICON = 0,
        HOME = 1,
        WORK_1 = 2,
        WORK_2 = 3,
        MOBILE = 4
    };

    /** A party of which nothing is known: all texts empty, NO_ICON. */
    CallPartyIdentifier();

    /** `flag` belongs to call control and is carried unchanged. */
    CallPartyIdentifier(const std::string& firstName, const std::string& surname, const std::string& number,
                        PhoneNumberIconType numberType, const std::string& picturePath, bool flag);

    CallPartyIdentifier(const CallPartyIdentifier& other);
    CallPartyIdentifier(CallPartyIdentifier&& other) noexcept;
    CallPartyIdentifier& operator=(const CallPartyIdentifier& other);
    CallPartyIdentifier& operator=(CallPartyIdentifier&& other) noexcept;
    ~CallPartyIdentifier();

    /** Replaces everything. */
    void setDetails(const std::string& firstName, const std::string& surname, const std::string& number,
                    PhoneNumberIconType numberType, const std::string& picturePath, bool flag);

    /** References live until this record is changed or destroyed. */
    const std::string& getFirstName() const;
    const std::string& getSurname() const;
    const std::string& getNumber() const;
    PhoneNumberIconType getPhoneNumberType() const;
    const std::string& getContactImagePath() const;

  private:
    struct Details;
    const Details* details_ = nullptr; ///< shared by copies; null for a party of which nothing is known
};
