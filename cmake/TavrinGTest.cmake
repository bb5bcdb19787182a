# GoogleTest for the test programs as GTest::gtest and GTest::gtest_main.
# Natively the installed package is used. A cross build compiles it from the
# sources Debian's libgtest-dev ships, with the target's compiler, since no
# prebuilt library for the target exists on the build machine.
set(TAVRIN_GTEST_SOURCE_DIR /usr/src/googletest CACHE PATH "GoogleTest sources for cross builds")

if(NOT CMAKE_CROSSCOMPILING)
  find_package(GTest REQUIRED)
  return()
endif()

if(TARGET GTest::gtest)
  return()
endif()
if(NOT EXISTS ${TAVRIN_GTEST_SOURCE_DIR}/CMakeLists.txt)
  message(FATAL_ERROR "GoogleTest sources not found in ${TAVRIN_GTEST_SOURCE_DIR} (apt-get install libgtest-dev)")
endif()

set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(BUILD_SHARED_LIBS OFF)
add_subdirectory(${TAVRIN_GTEST_SOURCE_DIR} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
foreach(lib gtest gtest_main)
  # Its warnings are not ours to fix (the sanitizer build shows some).
  target_compile_options(${lib} PRIVATE -Wno-error)
  if(NOT TARGET GTest::${lib})
    add_library(GTest::${lib} ALIAS ${lib})
  endif()
endforeach()
