/**
 * What a conversation knows of its contact: names, numbers, profile, presence, group.
 *
 * The part of a conversation that does not concern its items. Copies share their texts until one changes
 * them. Texts given by reference are valid until the contact changes: copy what is to be kept. Numbers are
 * kept in comparable form; digit analysis is not owned and outlives the contact. UI thread only.
 */
#pragma once

#include "ConversationAPI/ContactDetails.h"
#include "ConversationAPI/CopyOnWrite.h"
#include "ConversationAPI/SharedText.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

class DigitAnalysisServiceIfc;

namespace ConversationAPI
{
class ConversationItem;
class ConversationSourceIfc;

class ConversationContact
{
  public:
    enum Type : std::uint8_t
    {
        DIRECT = 0,
        GROUP = 1
    };

    /** Where the contact comes from; NO_CONTACT for a conversation made of items alone. */
    enum ContactSource : std::uint8_t
    {
        NO_CONTACT = 0,
        DIRECTORY_CONTACT = 1,
        WSI_CONTACT = 2
    };

    enum PresenceState : std::uint8_t
    {
        OFFLINE = 0,
        AVAILABLE = 1,
        AWAY = 2,
        BUSY = 3,
        UNKNOWN_PRESENCE = 4
    };

    using PhoneNumberIconType = CallPartyIdentifier::PhoneNumberIconType;

    ConversationContact& operator=(const ConversationContact&) = delete;
    virtual ~ConversationContact();

    /** Work 1, work 2, mobile, home; "" for one that is not known. */
    std::vector<std::string> getConversationNumbers() const;

    /** Whether the main number or one of the four is this one, in comparable form; "" matches none. */
    bool hasAnyNumberMatching(const std::string& number) const;

    /** Also the main number when it is of this type. Types without a place change none of the four. */
    void updateContactNumber(PhoneNumberIconType type, const std::string& number);

    /**
     * Which of the four numbers the item's first party called from or was called at: MOBILE, HOME, WORK_2 or WORK_1,
     * tried in this order; NO_ICON for none.
     */
    PhoneNumberIconType getMatchingNumberType(const ConversationItem& item) const;

    const std::string& getFirstName() const { return contact_->firstName; }
    const std::string& getLastName() const { return contact_->lastName; }
    const std::string& getNumber() const { return contact_->numbers.main(); }
    PhoneNumberIconType getNumberType() const { return contact_->numberType; }
    const std::string& getWorkNumber1() const { return contact_->numbers.at(WORK_1_SLOT); }
    const std::string& getWorkNumber2() const { return contact_->numbers.at(WORK_2_SLOT); }
    const std::string& getMobileNumber() const { return contact_->numbers.at(MOBILE_SLOT); }
    const std::string& getHomeNumber() const { return contact_->numbers.at(HOME_SLOT); }
    const std::string& getDisplayName() const { return profile_->displayName; }
    const SecondParty& secondParty() const { return profile_->secondParty; }
    const std::string& getEmail() const { return profile_->email; }
    const std::string& getCompany() const { return profile_->company; }
    const std::string& getAddress1() const { return profile_->address1; }
    const std::string& getAddress2() const { return profile_->address2; }
    const std::string& getRole() const { return profile_->role; }
    const std::string& getUserId() const { return profile_->userId; }
    const std::string& getContactImagePath() const { return profile_->imagePath; }
    const std::string& getSearchId() const { return profile_->searchId; }
    bool getSearchIdUsed() const { return searchIdUsed_; }
    const std::string& getOrderedContactSourceAsString() const { return profile_->orderedContactSource; }
    std::string exchangeContactId() const { return exchangeContactId_.str(); }
    const SharedText& exchangeContactIdText() const { return exchangeContactId_; }

    /** Names and numbers, sharing their texts. */
    const CopyOnWrite<ContactDetails>& contactDetails() const { return contact_; }
    const CopyOnWrite<ContactProfile>& contactProfile() const { return profile_; }

    /** Display name, else the names, else the main number. */
    std::string getContactName() const;

    /** The participants' names, never their numbers. */
    std::string nameList() const;
    std::string groupNames() const;

    /** What names the conversation in words: the names or, for a group, its name or theirs. */
    std::string toString() const;

    Type getType() const { return type_; }
    void setType(Type type) { type_ = type; }

    ContactSource getContactSource() const { return contactSource_; }
    void setContactSource(ContactSource source) { contactSource_ = source; }
    PresenceState getPresenceState() const { return presence_; }
    void setPresenceState(PresenceState presence) { presence_ = presence; }
    ConversationSourceIfc* getSource() const { return source_; }
    void setSource(ConversationSourceIfc* source) { source_ = source; }

    /** The name of the group conversation. */
    const std::string& getGroupConversationName() const { return group_->name; }
    void setGroupName(const std::string& name) { group_.write().name = name; }
    const std::vector<ConversationParticipant>& getGroupParticipants() const { return group_->participants; }
    void setGroupParticipants(std::vector<ConversationParticipant> all)
    {
        group_.write().participants = std::move(all);
    }
    void addGroupParticipant(const ConversationParticipant& one) { group_.write().participants.push_back(one); }
    bool userIsAGroupParticipant() const { return group_->userIsAGroupParticipant; }
    void setUserIsAGroupParticipant(bool isOne) { group_.write().userIsAGroupParticipant = isOne; }
    bool isModerated() const { return group_->isModerated; }
    void setModerated(bool moderated) { group_.write().isModerated = moderated; }
    const std::vector<std::string>& getBridgeNumbers() const { return group_->bridgeNumbers; }
    void setBridgeNumbers(std::vector<std::string> numbers) { group_.write().bridgeNumbers = std::move(numbers); }
    const std::string& getGroupCallPin() const { return group_->pin; }
    void setGroupCallPin(const std::string& pin) { group_.write().pin = pin; }

    /** First and last name are taken together; two empty names change nothing. */
    void updateName(const std::string& firstName, const std::string& lastName);

    /** An empty number changes nothing. */
    void updateNumber(const std::string& number, PhoneNumberIconType type);
    void saveFirstName(const std::string& firstName);
    void saveLastName(const std::string& lastName);
    void saveWorkNumber1(const std::string& number) { saveContactNumber(WORK_1_SLOT, number); }
    void saveWorkNumber2(const std::string& number) { saveContactNumber(WORK_2_SLOT, number); }
    void saveMobileNumber(const std::string& number) { saveContactNumber(MOBILE_SLOT, number); }
    void saveHomeNumber(const std::string& number) { saveContactNumber(HOME_SLOT, number); }
    void setPhoneNumbers(const std::string& work1, const std::string& work2, const std::string& mobile,
                         const std::string& home, const std::string& mainNumber, PhoneNumberIconType mainType);
    void setPersonalData(const std::string& firstName, const std::string& lastName, const std::string& email,
                         const std::string& company, const std::string& address1, const std::string& address2,
                         const std::string& role);
    void setDisplayName(const std::string& name) { profile_.write().displayName = name; }
    void setUserId(const std::string& userId) { profile_.write().userId = userId; }
    void setContactImagePath(const std::string& path) { profile_.write().imagePath = path; }
    void setSearchId(const std::string& searchId) { profile_.write().searchId = searchId; }
    void setSearchIdUsed(bool used) { searchIdUsed_ = used; }

    /** The directories' names in the order in which they were asked; kept byte for byte. */
    void setOrderedContactSource(const std::string& text) { profile_.write().orderedContactSource = text; }
    void setExchangeContactId(const std::string& id);
    void setDialStringConverter(DigitAnalysisServiceIfc* digitAnalysis);

    /**
     * Whether an item of this party alone, older than the one that is shown, tells neither name nor number anew. False
     * where only looking at it would tell.
     */
    bool hasNothingToLearnFrom(const ConversationParticipant& party) const;

  protected:
    ConversationContact();
    ConversationContact(const ConversationContact& other);

    /** Something of the names, numbers or ids changed. */
    virtual void contactChanged() = 0;

    /** The four numbers were these and may be others now. */
    virtual void contactNumbersChanged(const CopyOnWrite<ContactDetails>& before) = 0;

    std::string convertToCanonical(std::string number) const;

    /** What a new item tells of the parties; `shown` is the item that is shown first so far, null without one. */
    void updateNameAndNumber(const ConversationItem& item, const ConversationItem* shown);
    void updateSecondPartyNameAndNumber(const ConversationItem& item, const ConversationItem* shown);

    void takeGroupFields(const ConversationContact& other);

    void cloneContactInfo(const ConversationContact& other);

    /** Names, numbers and profile; but an empty name or main number replaces none. */
    void takeContactDetails(const ConversationContact& other);

    /** Whether the details are, or were once, those of a contact. */
    bool hasTakenInContact() const { return contactSource_ != NO_CONTACT || !contactId_.empty(); }

    /** The contact whose details these are, "" when they come from items. */
    const SharedText& takenContactId() const { return contactId_; }
    void setTakenContactId(const SharedText& id) { contactId_ = id; }

  private:
    void takeFrom(const ConversationParticipant& party);
    void takeFreeNumbersFrom(const ConversationParticipant& party);
    void setSecondParty(const SecondParty& party);
    void saveContactNumber(ContactNumberSlot slot, const std::string& number);
    void takeNames(std::string firstName, std::string lastName);
    void convertNumbers();
    void takeFreeNumber(ContactNumberSlot slot, const std::string& number);

    CopyOnWrite<GroupDetails> group_;
    SharedText exchangeContactId_;
    CopyOnWrite<ContactDetails> contact_;
    CopyOnWrite<ContactProfile> profile_;
    SharedText contactId_;
    ConversationSourceIfc* source_ = nullptr;
    DigitAnalysisServiceIfc* digitAnalysis_ = nullptr;
    Type type_ = DIRECT;
    PresenceState presence_ = UNKNOWN_PRESENCE;
    ContactSource contactSource_ = NO_CONTACT;
    bool searchIdUsed_ = false;
};
} // namespace ConversationAPI
