/**
 * A slapd of the test's own, on free ports of this machine, with everything that it writes in a temporary folder.
 *
 * Everybody may read; cn=admin,dc=example,dc=com has the password "secret".
 */
#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace Testing
{
class LdapServer
{
  public:
    /** The LDIF begins with dc=example,dc=com. */
    explicit LdapServer(const std::string& ldif)
    {
        std::string name = (std::filesystem::temp_directory_path() / "ldap-test-XXXXXX").string();
        folder_ = mkdtemp(name.data());
        std::ofstream(path("content.ldif")) << ldif;
        std::ofstream(path("slapd.conf"))
            << "modulepath /usr/lib/ldap\nmoduleload back_mdb\ninclude /etc/ldap/schema/core.schema\n"
               "include /etc/ldap/schema/cosine.schema\ninclude /etc/ldap/schema/inetorgperson.schema\n"
               "TLSCertificateFile ca.pem\nTLSCertificateKeyFile key.pem\nsizelimit unlimited\n"
               "database mdb\nmaxsize 268435456\ndirectory .\nsuffix dc=example,dc=com\n"
               "rootdn cn=admin,dc=example,dc=com\nrootpw secret\n";
        const std::string prepare =
            "cd '" + folder_.string() +
            "' && /usr/sbin/slapadd -q -f slapd.conf -l content.ldif && openssl req -batch " +
            "-x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -subj /CN=127.0.0.1 " +
            "-addext subjectAltName=IP:127.0.0.1 -keyout key.pem -out ca.pem 2>openssl.log";
        if (std::system(prepare.c_str()) != 0)
        {
            throw std::runtime_error("failed: " + prepare);
        }
        start();
    }

    ~LdapServer()
    {
        kill();
        std::error_code error;
        std::filesystem::remove_all(folder_, error);
    }

    LdapServer(const LdapServer&) = delete;
    LdapServer& operator=(const LdapServer&) = delete;

    std::string path(const std::string& name) const { return (folder_ / name).string(); }
    std::string url() const { return "ldap://127.0.0.1:" + std::to_string(plain_.port()); }
    std::string tlsUrl() const { return "ldaps://127.0.0.1:" + std::to_string(tls_.port()); }

    /** Also anew after kill(), on the same ports. It ends with the test, even one that is killed. */
    void start()
    {
        std::string shell = "/bin/sh", option = "-c",
                    command = "cd '" + folder_.string() + "' && exec " +
                              "setpriv --pdeathsig KILL /usr/sbin/slapd -d 0 -f slapd.conf -h '" + url() + " " +
                              tlsUrl() + "'";
        char* arguments[] = {shell.data(), option.data(), command.data(), nullptr};
        posix_spawn(&process_, shell.c_str(), nullptr, nullptr, arguments, environ);
        while (!answersAt(plain_) || !answersAt(tls_))
        {
            if (waitpid(process_, nullptr, WNOHANG) != 0)
            {
                process_ = 0;
                throw std::runtime_error("slapd does not start");
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    }

    void hang() const { ::kill(process_, SIGSTOP); }
    void goOn() const { ::kill(process_, SIGCONT); }
    void kill()
    {
        if (process_ > 0)
        {
            ::kill(process_, SIGKILL);
            waitpid(std::exchange(process_, 0), nullptr, 0);
        }
    }

  private:
    using Tcp = boost::asio::ip::tcp;

    /**
     * Not one that the system would choose: connections get theirs from the same range, so that who waits for the
     * server may connect to itself. Tests that run at the same time begin at different ones.
     */
    static Tcp::endpoint freePort()
    {
        static auto next = static_cast<unsigned>(getpid()) * 4;
        boost::asio::io_context context;
        for (;;)
        {
            const Tcp::endpoint port(boost::asio::ip::address_v4::loopback(),
                                     static_cast<unsigned short>(10'000 + next++ % 20'000));
            Tcp::acceptor listener(context, port.protocol());
            boost::system::error_code error;
            listener.set_option(Tcp::acceptor::reuse_address(true));
            if (!listener.bind(port, error))
            {
                return port;
            }
        }
    }
    static bool answersAt(const Tcp::endpoint& port)
    {
        boost::asio::io_context context;
        boost::system::error_code error;
        return !Tcp::socket(context).connect(port, error);
    }

    std::filesystem::path folder_;
    const Tcp::endpoint plain_ = freePort();
    const Tcp::endpoint tls_ = freePort();
    pid_t process_ = 0;
};
} // namespace Testing
