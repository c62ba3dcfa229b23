/**
 * Searches an LDAP directory.
 *
 * Connecting, looking up names and everything else that waits for the server happens on a thread of its own; results
 * and ends come from the event loop. A search ends at the latest when the settings' time has passed since its start,
 * give or take half a second; what was found by then has been told. Searches are made one after the other: one that is
 * cancelled holds up the next no longer, except while it is connecting, which takes no more than that time for each of
 * the server's addresses.
 *
 * A text that is empty or blank, longer than 256 bytes or not UTF-8 finds nothing, and no server is asked. What goes
 * wrong stands in the log. The event loop is not owned and outlives this. UI thread only.
 */
#pragma once

#include "host/DirectorySearch.h"
#include "host/EventLoop.h"
#include "host/LdapSettings.h"

#include <map>
#include <memory>
#include <string>

namespace Host
{
class LdapWorker;
struct LdapRequest;

class LdapDirectory final : public DirectorySearch
{
  public:
    LdapDirectory(LdapSettings settings, EventLoop& loop);
    ~LdapDirectory() override;

    LdapDirectory(const LdapDirectory&) = delete;
    LdapDirectory& operator=(const LdapDirectory&) = delete;

    void setObserver(DirectorySearchObserver* observer) override { observer_ = observer; }
    /** Why the last search that came to its end failed, for the user; "" when it did not. */
    std::string problem() const;

    void search(const std::string& searchId, const std::string& text) override;
    void cancel(const std::string& searchId) override;

  private:
    using Request = std::shared_ptr<LdapRequest>;

    struct Search
    {
        Request request;
        TimerHandle timer;
    };

    void post(EventLoop::Task task);
    void start(const std::string& searchId, const std::string& text);
    bool isRunning(const Request& request) const;
    void tellResults(const Request& request, const PhonebookSearchResults& results);
    void end(const Request& request, const std::string& fault);
    void tellEnd(const std::string& searchId);

    const LdapSettings settings_;
    EventLoop& loop_;
    const std::shared_ptr<const bool> alive_; ///< what is posted to the loop does nothing once this is gone
    DirectorySearchObserver* observer_ = nullptr;
    std::string fault_;                      ///< of the search that ended last
    std::map<std::string, Search> searches_; ///< those whose end is neither told nor about to be, by their id
    std::unique_ptr<LdapWorker> worker_;     ///< last: it posts until it is gone
};
} // namespace Host
