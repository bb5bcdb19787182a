# Debian packages of this build, one per install component
# (cmake/TavrinInstall.cmake); `cpack --config CPackConfig.cmake` in the build
# directory writes them (make package):
#   libpluginjson1     runtime      libpluginjson.so
#   libpluginjson-dev  development  headers, CMake package, pluginjson.pc
#   pluginjson-tools   tools        tavrin-host and the substitute framework
# The 1 is the major version: the CMake package accepts any 1.x, and the
# library's SONAME is its unversioned file name (hosts load it by that
# name), so there is no versioned name to call the package after. The
# packages are for the architecture the build targets (armhf from the ARM
# cross build), and all carry the project's version, which the module's
# version text must start with.

# The version text in the plug-in is one fixed string; it has to name the
# version the packages and the CMake package carry.
set(TAVRIN_VERSION_SOURCE ${PROJECT_SOURCE_DIR}/plugin/json/PluginJson.cpp)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${TAVRIN_VERSION_SOURCE})
file(STRINGS ${TAVRIN_VERSION_SOURCE} TAVRIN_VERSION_TEXT REGEX "\"pluginjson@version:")
if(NOT TAVRIN_VERSION_TEXT MATCHES "\"pluginjson@version:${PROJECT_VERSION}\\.")
  message(FATAL_ERROR "The module version text in ${TAVRIN_VERSION_SOURCE} does not "
    "start with \"pluginjson@version:${PROJECT_VERSION}.\" (the project's version): "
    "${TAVRIN_VERSION_TEXT}")
endif()

# The C library and C++ runtime the toolchain builds against: the packages
# need at least these versions on the target.
find_file(TAVRIN_FEATURES_H features.h
  PATHS ${CMAKE_CXX_IMPLICIT_INCLUDE_DIRECTORIES} NO_DEFAULT_PATH)
file(STRINGS ${TAVRIN_FEATURES_H} TAVRIN_GLIBC_VERSION_LINES
  REGEX "^#define[ \t]+__GLIBC(_MINOR)?__[ \t]+[0-9]+")
string(REGEX REPLACE ".*__GLIBC__[ \t]+([0-9]+).*__GLIBC_MINOR__[ \t]+([0-9]+).*" "\\1.\\2"
  TAVRIN_GLIBC_VERSION "${TAVRIN_GLIBC_VERSION_LINES}")
set(TAVRIN_RUNTIME_DEPENDS "libc6 (>= ${TAVRIN_GLIBC_VERSION}), libgcc-s1")
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  string(REGEX MATCH "^[0-9]+" TAVRIN_GCC_MAJOR ${CMAKE_CXX_COMPILER_VERSION})
  string(APPEND TAVRIN_RUNTIME_DEPENDS ", libstdc++6 (>= ${TAVRIN_GCC_MAJOR})")
else()
  string(APPEND TAVRIN_RUNTIME_DEPENDS ", libstdc++6")
endif()

set(TAVRIN_PACKAGE_MAINTAINER "pluginjson developers <pluginjson@example.invalid>"
  CACHE STRING "Maintainer field of the Debian packages")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME pluginjson)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT ${TAVRIN_PACKAGE_MAINTAINER})
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development tools)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
# cpack works out the architecture from the toolchain's multiarch triplet.
set(CPACK_TAVRIN_TRIPLET ${CMAKE_LIBRARY_ARCHITECTURE})
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/TavrinPackageArchitecture.cmake)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libpluginjson1)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS ${TAVRIN_RUNTIME_DEPENDS})
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
  "JSON plug-in of the tavrin framework\n\
libpluginjson.so, loaded into a host process of the tavrin framework, which\n\
supplies the framework itself.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libpluginjson-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
  "JSON plug-in of the tavrin framework: development files\n\
The public headers under /usr/include/pluginjson, the CMake package\n\
TavrinPluginJson and the pkg-config file pluginjson.pc.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME pluginjson-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS ${TAVRIN_RUNTIME_DEPENDS})
set(CPACK_COMPONENT_TOOLS_DEPENDS runtime)
set(CPACK_COMPONENT_TOOLS_DESCRIPTION
  "tavrin-host: runs the JSON plug-in without the tavrin framework\n\
tavrin-host loads libpluginjson.so into a small substitute of the framework,\n\
libtavrin.so, kept in a directory of its own (/usr/${TAVRIN_INSTALL_PRIVATE_LIBDIR})\n\
so that it never takes the place of the real framework.")

include(CPack)

# The compiler and flags of this build, for the consumer that
# tests/package/check-debs.sh builds against the packages.
file(CONFIGURE OUTPUT ${CPACK_PACKAGE_DIRECTORY}/consumer-compiler
  CONTENT "${CMAKE_CXX_COMPILER} ${CMAKE_CXX_FLAGS}\n")
