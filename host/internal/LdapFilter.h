/**
 * LDAP search filters made from a template and what the user typed (RFC 4515).
 *
 * In the template "{text}" stands for the text, "(cn=*{text}*)" for instance. Whatever the text holds, it is only
 * compared with: it ends no value and adds no condition.
 */
#pragma once

#include <string>
#include <string_view>

namespace Host
{
/** Every byte that is special, not printable or not ASCII as a backslash and two hexadecimal digits. */
std::string escapeForLdapFilter(std::string_view text);

std::string makeLdapFilter(const std::string& filterTemplate, std::string_view text);

/** What is wrong with a template, to follow its name in a sentence; "" for nothing. */
std::string problemOfLdapFilter(const std::string& filterTemplate);
} // namespace Host
