#include "host/internal/LdapHandshake.h"

#include <cerrno>
#include <poll.h>

namespace Host
{
namespace
{
constexpr int SLICE_MS = 50;

/** Above the socket and below TLS. */
constexpr int LEVEL = (LBER_SBIOD_LEVEL_PROVIDER + LBER_SBIOD_LEVEL_TRANSPORT) / 2;

void awaitBytes(Sockbuf* socket)
{
    ber_socket_t descriptor = -1;
    ber_sockbuf_ctrl(socket, LBER_SB_OPT_GET_FD, &descriptor);
    pollfd waiting{descriptor, POLLIN, 0};
    poll(&waiting, 1, SLICE_MS);
}
} // namespace

LdapHandshake::LdapHandshake() : callback_{connected, disconnected, this} {}

bool LdapHandshake::attachTo(LDAP* ldap)
{
    return ldap_set_option(ldap, LDAP_OPT_CONNECT_CB, &callback_) == LDAP_OPT_SUCCESS;
}

int LdapHandshake::connected(LDAP*, Sockbuf* socket, LDAPURLDesc*, sockaddr*, ldap_conncb* callback)
{
    static Sockbuf_IO layer = {setUp, doNothing, control, read, write, doNothing};
    return ber_sockbuf_add_io(socket, &layer, LEVEL, callback->lc_arg);
}

void LdapHandshake::disconnected(LDAP*, Sockbuf*, ldap_conncb*) {}

int LdapHandshake::setUp(Sockbuf_IO_Desc* layer, void* handshake)
{
    layer->sbiod_pvt = handshake;
    return 0;
}

int LdapHandshake::doNothing(Sockbuf_IO_Desc*)
{
    return 0;
}

int LdapHandshake::control(Sockbuf_IO_Desc* layer, int option, void* argument)
{
    return LBER_SBIOD_CTRL_NEXT(layer, option, argument);
}

ber_slen_t LdapHandshake::read(Sockbuf_IO_Desc* layer, void* bytes, ber_len_t size)
{
    const LdapRequest* request = static_cast<const LdapHandshake*>(layer->sbiod_pvt)->request_;
    if (request && request->isOver())
    {
        errno = ETIMEDOUT;
        return -1;
    }
    const ber_slen_t received = LBER_SBIOD_READ_NEXT(layer, bytes, size);
    if (request && received < 0 && errno == EAGAIN)
    {
        awaitBytes(layer->sbiod_sb);
        errno = EAGAIN; // TLS asks again
    }
    return received;
}

ber_slen_t LdapHandshake::write(Sockbuf_IO_Desc* layer, void* bytes, ber_len_t size)
{
    return LBER_SBIOD_WRITE_NEXT(layer, bytes, size);
}
} // namespace Host
