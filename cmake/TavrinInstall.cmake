# Installation of the public API only, in three components that
# cmake/TavrinPackage.cmake turns into Debian packages:
#   runtime      libpluginjson.so
#   development  the public headers, the CMake package, pluginjson.pc
#   tools        tavrin-host with the substitute framework libtavrin.so it
#                needs (in a directory of its own, so that it never takes
#                the place of a real framework's library), the substitute's
#                headers and its CMake targets
# Layout under the prefix (LIBDIR is lib unless CMAKE_INSTALL_LIBDIR says
# otherwise):
#   include/pluginjson/base/         framework header pieces  (#include "base/X.h")
#   include/pluginjson/json/         plug-in headers          (#include "json/X.h")
#   include/pluginjson/json/legacy/  the json:: value library's headers
#   include/pluginjson/host/         the substitute framework's own API
#   LIBDIR/libpluginjson.so
#   LIBDIR/cmake/TavrinPluginJson/   the CMake package
#   LIBDIR/pkgconfig/pluginjson.pc
#   LIBDIR/tavrin-host/libtavrin.so  the substitute framework
#   bin/tavrin-host
# Headers in internal/ and common/ folders are the code's private parts and
# are never installed. A program elsewhere uses the plug-in with
#
#   find_package(TavrinPluginJson 1.0 REQUIRED)
#   target_link_libraries(app PRIVATE Tavrin::pluginjson Tavrin::tavrin)
#
# Targets: Tavrin::headers (include paths only) and Tavrin::pluginjson (the
# plug-in; it leaves the framework symbols to the process, so a program that
# is not itself a framework host also links a framework); with the tools
# component also Tavrin::tavrin (the substitute framework) and
# Tavrin::tavrin-host.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(TAVRIN_PACKAGE TavrinPluginJson)
set(TAVRIN_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/${TAVRIN_PACKAGE})
set(TAVRIN_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/pluginjson)
set(TAVRIN_INSTALL_PRIVATE_LIBDIR ${CMAKE_INSTALL_LIBDIR}/tavrin-host)

set_target_properties(tavrin_headers PROPERTIES EXPORT_NAME headers)
install(TARGETS tavrin_headers pluginjson
  EXPORT ${TAVRIN_PACKAGE}Targets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime
  INCLUDES DESTINATION ${TAVRIN_INSTALL_INCLUDEDIR})

set_target_properties(tavrin-host PROPERTIES INSTALL_RPATH
  "$ORIGIN/../${TAVRIN_INSTALL_PRIVATE_LIBDIR};$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
install(TARGETS tavrin tavrin-host
  EXPORT TavrinHostTargets
  LIBRARY DESTINATION ${TAVRIN_INSTALL_PRIVATE_LIBDIR} COMPONENT tools
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)

# tavrin_install_headers(<source folder> <destination under the include root>
#                        <component>): the folder's headers, private folders
#                        excluded.
function(tavrin_install_headers source destination component)
  install(DIRECTORY ${source}/
    DESTINATION ${TAVRIN_INSTALL_INCLUDEDIR}/${destination}
    COMPONENT ${component}
    FILES_MATCHING PATTERN "*.h"
    PATTERN internal EXCLUDE
    PATTERN common EXCLUDE)
endfunction()
tavrin_install_headers(${PROJECT_SOURCE_DIR}/base/base base development)
tavrin_install_headers(${PROJECT_SOURCE_DIR}/plugin/json json development)
tavrin_install_headers(${PROJECT_SOURCE_DIR}/host/include/host host tools)

install(EXPORT ${TAVRIN_PACKAGE}Targets
  NAMESPACE Tavrin::
  DESTINATION ${TAVRIN_PACKAGE_DIR}
  COMPONENT development)
install(EXPORT TavrinHostTargets
  NAMESPACE Tavrin::
  DESTINATION ${TAVRIN_PACKAGE_DIR}
  COMPONENT tools)
configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/cmake/${TAVRIN_PACKAGE}Config.cmake.in
  ${PROJECT_BINARY_DIR}/${TAVRIN_PACKAGE}Config.cmake
  INSTALL_DESTINATION ${TAVRIN_PACKAGE_DIR})
write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/${TAVRIN_PACKAGE}ConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/${TAVRIN_PACKAGE}Config.cmake
  ${PROJECT_BINARY_DIR}/${TAVRIN_PACKAGE}ConfigVersion.cmake
  DESTINATION ${TAVRIN_PACKAGE_DIR}
  COMPONENT development)

# pluginjson.pc names its paths relative to its own folder, so the same file
# serves an installation under any prefix and a copy unpacked into a root
# file system image.
set(TAVRIN_PKGCONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH TAVRIN_PKGCONFIG_TO_PREFIX
  /prefix/${TAVRIN_PKGCONFIG_DIR} /prefix)
string(REGEX REPLACE "/$" "" TAVRIN_PKGCONFIG_TO_PREFIX ${TAVRIN_PKGCONFIG_TO_PREFIX})
configure_file(${PROJECT_SOURCE_DIR}/cmake/pluginjson.pc.in
  ${PROJECT_BINARY_DIR}/pluginjson.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/pluginjson.pc
  DESTINATION ${TAVRIN_PKGCONFIG_DIR}
  COMPONENT development)
