#include "host/internal/LdapWorker.h"

#include "host/internal/LogFormat.h"
#include "platform/Logging.h"

#include <csignal>
#include <pthread.h>
#include <utility>

namespace Host
{
namespace
{
constexpr const char* LDAP_WORKER_LOG_FILE = "./host/LdapWorker";

/** Servers and routers drop connections that are idle for long, and not all of them tell the other side. */
constexpr std::chrono::seconds LONGEST_IDLE{30};

/** Those of the program are for the UI thread, and a write to a closed connection is to fail and do nothing more. */
void blockSignals()
{
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, nullptr);
}

bool isUsableAfter(int result)
{
    return !LDAP_API_ERROR(result) || result == LDAP_USER_CANCELLED || result == LDAP_FILTER_ERROR;
}
} // namespace

LdapWorker::LdapWorker(const LdapSettings& settings, Found found, Ended ended)
    : settings_(settings), found_(std::move(found)), ended_(std::move(ended)), connection_(settings),
      thread_(&LdapWorker::run, this)
{
}

LdapWorker::~LdapWorker()
{
    {
        const std::lock_guard<std::mutex> guard(mutex_);
        isStopping_ = true;
        if (current_)
        {
            current_->isCancelled = true;
        }
    }
    wakeUp_.notify_one();
    thread_.join();
}

void LdapWorker::add(Request request)
{
    {
        const std::lock_guard<std::mutex> guard(mutex_);
        waiting_.push_back(std::move(request));
    }
    wakeUp_.notify_one();
}

void LdapWorker::run()
{
    blockSignals();
    while (const Request request = nextRequest())
    {
        ended_(request, request->isOver() ? ldap_err2string(LDAP_TIMEOUT) : note(serve(request)));
    }
}

/** Null when the thread is to end. */
LdapWorker::Request LdapWorker::nextRequest()
{
    std::unique_lock<std::mutex> guard(mutex_);
    current_.reset();
    const auto isWanted = [this] { return isStopping_ || !waiting_.empty(); };
    if (!wakeUp_.wait_for(guard, LONGEST_IDLE, isWanted))
    {
        guard.unlock();
        connection_.close();
        guard.lock();
        wakeUp_.wait(guard, isWanted);
    }
    if (!isStopping_)
    {
        current_ = std::move(waiting_.front());
        waiting_.pop_front();
    }
    return current_;
}

/** A connection of an earlier search may have been closed by the server meanwhile: that is no reason to fail. */
int LdapWorker::serve(const Request& request)
{
    bool mayTryAgain = connection_.isOpen();
    const auto found = [&](PhonebookSearchResults results)
    {
        mayTryAgain = false;
        found_(request, std::move(results));
    };
    for (;;)
    {
        int result = connection_.isOpen() ? LDAP_SUCCESS : connection_.open(*request);
        const bool isOpen = result == LDAP_SUCCESS;
        if (isOpen)
        {
            result = connection_.search(*request, found);
        }
        diagnosis_ = connection_.diagnosis();
        if (!isOpen || !isUsableAfter(result))
        {
            connection_.close();
        }
        if (result != LDAP_SERVER_DOWN || !std::exchange(mayTryAgain, false))
        {
            return result;
        }
    }
}

/** Gives what is to be told of it; "" when it went well. */
std::string LdapWorker::note(int result)
{
    if (result == LDAP_USER_CANCELLED)
    {
        return "";
    }
    if (result == LDAP_SIZELIMIT_EXCEEDED)
    {
        logAppOrv("Host", LDAP_WORKER_LOG_FILE, 5, __LINE__, "The directory found more entries than are wanted");
        result = LDAP_SUCCESS;
    }
    const bool isNews = std::exchange(problem_, result) != result;
    if (result != LDAP_SUCCESS)
    {
        // The server's own words may name somebody, and are hidden as an argument.
        const std::string format =
            inFormat("The search in the directory '" + settings_.url + "' failed: " + ldap_err2string(result)) +
            " (%d) %s";
        logAppOrv("Host", LDAP_WORKER_LOG_FILE, isNews ? 2 : 5, __LINE__, format.c_str(), result, diagnosis_.c_str());
    }
    else if (isNews)
    {
        logInFull(LDAP_WORKER_LOG_FILE, 3, __LINE__, "The directory '" + settings_.url + "' answers again");
    }
    return result == LDAP_SUCCESS ? "" : ldap_err2string(result);
}
} // namespace Host
