# Install and export, in three components:
#   ConversationAPI_Runtime      the shared library, all that a telephone's image needs
#   ConversationAPI_Development  its headers, those of the platform it expects, CMake and pkg-config files
#   ConversationAPI_Host         the reference platform: library, headers, catalogues, the program deskphone
#
# The two libraries are exported separately, so that the first installs and is found without the second. The
# library leaves the platform's symbols to whoever links it: nothing here may add -Wl,--no-undefined to it.

include(CMakePackageConfigHelpers)

set(package_include_dir ${CONVERSATIONAPI_INCLUDE_DIR})
set(package_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ConversationAPI)
set(package_pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# The way from the installed pkg-config files back to the prefix keeps the installed tree movable.
file(RELATIVE_PATH package_prefix_from_pkgconfig
  ${CMAKE_INSTALL_PREFIX}/${package_pkgconfig_dir} ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" package_prefix_from_pkgconfig ${package_prefix_from_pkgconfig})

# The folder's headers, save those that are internal.
function(install_headers folder component)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/${folder} DESTINATION ${package_include_dir}
    COMPONENT ${component} FILES_MATCHING PATTERN "*.h"
    PATTERN internal EXCLUDE PATTERN cmake EXCLUDE PATTERN translations EXCLUDE PATTERN examples EXCLUDE)
endfunction()

function(install_pkgconfig_file name component)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${package_pkgconfig_dir} COMPONENT ${component})
endfunction()

install(TARGETS ConversationAPI EXPORT ConversationAPITargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    COMPONENT ConversationAPI_Runtime NAMELINK_COMPONENT ConversationAPI_Development)
install(EXPORT ConversationAPITargets NAMESPACE ConversationAPI::
  DESTINATION ${package_cmake_dir} COMPONENT ConversationAPI_Development)
install_headers(include/ConversationAPI ConversationAPI_Development)
install_headers(platform ConversationAPI_Development)
install_pkgconfig_file(conversationapi ConversationAPI_Development)

configure_package_config_file(cmake/ConversationAPIConfig.cmake.in ${PROJECT_BINARY_DIR}/ConversationAPIConfig.cmake
  INSTALL_DESTINATION ${package_cmake_dir})
# Before 1.0 a change of the minor version may change the interface.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ConversationAPIConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/ConversationAPIConfig.cmake
    ${PROJECT_BINARY_DIR}/ConversationAPIConfigVersion.cmake
  DESTINATION ${package_cmake_dir} COMPONENT ConversationAPI_Development)

if(CONVERSATIONAPI_BUILD_HOST)
  file(RELATIVE_PATH libraries_from_programs
    ${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR} ${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR})
  set_target_properties(ConversationAPIHost PROPERTIES INSTALL_RPATH "$ORIGIN")
  set_target_properties(deskphone PROPERTIES INSTALL_RPATH "$ORIGIN/${libraries_from_programs}")
  install(TARGETS ConversationAPIHost EXPORT ConversationAPIHostTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ConversationAPI_Host)
  install(TARGETS deskphone RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT ConversationAPI_Host)
  install(EXPORT ConversationAPIHostTargets NAMESPACE ConversationAPI::
    DESTINATION ${package_cmake_dir} COMPONENT ConversationAPI_Host)
  install_headers(host ConversationAPI_Host)
  get_directory_property(catalogues DIRECTORY host DEFINITION CATALOGUES_DIR)
  get_directory_property(catalogues_destination DIRECTORY host DEFINITION CATALOGUES_INSTALL_DIR)
  install(DIRECTORY ${catalogues}/ DESTINATION ${catalogues_destination} COMPONENT ConversationAPI_Host)
  install_pkgconfig_file(conversationapi-host ConversationAPI_Host)
endif()
