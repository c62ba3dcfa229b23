/** The network's call log with the source that follows it: one missed call of each name that is added. */
#pragma once

#include "ConversationAPI/BroadsoftServiceConversationItemSource.h"
#include "aggregation/AggregatorFixture.h"
#include "host/NetworkCallLog.h"
#include "support/Phone.h"

namespace Sources
{
using namespace Aggregation;

/** By its first letter, which is another one for each name. */
inline std::string numberOf(const std::string& name)
{
    return std::to_string(10 + name[0] - 'A');
}

struct NetworkLogFeed : Testing::Phone
{
    void subscribe()
    {
        service.setObserver([this](auto& kinds, auto& entries) { source.broadsoftCallLogChanged(kinds, entries); });
        source.init();
    }
    void add(const std::string& name)
    {
        service.add({Host::NetworkCallLogEntry::MISSED, name, "2026-03-05T09:00:00Z", numberOf(name), name, "", ""});
    }
    void remove(const std::string& name) { service.remove(Host::NetworkCallLogEntry::MISSED, name); }

    Host::NetworkCallLog service;
    BroadsoftServiceConversationItemSource source{&service, &items, &conversations};
};
} // namespace Sources
