# Installation: the public headers, both libraries, tavrin-host and a CMake
# package, so that a program elsewhere can use the plug-in with
#
#   find_package(TavrinPluginJson 1.0 REQUIRED)
#   target_link_libraries(app PRIVATE Tavrin::pluginjson Tavrin::tavrin)
#
# Layout under the prefix:
#   include/base/     framework header pieces        (#include "base/X.h")
#   include/json/     plug-in headers                (#include "json/X.h")
#   include/json/legacy/  the json:: value library's headers
#   include/host/     substitute framework's own API (#include "host/X.h")
#   lib/              libpluginjson.so, libtavrin.so, cmake/TavrinPluginJson/
#   bin/              tavrin-host
# Targets: Tavrin::headers (include paths only), Tavrin::pluginjson (the
# plug-in; it leaves the framework symbols to the process, so a program that
# is not itself a framework host also links Tavrin::tavrin), Tavrin::tavrin
# (the substitute framework) and Tavrin::tavrin-host (the host program).
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(TAVRIN_PACKAGE TavrinPluginJson)
set(TAVRIN_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/${TAVRIN_PACKAGE})

set_target_properties(tavrin_headers PROPERTIES EXPORT_NAME headers)
set(TAVRIN_INSTALLED_TARGETS tavrin_headers pluginjson tavrin tavrin-host)
set_target_properties(tavrin-host PROPERTIES
  INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")

install(TARGETS ${TAVRIN_INSTALLED_TARGETS}
  EXPORT ${TAVRIN_PACKAGE}Targets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

install(DIRECTORY ${PROJECT_SOURCE_DIR}/base/base/
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/base FILES_MATCHING PATTERN "*.h")
install(DIRECTORY ${PROJECT_SOURCE_DIR}/plugin/json/
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/json FILES_MATCHING PATTERN "*.h")
install(DIRECTORY ${PROJECT_SOURCE_DIR}/host/include/host/
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/host FILES_MATCHING PATTERN "*.h")

install(EXPORT ${TAVRIN_PACKAGE}Targets
  NAMESPACE Tavrin::
  DESTINATION ${TAVRIN_PACKAGE_DIR})
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
  DESTINATION ${TAVRIN_PACKAGE_DIR})
