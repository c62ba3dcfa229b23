#include "platform/CallJournal.h"

CallInfo::CallInfo() = default;
CallInfo::CallInfo(const CallInfo& other) = default;
CallInfo::CallInfo(CallInfo&& other) noexcept = default;
CallInfo& CallInfo::operator=(const CallInfo& other) = default;
CallInfo& CallInfo::operator=(CallInfo&& other) noexcept = default;
CallInfo::~CallInfo() = default;

const std::string& CallInfo::getRemoteNumber() const
{
    return remoteNumber_;
}

void CallInfo::setRemoteNumber(const std::string& number)
{
    remoteNumber_ = number;
}

NumberType::NT CallInfo::getNumberType() const
{
    return numberType_;
}

void CallInfo::setNumberType(NumberType::NT type)
{
    numberType_ = type;
}

const std::string& CallInfo::getCallTime() const
{
    return callTime_;
}

void CallInfo::setCallTime(const std::string& iso8601)
{
    callTime_ = iso8601;
}

const std::string& CallInfo::getRedirectingNumber() const
{
    return redirectingNumber_;
}

void CallInfo::setRedirectingNumber(const std::string& number)
{
    redirectingNumber_ = number;
}

const std::string& CallInfo::getRedirectingLastName() const
{
    return redirectingLastName_;
}

void CallInfo::setRedirectingLastName(const std::string& name)
{
    redirectingLastName_ = name;
}

const std::string& CallInfo::getRedirectingFirstName() const
{
    return redirectingFirstName_;
}

void CallInfo::setRedirectingFirstName(const std::string& name)
{
    redirectingFirstName_ = name;
}

NumberType::NT CallInfo::getRedirectingNumberType() const
{
    return redirectingNumberType_;
}

void CallInfo::setRedirectingNumberType(NumberType::NT type)
{
    redirectingNumberType_ = type;
}

const std::string& CallInfo::getDuration() const
{
    return duration_;
}

void CallInfo::setDuration(const std::string& minutesAndSeconds)
{
    duration_ = minutesAndSeconds;
}

CallItem::CallItem() = default;
CallItem::CallItem(const CallItem& other) = default;
CallItem::CallItem(CallItem&& other) noexcept = default;
CallItem& CallItem::operator=(const CallItem& other) = default;
CallItem& CallItem::operator=(CallItem&& other) noexcept = default;
CallItem::~CallItem() = default;

const std::string& CallItem::getEntryId() const
{
    return entryId_;
}

void CallItem::setEntryId(const std::string& entryId)
{
    entryId_ = entryId;
}

const std::string& CallItem::getFirstname() const
{
    return firstname_;
}

void CallItem::setFirstname(const std::string& name)
{
    firstname_ = name;
}

const std::string& CallItem::getSurname() const
{
    return surname_;
}

void CallItem::setSurname(const std::string& name)
{
    surname_ = name;
}

MissedCallItem::MissedCallInfo::MissedCallInfo() = default;

bool MissedCallItem::MissedCallInfo::getAnswered() const
{
    return answered_;
}

void MissedCallItem::MissedCallInfo::setAnswered(bool answered)
{
    answered_ = answered;
}

const std::string& MissedCallItem::MissedCallInfo::getGroupName() const
{
    return groupName_;
}

void MissedCallItem::MissedCallInfo::setGroupName(const std::string& name)
{
    groupName_ = name;
}

const std::string& MissedCallItem::MissedCallInfo::getGroupNumber() const
{
    return groupNumber_;
}

void MissedCallItem::MissedCallInfo::setGroupNumber(const std::string& number)
{
    groupNumber_ = number;
}

bool MissedCallItem::MissedCallInfo::getViewed() const
{
    return viewed_;
}

void MissedCallItem::MissedCallInfo::setViewed(bool viewed)
{
    viewed_ = viewed;
}

MissedCallItem::MissedCallItem() = default;

const std::vector<MissedCallItem::MissedCallInfo>& MissedCallItem::getMissedCallInfoList() const
{
    return calls_;
}

void MissedCallItem::setMissedCallInfoList(const std::vector<MissedCallItem::MissedCallInfo>& calls)
{
    calls_ = calls;
}

bool MissedCallItem::getViewed() const
{
    return viewed_;
}

void MissedCallItem::setViewed(bool viewed)
{
    viewed_ = viewed;
}

ReceivedCallItem::ReceivedCallItem() = default;

const std::vector<CallInfo>& ReceivedCallItem::getReceivedCallInfoList() const
{
    return calls_;
}

void ReceivedCallItem::setReceivedCallInfoList(const std::vector<CallInfo>& calls)
{
    calls_ = calls;
}

DialledCallItem::DialledCallItem() = default;

const std::vector<CallInfo>& DialledCallItem::getDialledCallInfoList() const
{
    return calls_;
}

void DialledCallItem::setDialledCallInfoList(const std::vector<CallInfo>& calls)
{
    calls_ = calls;
}

ForwardedCallItem::ForwardedCallItem() = default;

const std::vector<CallInfo>& ForwardedCallItem::getForwardedCallInfoList() const
{
    return calls_;
}

void ForwardedCallItem::setForwardedCallInfoList(const std::vector<CallInfo>& calls)
{
    calls_ = calls;
}
