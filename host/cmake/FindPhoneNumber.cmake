# libphonenumber comes without a package configuration. Gives the target PhoneNumber::PhoneNumber.

find_path(PhoneNumber_INCLUDE_DIR phonenumbers/phonenumberutil.h)
find_library(PhoneNumber_LIBRARY phonenumber)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(PhoneNumber
  REQUIRED_VARS PhoneNumber_LIBRARY PhoneNumber_INCLUDE_DIR
  REASON_FAILURE_MESSAGE "install libphonenumber-dev")
mark_as_advanced(PhoneNumber_INCLUDE_DIR PhoneNumber_LIBRARY)

if(PhoneNumber_FOUND AND NOT TARGET PhoneNumber::PhoneNumber)
  add_library(PhoneNumber::PhoneNumber UNKNOWN IMPORTED)
  set_target_properties(PhoneNumber::PhoneNumber PROPERTIES
    IMPORTED_LOCATION "${PhoneNumber_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${PhoneNumber_INCLUDE_DIR}")
endif()
