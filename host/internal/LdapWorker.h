/**
 * The thread on which searches of a directory wait for its server: one after the other, in the order of asking.
 *
 * The connection stays open for the next search, until it has not been used for a while or something was wrong with it.
 * What is wrong stands in the log once, until it is something else or nothing any more.
 *
 * Both notices come on the worker's own thread; each request has exactly one end, unless the worker is destroyed
 * before. The other operations belong to the thread that owns it. The settings are not owned.
 */
#pragma once

#include "host/internal/LdapConnection.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace Host
{
class LdapWorker
{
  public:
    using Request = std::shared_ptr<LdapRequest>;
    using Found = std::function<void(const Request&, PhonebookSearchResults)>;
    using Ended = std::function<void(const Request&, const std::string& fault)>; ///< "" when all went well

    LdapWorker(const LdapSettings& settings, Found found, Ended ended);

    /** Gives up what is being done and waits until the thread has noticed: at once, unless it is just connecting. */
    ~LdapWorker();

    LdapWorker(const LdapWorker&) = delete;
    LdapWorker& operator=(const LdapWorker&) = delete;

    void add(Request request);

  private:
    void run();
    Request nextRequest();
    int serve(const Request& request);
    std::string note(int result);

    const LdapSettings& settings_;
    const Found found_;
    const Ended ended_;
    LdapConnection connection_;  ///< of the worker's thread, as are the next two
    int problem_ = LDAP_SUCCESS; ///< what the last search came to
    std::string diagnosis_;

    std::mutex mutex_; ///< for the rest, which both threads use
    std::condition_variable wakeUp_;
    std::deque<Request> waiting_;
    Request current_;
    bool isStopping_ = false;
    std::thread thread_; ///< last, for it uses everything
};
} // namespace Host
