# OpenLDAP's client library comes without a package configuration. Gives the target LDAP::LDAP.

find_path(LDAP_INCLUDE_DIR ldap.h)
find_library(LDAP_LIBRARY ldap)
find_library(LBER_LIBRARY lber)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(LDAP
  REQUIRED_VARS LDAP_LIBRARY LBER_LIBRARY LDAP_INCLUDE_DIR
  REASON_FAILURE_MESSAGE "install libldap-dev")
mark_as_advanced(LBER_LIBRARY LDAP_INCLUDE_DIR LDAP_LIBRARY)

if(LDAP_FOUND AND NOT TARGET LDAP::LDAP)
  add_library(LDAP::LDAP UNKNOWN IMPORTED)
  set_target_properties(LDAP::LDAP PROPERTIES
    IMPORTED_LOCATION "${LDAP_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${LDAP_INCLUDE_DIR}"
    INTERFACE_LINK_LIBRARIES "${LBER_LIBRARY}")
endif()
