/**
 * A connection to the directory's server, on which one search after the other is made.
 *
 * Every operation waits: for the server, at most until the request is over; but for the look-up of the server's name
 * as long as that takes, and while connecting once the request's time for each of the server's addresses.
 * Operations answer libldap's result codes, LDAP_SUCCESS or another. The settings are not owned. One thread only.
 */
#pragma once

#include "host/LdapSettings.h"
#include "host/internal/LdapHandshake.h"
#include "host/internal/LdapRequest.h"
#include "platform/DirectoryServiceIfc.h"

#include <functional>
#include <ldap.h>
#include <memory>
#include <string>
#include <vector>

namespace Host
{
class LdapConnection
{
  public:
    using Found = std::function<void(PhonebookSearchResults)>;

    explicit LdapConnection(const LdapSettings& settings);
    ~LdapConnection();

    LdapConnection(const LdapConnection&) = delete;
    LdapConnection& operator=(const LdapConnection&) = delete;

    bool isOpen() const { return ldap_ != nullptr; }

    /** Connects and logs in. When that fails, it is to be closed. */
    int open(const LdapRequest& request);
    void close() { ldap_.reset(); }

    /**
     * Hands over what the server sends, many entries at once or what there is when it pauses. LDAP_SIZELIMIT_EXCEEDED
     * when there is more than the settings allow, LDAP_USER_CANCELLED and LDAP_TIMEOUT for a request that is over.
     * Only while open.
     */
    int search(const LdapRequest& request, const Found& found);

    /** What the server or libldap had to say about the last failure, in words of their own; "" for nothing. */
    std::string diagnosis() const;

  private:
    struct Disconnect
    {
        void operator()(LDAP* ldap) const;
    };
    struct FreeMessage
    {
        void operator()(LDAPMessage* message) const;
    };
    using Message = std::unique_ptr<LDAPMessage, FreeMessage>;

    int configure(const LdapRequest& request);
    bool configureTls();
    bool set(int option, const void* value);
    int startTls(const LdapRequest& request);
    int logIn(const LdapRequest& request);
    int receive(const LdapRequest& request, int messageId, const Found& found, bool& isAnswered);
    int awaitResult(const LdapRequest& request, int messageId);
    int next(const LdapRequest& request, int messageId, Message& message);
    int resultIn(LDAPMessage* message);
    int lastError() const;
    void stopBlocking();
    PhonebookSearchResults::Entry entryOf(LDAPMessage* message) const;

    const LdapSettings& settings_;
    const std::vector<std::string> attributes_; ///< all that the settings name, each once
    LdapHandshake handshake_;
    std::unique_ptr<LDAP, Disconnect> ldap_; ///< null while not connected
};
} // namespace Host
