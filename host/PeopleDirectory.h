/**
 * A directory of people in memory, searched like one in the network: what it finds is told a moment later.
 *
 * Stands in for a directory server where none can be asked, in a replay say, whose time is simulated. An entry is found
 * when all words of the text stand in its names, whatever their case. The event loop is not owned and outlives this.
 * UI thread only.
 */
#pragma once

#include "host/DirectorySearch.h"
#include "host/EventLoop.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace Host
{
class PeopleDirectory final : public DirectorySearch
{
  public:
    explicit PeopleDirectory(EventLoop& loop);

    /** With the keys that PhonebookSearchResults knows: "Firstname", "Surname", "Office" ... */
    void add(const PhonebookSearchResults::Entry& person);

    void setObserver(DirectorySearchObserver* observer) override;
    void search(const std::string& searchId, const std::string& text) override;
    void cancel(const std::string& searchId) override;

  private:
    struct Search
    {
        std::string text;
        TimerHandle timer;
    };

    PhonebookSearchResults find(const std::string& text) const;
    void answer(const std::string& searchId, bool withResults);
    void answerLater(const std::string& searchId, const std::string& text, bool withResults);

    EventLoop& loop_;
    DirectorySearchObserver* observer_ = nullptr;
    std::vector<PhonebookSearchResults::Entry> people_;
    std::map<std::string, Search> searches_; ///< those that have not ended
    std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true);
};
} // namespace Host
