/**
 * The telephone's call journal service and what it tells of changes.
 *
 * Called, and calling, on the UI thread. The service outlives whoever uses it.
 */
#pragma once

#include "platform/CallJournal.h"

#include <deque>
#include <set>
#include <string>

class JournalServiceIfc
{
  public:
    virtual ~JournalServiceIfc() = default;

    /** Appends every entry of the kind, newest first. */
    virtual void getCalls(std::deque<MissedCallItem>& entries) = 0;
    virtual void getCalls(std::deque<ReceivedCallItem>& entries) = 0;
    virtual void getCalls(std::deque<DialledCallItem>& entries) = 0;
    virtual void getCalls(std::deque<ForwardedCallItem>& entries) = 0;

    /** Reads one entry; false, and `record` as it was, when the kind has none of this id. */
    virtual bool getCall(const std::string& entryId, MissedCallItem& record) = 0;
    virtual bool getCall(const std::string& entryId, ReceivedCallItem& record) = 0;
    virtual bool getCall(const std::string& entryId, DialledCallItem& record) = 0;
    virtual bool getCall(const std::string& entryId, ForwardedCallItem& record) = 0;

    virtual void deleteAllEntries() = 0;

    /** Unknown ids are passed over. */
    virtual void deleteEntries(const std::set<std::string>& entryIds) = 0;

    /** Marks missed entries as seen; true when all that exist are marked. */
    virtual bool ageMissedCalls(const std::set<std::string>& entryIds) = 0;
    virtual void ageMissedCall(const std::string& entryId) = 0;
};

class JournalServiceObserverIfc
{
  public:
    enum ActionType
    {
        ADDED = 0,
        UPDATED = 1,
        DELETED = 2
    };

    virtual ~JournalServiceObserverIfc() = default;

    virtual void missedCallsUpdate(MissedCallItem entry, std::string entryId, ActionType action) = 0;
    virtual void receivedCallsUpdate(ReceivedCallItem entry, std::string entryId, ActionType action) = 0;
    virtual void dialledCallsUpdate(DialledCallItem entry, std::string entryId, ActionType action) = 0;
    virtual void forwardedCallsUpdate(ForwardedCallItem entry, std::string entryId, ActionType action) = 0;
};
