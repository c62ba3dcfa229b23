/** A journal in memory. */
#pragma once

#include "ConversationAPI/ConversationItemSourceIfc.h"
#include "JournalRecords.h"

#include <string>
#include <utility>
#include <vector>

namespace Bench
{
class RecordSource : public ConversationAPI::ConversationItemSourceIfc
{
  public:
    RecordSource(ConversationAPI::ConversationItemFactory& factory, std::vector<CallRecord> records)
        : factory_(factory), records_(std::move(records))
    {
    }

    std::vector<ConversationAPI::ConversationItem*> getConversationItems() override
    {
        std::vector<ConversationAPI::ConversationItem*> items;
        items.reserve(records_.size());
        for (const CallRecord& record : records_)
        {
            items.push_back(makeItem(factory_, record));
        }
        return items;
    }

    void reloadCalls(const std::vector<std::string>&) override {}
    void deleteAllCalls() override {}
    void deleteCalls(const std::vector<std::string>&) override {}
    void setObserver(ConversationAPI::ConversationItemSourceObserverIfc*) override {}
    void clearObserver() override {}
    int getItemSourceType() override { return 1; }
    bool ageAllMissedCalls(const std::vector<std::string>&) override { return true; }

  private:
    ConversationAPI::ConversationItemFactory& factory_;
    std::vector<CallRecord> records_;
};
} // namespace Bench
