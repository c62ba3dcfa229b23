#include "host/LdapSettings.h"

#include "host/internal/LdapFilter.h"
#include "host/internal/LogFormat.h"
#include "platform/Logging.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <ldap.h>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>

namespace Host
{
namespace
{
namespace fs = std::filesystem;
using nlohmann::json;

constexpr const char* LDAP_SETTINGS_LOG_FILE = "./host/LdapSettings";
constexpr int SHORTEST_TIMEOUT_MS = 100;
constexpr int LONGEST_TIMEOUT_MS = 60'000;
constexpr int HIGHEST_RESULT_LIMIT = 10'000;
constexpr const char* DEFAULT_FILTER = "(&(objectClass=person)(|(cn=*{text}*)(telephoneNumber=*{text}*)"
                                       "(mobile=*{text}*)(homePhone=*{text}*)(mail={text}*)))";

/** The keys that somebody reads, in the order in which they take values, with the usual attributes of a person. */
const LdapSettings::Attributes& defaultAttributes()
{
    static const LdapSettings::Attributes attributes = {
        {"Surname", {"sn"}},
        {"Firstname", {"givenName"}},
        {"Office", {"telephoneNumber"}},
        {"Office2", {"telephoneNumber"}},
        {"Mobile", {"mobile"}},
        {"Private", {"homePhone"}},
        {"Email", {"mail"}},
        {"Company", {"o"}},
        {"JobFunction", {"title"}},
        {"Address", {"street"}},
        {"Address2", {"l"}},
        {"Nickname", {}},
    };
    return attributes;
}

class SettingsFault : public std::runtime_error
{
  public:
    SettingsFault(const std::string& name, const std::string& problem)
        : runtime_error(json(name).dump() + " " + problem) // in quotes, and one line
    {
    }
    using runtime_error::runtime_error;
};

/** One object's members. Those that nobody asked for are mistakes of its writer. */
class Members
{
  public:
    explicit Members(const json& object) : object_(object)
    {
        if (!object.is_object())
        {
            throw SettingsFault("must be a JSON object");
        }
    }

    /** Null when it is not there. */
    const json* find(const std::string& name)
    {
        known_.insert(name);
        const auto found = object_.find(name);
        return found == object_.end() ? nullptr : &*found;
    }

    std::string text(const std::string& name, const std::string& otherwise = "")
    {
        const json* value = find(name);
        if (value && !value->is_string())
        {
            throw SettingsFault(name, "must be a text");
        }
        return value ? value->get<std::string>() : otherwise;
    }

    std::string requiredText(const std::string& name)
    {
        std::string value = text(name);
        if (value.empty())
        {
            throw SettingsFault(name, "is missing");
        }
        return value;
    }

    bool flag(const std::string& name)
    {
        const json* value = find(name);
        if (value && !value->is_boolean())
        {
            throw SettingsFault(name, "must be true or false");
        }
        return value && value->get<bool>();
    }

    int number(const std::string& name, int least, int most, int otherwise)
    {
        const json* value = find(name);
        if (!value)
        {
            return otherwise;
        }
        // compared as a floating-point number, for which nothing is too large
        if (!value->is_number_integer() || value->get<double>() < least || value->get<double>() > most)
        {
            throw SettingsFault(name,
                                "must be a whole number from " + std::to_string(least) + " to " + std::to_string(most));
        }
        return value->get<int>();
    }

    void rejectOthers() const
    {
        for (const auto& [name, value] : object_.items())
        {
            if (known_.count(name) == 0)
            {
                throw SettingsFault(name, "is not known here");
            }
        }
    }

  private:
    const json& object_;
    std::set<std::string> known_;
};

json parse(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
    {
        throw SettingsFault("cannot be opened");
    }
    const std::string content{std::istreambuf_iterator<char>(stream), {}};
    try
    {
        return json::parse(content, nullptr, true, true);
    }
    catch (const json::parse_error& fault) // whose own text may quote the password
    {
        const auto end = content.begin() + static_cast<std::ptrdiff_t>(std::min(fault.byte, content.size()));
        const auto line = 1 + std::count(content.begin(), end, '\n');
        throw SettingsFault("is no JSON at line " + std::to_string(line));
    }
}

void checkUrl(const std::string& name, const LdapSettings& settings)
{
    LDAPURLDesc* parsed = nullptr;
    if (ldap_url_parse(settings.url.c_str(), &parsed) != LDAP_URL_SUCCESS)
    {
        throw SettingsFault(name, "must be a URL like ldap://host, ldaps://host:636 or ldapi://%2Fpath");
    }
    const std::unique_ptr<LDAPURLDesc, decltype(&ldap_free_urldesc)> url(parsed, ldap_free_urldesc);
    const std::string scheme = url->lud_scheme;
    if (scheme != "ldap" && scheme != "ldaps" && scheme != "ldapi")
    {
        throw SettingsFault(name, "must begin with ldap:, ldaps: or ldapi:");
    }
    if ((url->lud_dn && *url->lud_dn) || url->lud_filter || url->lud_attrs)
    {
        throw SettingsFault(name, "must end after host and port: base, filter and attributes have their own names");
    }
    if (settings.startTls && scheme != "ldap")
    {
        throw SettingsFault("startTls", "goes with ldap: alone");
    }
}

void checkDn(const std::string& name, const std::string& dn)
{
    LDAPDN parsed = nullptr;
    if (ldap_str2dn(dn.c_str(), &parsed, LDAP_DN_FORMAT_LDAPV3) != LDAP_SUCCESS)
    {
        throw SettingsFault(name, "is no distinguished name");
    }
    ldap_dnfree(parsed);
}

void checkFile(const std::string& name, const std::string& file)
{
    std::error_code error;
    if (!file.empty() && !fs::is_regular_file(file, error))
    {
        throw SettingsFault(name, "names no file that is there");
    }
}

/** A server takes a name without a password for nobody's, and the search would find less than its writer thinks. */
void checkLogin(const LdapSettings& settings)
{
    checkDn("bindDn", settings.bindDn);
    if (settings.bindDn.empty() != settings.password.empty())
    {
        throw SettingsFault("bindDn and password go together");
    }
}

std::vector<std::string> attributeNames(const std::string& key, const json& value)
{
    const json list = value.is_array() ? value : json::array({value});
    std::vector<std::string> names;
    for (const json& name : list)
    {
        if (!name.is_string() || name.get<std::string>().empty())
        {
            throw SettingsFault(key, "must be the name of an attribute, or a list of names");
        }
        names.push_back(name);
    }
    return names;
}

/** What the file does not name stays as usual; an empty list takes a key away. */
LdapSettings::Attributes readAttributes(const json* object)
{
    LdapSettings::Attributes attributes = defaultAttributes();
    if (object)
    {
        Members members(*object);
        for (auto& [key, names] : attributes)
        {
            const json* value = members.find(key);
            names = value ? attributeNames(key, *value) : names;
        }
        members.rejectOthers();
    }
    return attributes;
}

LdapSettings readSettings(const json& object)
{
    Members members(object);
    LdapSettings settings;
    settings.url = members.requiredText("url");
    settings.startTls = members.flag("startTls");
    checkUrl("url", settings);
    settings.caCertificate = members.text("caCertificate");
    checkFile("caCertificate", settings.caCertificate);
    settings.base = members.requiredText("base");
    checkDn("base", settings.base);
    settings.bindDn = members.text("bindDn");
    settings.password = members.text("password");
    checkLogin(settings);
    settings.filter = members.text("filter", DEFAULT_FILTER);
    const std::string filterProblem = problemOfLdapFilter(settings.filter);
    if (!filterProblem.empty())
    {
        throw SettingsFault("filter", filterProblem);
    }
    settings.attributes = readAttributes(members.find("attributes"));
    settings.timeout = std::chrono::milliseconds(members.number("timeoutMs", SHORTEST_TIMEOUT_MS, LONGEST_TIMEOUT_MS,
                                                                static_cast<int>(settings.timeout.count())));
    settings.resultLimit = members.number("resultLimit", 1, HIGHEST_RESULT_LIMIT, settings.resultLimit);
    members.rejectOthers();
    return settings;
}

/** What works all the same but gives the password away. */
void warnOfOpenPassword(const fs::path& file, const LdapSettings& settings)
{
    if (settings.password.empty())
    {
        return;
    }
    if (!settings.usesTls() && settings.url.rfind("ldapi:", 0) != 0)
    {
        logAppOrv("Host", LDAP_SETTINGS_LOG_FILE, 3, __LINE__,
                  "The password of the directory goes over the network in the clear");
    }
    std::error_code error;
    if ((fs::status(file, error).permissions() & fs::perms::others_read) != fs::perms::none && !error)
    {
        logAppOrv("Host", LDAP_SETTINGS_LOG_FILE, 3, __LINE__, "Everybody can read the password in '%s'", file.c_str());
    }
}
} // namespace

bool LdapSettings::usesTls() const
{
    return startTls || url.rfind("ldaps:", 0) == 0;
}

std::optional<LdapSettings> LdapSettings::read(const fs::path& file, std::string& problem)
{
    try
    {
        LdapSettings settings = readSettings(parse(file));
        warnOfOpenPassword(file, settings);
        return settings;
    }
    catch (const std::exception& fault)
    {
        problem = file.string() + ": " + fault.what();
        logInFull(LDAP_SETTINGS_LOG_FILE, 2, __LINE__,
                  "The directory's settings '" + file.string() + "' cannot be used: " + fault.what());
        return std::nullopt;
    }
}
} // namespace Host
