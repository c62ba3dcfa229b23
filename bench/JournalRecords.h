/** Invented call records with the proportions of a real journal. */
#pragma once

#include "ConversationAPI/ConversationItem.h"
#include "ConversationAPI/ConversationItemFactory.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <map>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace Bench
{
struct CallRecord
{
    std::string entryId;
    std::string time;
    std::string number;
    std::string firstName;
    std::string lastName;
    int kind;
};

/** ISO 8601 with an offset, as the journal keeps it. */
inline std::string journalTime(long secondsAgo)
{
    const std::time_t time = 1'790'000'000 - secondsAgo;
    std::tm utc{};
    gmtime_r(&time, &utc);
    char text[40];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S+00:00", &utc);
    return text;
}

/** Party ranks by Zipf's law: the second most frequent calls half as often as the first, and so on. */
class ZipfRanks
{
  public:
    explicit ZipfRanks(std::size_t parties)
    {
        double total = 0;
        for (std::size_t rank = 1; rank <= parties; ++rank)
        {
            total += 1.0 / static_cast<double>(rank);
            cumulated_.push_back(total);
        }
    }

    template <typename Random>
    std::size_t operator()(Random& random)
    {
        std::uniform_real_distribution<double> draw(0, cumulated_.back());
        const auto rank = std::lower_bound(cumulated_.begin(), cumulated_.end(), draw(random));
        return static_cast<std::size_t>(rank - cumulated_.begin());
    }

  private:
    std::vector<double> cumulated_;
};

/** In the order in which a journal gives its calls: kind by kind, the newest entry first, its calls newest first. */
inline void putInJournalOrder(std::vector<CallRecord>& records)
{
    std::map<std::pair<int, std::string>, std::string> newestOfEntry;
    for (CallRecord& record : records)
    {
        std::string& newest = newestOfEntry[{record.kind, record.number}];
        newest = std::max(newest, record.time);
        record.entryId = "e" + std::to_string(record.kind) + record.number.substr(3);
    }
    const auto place = [&newestOfEntry](const CallRecord& record) {
        return std::tie(newestOfEntry[{record.kind, record.number}], record.number, record.time);
    };
    std::sort(records.begin(), records.end(),
              [&place](const CallRecord& a, const CallRecord& b)
              { return a.kind != b.kind ? a.kind < b.kind : place(a) > place(b); });
}

/** One call in five is from a number that nobody knows; the others come from a tenth as many parties. */
inline std::vector<CallRecord> journalRecords(std::size_t count)
{
    std::mt19937 random(42);
    ZipfRanks party(std::max<std::size_t>(1, count / 10));
    std::vector<CallRecord> records;
    records.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
    {
        CallRecord record;
        record.time = journalTime(static_cast<long>(i) * 97);
        record.kind = static_cast<int>(random() % 3);
        if (random() % 5 == 0)
        {
            record.number = "+4989" + std::to_string(1'000'000 + random() % 9'000'000);
        }
        else
        {
            const std::size_t rank = party(random);
            record.number = "+4930" + std::to_string(1'000'000 + rank);
            record.firstName = "First" + std::to_string(rank);
            record.lastName = "Surname" + std::to_string(rank);
        }
        records.push_back(std::move(record));
    }
    putInJournalOrder(records);
    return records;
}

/** An item made as a journal source makes it; the caller owns it. */
inline ConversationAPI::ConversationItem* makeItem(ConversationAPI::ConversationItemFactory& factory,
                                                   const CallRecord& record)
{
    ConversationAPI::ConversationItem* item = nullptr;
    switch (record.kind)
    {
    case 0:
        item = factory.getMissedCallConversationItem(record.time, record.number, record.firstName, record.lastName);
        break;
    case 1:
        item = factory.getReceivedCallConversationItem(record.time, record.number, record.firstName, record.lastName);
        break;
    default:
        item = factory.getDialledCallConversationItem(record.time, record.number, record.firstName, record.lastName);
        break;
    }
    item->setPhoneNumbers(record.number, "", "", "");
    item->setLastPhoneNumberType(NumberType::WORK_1);
    item->setEntryId(record.entryId);
    return item;
}
} // namespace Bench
