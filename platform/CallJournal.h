/**
 * The records of the telephone's call journal.
 *
 * One CallItem stands for one remote party and kind of call; it lists the single calls, newest first. All
 * classes are values.
 */
#pragma once

#include "platform/NumberType.h"

#include <string>
#include <vector>

/** One call of a journal entry. */
class CallInfo
{
  public:
    CallInfo();
    CallInfo(const CallInfo& other);
    CallInfo(CallInfo&& other) noexcept;
    CallInfo& operator=(const CallInfo& other);
    CallInfo& operator=(CallInfo&& other) noexcept;
    virtual ~CallInfo();

    const std::string& getRemoteNumber() const;
    NumberType::NT getNumberType() const;

    /** ISO 8601 date and time with zone offset, "2026-03-05T09:07:00+01:00". */
    const std::string& getCallTime() const;

    /** The party that redirected the call; empty texts when none did. */
    const std::string& getRedirectingNumber() const;
    const std::string& getRedirectingLastName() const;
    const std::string& getRedirectingFirstName() const;
    NumberType::NT getRedirectingNumberType() const;

    /** Minutes and seconds joined by a colon, "2:5"; empty when the call had no length. */
    const std::string& getDuration() const;

    void setRemoteNumber(const std::string& number);
    void setNumberType(NumberType::NT type);
    void setCallTime(const std::string& iso8601);
    void setRedirectingNumber(const std::string& number);
    void setRedirectingLastName(const std::string& name);
    void setRedirectingFirstName(const std::string& name);
    void setRedirectingNumberType(NumberType::NT type);
    void setDuration(const std::string& minutesAndSeconds);

  private:
    std::string remoteNumber_;
    std::string callTime_;
    std::string redirectingNumber_;
    std::string redirectingLastName_;
    std::string redirectingFirstName_;
    std::string duration_;
    NumberType::NT numberType_ = NumberType::NONE;
    NumberType::NT redirectingNumberType_ = NumberType::NONE;
};

/** One entry of the journal: what its four kinds have in common. */
class CallItem
{
  public:
    CallItem();
    CallItem(const CallItem& other);
    CallItem(CallItem&& other) noexcept;
    CallItem& operator=(const CallItem& other);
    CallItem& operator=(CallItem&& other) noexcept;
    virtual ~CallItem();

    const std::string& getEntryId() const;
    const std::string& getFirstname() const;
    const std::string& getSurname() const;

    void setEntryId(const std::string& entryId);
    void setFirstname(const std::string& name);
    void setSurname(const std::string& name);

  private:
    std::string entryId_;
    std::string firstname_;
    std::string surname_;
};

class MissedCallItem : public CallItem
{
  public:
    class MissedCallInfo : public CallInfo
    {
      public:
        MissedCallInfo();

        /** Whether somebody else answered the call. */
        bool getAnswered() const;

        /** The hunt or pickup group that was called; empty when it was no group call. */
        const std::string& getGroupName() const;
        const std::string& getGroupNumber() const;

        /** Whether the user has seen this call; a journal that knows it of whole entries only leaves it false. */
        bool getViewed() const;

        void setAnswered(bool answered);
        void setGroupName(const std::string& name);
        void setGroupNumber(const std::string& number);
        void setViewed(bool viewed);

      private:
        std::string groupName_;
        std::string groupNumber_;
        bool answered_ = false;
        bool viewed_ = false;
    };

    MissedCallItem();

    /** Newest first. */
    const std::vector<MissedCallInfo>& getMissedCallInfoList() const;
    void setMissedCallInfoList(const std::vector<MissedCallInfo>& calls);

    /** Whether the user has seen the entry with all its calls. */
    bool getViewed() const;
    void setViewed(bool viewed);

  private:
    std::vector<MissedCallInfo> calls_;
    bool viewed_ = false;
};

class ReceivedCallItem : public CallItem
{
  public:
    ReceivedCallItem();

    /** Newest first. */
    const std::vector<CallInfo>& getReceivedCallInfoList() const;
    void setReceivedCallInfoList(const std::vector<CallInfo>& calls);

  private:
    std::vector<CallInfo> calls_;
};

class DialledCallItem : public CallItem
{
  public:
    DialledCallItem();

    /** Newest first. */
    const std::vector<CallInfo>& getDialledCallInfoList() const;
    void setDialledCallInfoList(const std::vector<CallInfo>& calls);

  private:
    std::vector<CallInfo> calls_;
};

class ForwardedCallItem : public CallItem
{
  public:
    ForwardedCallItem();

    /** Newest first. */
    const std::vector<CallInfo>& getForwardedCallInfoList() const;
    void setForwardedCallInfoList(const std::vector<CallInfo>& calls);

  private:
    std::vector<CallInfo> calls_;
};
