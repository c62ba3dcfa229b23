#include "host/LdapDirectory.h"

#include "host/internal/LdapFilter.h"
#include "host/internal/LdapWorker.h"
#include "host/internal/Utf8.h"
#include "platform/Logging.h"

#include <boost/algorithm/string/trim.hpp>
#include <utility>

namespace Host
{
namespace
{
constexpr const char* LDAP_DIRECTORY_LOG_FILE = "./host/LdapDirectory";
constexpr std::size_t LONGEST_QUERY = 256;

/** The worker ends a search when its time has passed; this is for when it hangs, and so comes a little later. */
constexpr std::chrono::milliseconds GRACE{500};

constexpr const char* NO_ANSWER = "Timed out";
constexpr const char* NOT_SEARCHABLE = "The text is too long or no UTF-8";

bool isSearchable(const std::string& text)
{
    if (text.size() > LONGEST_QUERY || !isUtf8(text))
    {
        logAppOrv("Host", LDAP_DIRECTORY_LOG_FILE, 3, __LINE__,
                  "No directory is searched for a text of %zu bytes: it is %s", text.size(),
                  text.size() > LONGEST_QUERY ? "too long" : "no UTF-8");
        return false;
    }
    return !text.empty();
}
} // namespace

LdapDirectory::LdapDirectory(LdapSettings settings, EventLoop& loop)
    : settings_(std::move(settings)), loop_(loop), alive_(std::make_shared<const bool>(true)),
      worker_(std::make_unique<LdapWorker>(
          settings_,
          [this](const Request& request, PhonebookSearchResults results)
          { post([this, request, results = std::move(results)] { tellResults(request, results); }); },
          [this](const Request& request, const std::string& fault)
          { post([this, request, fault] { end(request, fault); }); }))
{
}

LdapDirectory::~LdapDirectory() = default;

/** Also from the worker's thread. */
void LdapDirectory::post(EventLoop::Task task)
{
    loop_.post(
        [alive = std::weak_ptr<const bool>(alive_), task = std::move(task)]
        {
            if (!alive.expired())
            {
                task();
            }
        });
}

std::string LdapDirectory::problem() const
{
    return fault_.empty() ? "" : "The directory " + settings_.url + " cannot be asked: " + fault_ + ".";
}

void LdapDirectory::search(const std::string& searchId, const std::string& text)
{
    cancel(searchId);
    const std::string sought = boost::trim_copy(text);
    if (isSearchable(sought))
    {
        start(searchId, sought);
    }
    else
    {
        const std::string fault = sought.empty() ? "" : NOT_SEARCHABLE;
        post(
            [this, searchId, fault]
            {
                fault_ = fault;
                tellEnd(searchId);
            });
    }
}

void LdapDirectory::start(const std::string& searchId, const std::string& text)
{
    const auto request = std::make_shared<LdapRequest>(searchId, makeLdapFilter(settings_.filter, text),
                                                       LdapRequest::Clock::now() + settings_.timeout);
    Search& search = searches_[searchId];
    search.request = request;
    search.timer = loop_.startTimer((settings_.timeout + GRACE).count(), [this, request] { end(request, NO_ANSWER); });
    worker_->add(request);
}

void LdapDirectory::cancel(const std::string& searchId)
{
    const auto found = searches_.find(searchId);
    if (found == searches_.end())
    {
        return;
    }
    const Request request = found->second.request;
    request->isCancelled = true;
    searches_.erase(found);
    post([this, request] { tellEnd(request->searchId); });
}

bool LdapDirectory::isRunning(const Request& request) const
{
    const auto found = searches_.find(request->searchId);
    return found != searches_.end() && found->second.request == request;
}

void LdapDirectory::tellResults(const Request& request, const PhonebookSearchResults& results)
{
    if (observer_ && isRunning(request))
    {
        observer_->searchResults(request->searchId, results);
    }
}

void LdapDirectory::end(const Request& request, const std::string& fault)
{
    if (isRunning(request))
    {
        fault_ = fault;
        request->isCancelled = true; // for a worker that hangs
        searches_.erase(request->searchId);
        tellEnd(request->searchId);
    }
}

void LdapDirectory::tellEnd(const std::string& searchId)
{
    if (observer_)
    {
        observer_->searchEnded(searchId);
    }
}
} // namespace Host
