/**
 * Ends libldap's TLS handshake when the request that it is for is over.
 *
 * libldap with GnuTLS repeats a handshake without pause for as long as the server sends nothing, whatever time it was
 * given. This lies between its TLS and the socket, waits there in slices of time, and fails when nobody waits any more.
 * Used on the connection's thread; outlives the handles that it is attached to.
 */
#pragma once

#include "host/internal/LdapRequest.h"

#include <ldap.h>

namespace Host
{
class LdapHandshake
{
  public:
    /** While it exists, reading from the server is for this request. */
    class Scope
    {
      public:
        Scope(LdapHandshake& handshake, const LdapRequest& request) : handshake_(handshake)
        {
            handshake_.request_ = &request;
        }
        ~Scope() { handshake_.request_ = nullptr; }

        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

      private:
        LdapHandshake& handshake_;
    };

    LdapHandshake();

    LdapHandshake(const LdapHandshake&) = delete;
    LdapHandshake& operator=(const LdapHandshake&) = delete;

    /** Before the handle connects; false when libldap does not want it. */
    bool attachTo(LDAP* ldap);

  private:
    static int connected(LDAP* ldap, Sockbuf* socket, LDAPURLDesc* url, sockaddr* address, ldap_conncb* callback);
    static void disconnected(LDAP* ldap, Sockbuf* socket, ldap_conncb* callback);
    static int setUp(Sockbuf_IO_Desc* layer, void* handshake);
    static int doNothing(Sockbuf_IO_Desc* layer);
    static int control(Sockbuf_IO_Desc* layer, int option, void* argument);
    static ber_slen_t read(Sockbuf_IO_Desc* layer, void* bytes, ber_len_t size);
    static ber_slen_t write(Sockbuf_IO_Desc* layer, void* bytes, ber_len_t size);

    ldap_conncb callback_;
    const LdapRequest* request_ = nullptr; ///< null while no handshake goes on
};
} // namespace Host
