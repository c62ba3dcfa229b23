#include "host/internal/LdapConnection.h"

#include "host/internal/Utf8.h"

#include <algorithm>
#include <fcntl.h>
#include <map>
#include <set>
#include <utility>

namespace Host
{
namespace
{
using std::chrono::microseconds;
using std::chrono::milliseconds;

/** How long the server is waited for before a look at whether the search is still wanted. */
constexpr milliseconds SLICE{50};
constexpr std::size_t ENTRIES_AT_ONCE = 100;
constexpr std::size_t LONGEST_VALUE = 1000;

timeval toTimeval(microseconds time)
{
    constexpr microseconds::rep PER_SECOND = 1'000'000;
    timeval result{};
    result.tv_sec = static_cast<time_t>(time.count() / PER_SECOND);
    result.tv_usec = static_cast<suseconds_t>(time.count() % PER_SECOND);
    return result;
}

std::vector<std::string> namesIn(const LdapSettings::Attributes& attributes)
{
    std::set<std::string> names;
    for (const auto& [key, sources] : attributes)
    {
        names.insert(sources.begin(), sources.end());
    }
    return {names.begin(), names.end()};
}

/** What becomes of a search when nobody waits for it any more. */
int resultOfOver(const LdapRequest& request)
{
    return request.isCancelled ? LDAP_USER_CANCELLED : LDAP_TIMEOUT;
}

std::vector<std::string> valuesOf(LDAP* ldap, LDAPMessage* message, const std::string& attribute)
{
    std::vector<std::string> texts;
    const std::unique_ptr<berval*, decltype(&ldap_value_free_len)> values(
        ldap_get_values_len(ldap, message, attribute.c_str()), ldap_value_free_len);
    for (berval** value = values.get(); value && *value; ++value)
    {
        const std::string bytes((*value)->bv_val, std::min<std::size_t>((*value)->bv_len, 2 * LONGEST_VALUE));
        const std::string text = cutUtf8(toDisplayText(bytes), LONGEST_VALUE);
        if (!text.empty())
        {
            texts.push_back(text);
        }
    }
    return texts;
}
} // namespace

void LdapConnection::Disconnect::operator()(LDAP* ldap) const
{
    ldap_unbind_ext(ldap, nullptr, nullptr);
}

void LdapConnection::FreeMessage::operator()(LDAPMessage* message) const
{
    ldap_msgfree(message);
}

LdapConnection::LdapConnection(const LdapSettings& settings)
    : settings_(settings), attributes_(namesIn(settings.attributes))
{
}

LdapConnection::~LdapConnection() = default;

int LdapConnection::open(const LdapRequest& request)
{
    LDAP* made = nullptr;
    int result = ldap_initialize(&made, settings_.url.c_str());
    ldap_.reset(made);
    if (result == LDAP_SUCCESS)
    {
        result = configure(request);
    }
    if (result == LDAP_SUCCESS && settings_.startTls)
    {
        result = startTls(request);
    }
    if (result == LDAP_SUCCESS)
    {
        result = logIn(request);
    }
    return result;
}

/** Referrals are not followed: that would connect to further servers, without a password and out of our hands. */
int LdapConnection::configure(const LdapRequest& request)
{
    const auto left = std::chrono::duration_cast<microseconds>(request.deadline - LdapRequest::Clock::now());
    const timeval timeout = toTimeval(std::max<microseconds>(left, milliseconds(1)));
    constexpr int VERSION = LDAP_VERSION3;
    const bool isDone = set(LDAP_OPT_PROTOCOL_VERSION, &VERSION) && set(LDAP_OPT_REFERRALS, LDAP_OPT_OFF) &&
                        set(LDAP_OPT_NETWORK_TIMEOUT, &timeout) && (!settings_.usesTls() || configureTls());
    return isDone ? LDAP_SUCCESS : LDAP_LOCAL_ERROR;
}

bool LdapConnection::configureTls()
{
    constexpr int DEMAND = LDAP_OPT_X_TLS_DEMAND;
    constexpr int OF_CLIENT = 0;
    const std::string& authorities = settings_.caCertificate;
    return handshake_.attachTo(ldap_.get()) && set(LDAP_OPT_X_TLS_REQUIRE_CERT, &DEMAND) &&
           (authorities.empty() || set(LDAP_OPT_X_TLS_CACERTFILE, authorities.c_str())) &&
           set(LDAP_OPT_X_TLS_NEWCTX, &OF_CLIENT); // takes over what was set before
}

bool LdapConnection::set(int option, const void* value)
{
    return ldap_set_option(ldap_.get(), option, value) == LDAP_OPT_SUCCESS;
}

/** libldap's own function in one would wait for the answer as long as the server lets it. */
int LdapConnection::startTls(const LdapRequest& request)
{
    int messageId = 0;
    int result = ldap_start_tls(ldap_.get(), nullptr, nullptr, &messageId);
    if (result == LDAP_SUCCESS)
    {
        stopBlocking();
        result = awaitResult(request, messageId);
    }
    const LdapHandshake::Scope handshake(handshake_, request);
    return result == LDAP_SUCCESS ? ldap_install_tls(ldap_.get()) : result;
}

/** With ldaps: this is what connects, handshake and all. */
int LdapConnection::logIn(const LdapRequest& request)
{
    std::string password = settings_.password; // which libldap does not change, but asks for as if it would
    berval credentials{password.size(), password.data()};
    int messageId = 0;
    int result = LDAP_SUCCESS;
    {
        const LdapHandshake::Scope handshake(handshake_, request);
        result = ldap_sasl_bind(ldap_.get(), settings_.bindDn.c_str(), LDAP_SASL_SIMPLE, &credentials, nullptr, nullptr,
                                &messageId);
    }
    stopBlocking();
    return result == LDAP_SUCCESS ? awaitResult(request, messageId) : result;
}

/** Without this, a server that falls silent in the middle of a message is waited for without end. */
void LdapConnection::stopBlocking()
{
    int socket = -1;
    if (ldap_get_option(ldap_.get(), LDAP_OPT_DESC, &socket) == LDAP_OPT_SUCCESS && socket >= 0)
    {
        fcntl(socket, F_SETFL, fcntl(socket, F_GETFL) | O_NONBLOCK);
    }
}

/** The server is told the limit; receive() keeps it for one that does not care. */
int LdapConnection::search(const LdapRequest& request, const Found& found)
{
    std::vector<char*> names;
    for (const std::string& name : attributes_)
    {
        names.push_back(const_cast<char*>(name.c_str())); // libldap takes them so and leaves them as they are
    }
    names.push_back(nullptr);
    int messageId = 0;
    const int result = ldap_search_ext(ldap_.get(), settings_.base.c_str(), LDAP_SCOPE_SUBTREE, request.filter.c_str(),
                                       names.data(), 0, nullptr, nullptr, nullptr, settings_.resultLimit, &messageId);
    if (result != LDAP_SUCCESS)
    {
        return result;
    }
    bool isAnswered = false;
    const int end = receive(request, messageId, found, isAnswered);
    if (!isAnswered)
    {
        ldap_abandon_ext(ldap_.get(), messageId, nullptr, nullptr);
    }
    return end;
}

int LdapConnection::receive(const LdapRequest& request, int messageId, const Found& found, bool& isAnswered)
{
    PhonebookSearchResults results;
    const auto handOver = [&]
    {
        if (!results.entries.empty())
        {
            found(std::exchange(results, {}));
        }
    };
    int result = LDAP_SUCCESS;
    for (int received = 0; result == LDAP_SUCCESS;)
    {
        Message message;
        result = next(request, messageId, message);
        const int type = message ? ldap_msgtype(message.get()) : 0;
        if (type == LDAP_RES_SEARCH_RESULT)
        {
            isAnswered = true;
            result = resultIn(message.get());
            break;
        }
        if (type == LDAP_RES_SEARCH_ENTRY)
        {
            if (received++ == settings_.resultLimit)
            {
                result = LDAP_SIZELIMIT_EXCEEDED;
                break;
            }
            results.entries.push_back(entryOf(message.get()));
        }
        if (!message || results.entries.size() == ENTRIES_AT_ONCE)
        {
            handOver();
        }
    }
    handOver();
    return result;
}

int LdapConnection::awaitResult(const LdapRequest& request, int messageId)
{
    Message message;
    int result = LDAP_SUCCESS;
    while (result == LDAP_SUCCESS && !message)
    {
        result = next(request, messageId, message);
    }
    return result == LDAP_SUCCESS ? resultIn(message.get()) : result;
}

/** Waits a slice of time; the message is null when none came. */
int LdapConnection::next(const LdapRequest& request, int messageId, Message& message)
{
    if (request.isOver())
    {
        return resultOfOver(request);
    }
    timeval slice = toTimeval(SLICE);
    LDAPMessage* received = nullptr;
    const int type = ldap_result(ldap_.get(), messageId, LDAP_MSG_ONE, &slice, &received);
    message.reset(received);
    return type < 0 ? lastError() : LDAP_SUCCESS;
}

int LdapConnection::resultIn(LDAPMessage* message)
{
    int code = LDAP_OTHER;
    const int result = ldap_parse_result(ldap_.get(), message, &code, nullptr, nullptr, nullptr, nullptr, 0);
    return result == LDAP_SUCCESS ? code : result;
}

int LdapConnection::lastError() const
{
    int code = LDAP_SUCCESS;
    ldap_get_option(ldap_.get(), LDAP_OPT_RESULT_CODE, &code);
    return code == LDAP_SUCCESS ? LDAP_OTHER : code;
}

std::string LdapConnection::diagnosis() const
{
    char* text = nullptr;
    if (ldap_)
    {
        ldap_get_option(ldap_.get(), LDAP_OPT_DIAGNOSTIC_MESSAGE, &text);
    }
    const std::unique_ptr<char, decltype(&ldap_memfree)> owned(text, ldap_memfree);
    return text ? text : "";
}

PhonebookSearchResults::Entry LdapConnection::entryOf(LDAPMessage* message) const
{
    std::map<std::string, std::vector<std::string>> untaken;
    for (const std::string& attribute : attributes_)
    {
        untaken[attribute] = valuesOf(ldap_.get(), message, attribute);
    }
    PhonebookSearchResults::Entry entry;
    for (const auto& [key, sources] : settings_.attributes)
    {
        const auto source =
            std::find_if(sources.begin(), sources.end(), [&](const auto& name) { return !untaken[name].empty(); });
        if (source != sources.end())
        {
            std::vector<std::string>& values = untaken[*source];
            entry[key] = values.front();
            values.erase(values.begin());
        }
    }
    return entry;
}
} // namespace Host
