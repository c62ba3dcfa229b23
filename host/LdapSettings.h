/**
 * Which LDAP directory is searched, and how. docs/directory-search.md describes the file.
 */
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Host
{
struct LdapSettings
{
    /**
     * For each key of a search's entry the attributes that it is taken from: the first that has a value which no key
     * before took.
     */
    using Attributes = std::vector<std::pair<std::string, std::vector<std::string>>>;

    std::string url;           ///< ldap:, ldaps: or ldapi: with host and port alone
    bool startTls = false;     ///< only for ldap:
    std::string caCertificate; ///< file of the authorities that are trusted; "" for those of the system
    std::string base;
    std::string bindDn; ///< "" to search without logging in
    std::string password;
    std::string filter; ///< with "{text}" where the text goes that is searched for
    Attributes attributes;
    std::chrono::milliseconds timeout{5000}; ///< from the start of a search to its end
    int resultLimit = 50;                    ///< entries of one search

    bool usesTls() const;

    /** Nothing, and what is wrong with the file in `problem`, when it cannot be used. */
    static std::optional<LdapSettings> read(const std::filesystem::path& file, std::string& problem);
};
} // namespace Host
