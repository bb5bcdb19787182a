# Cross build for 32-bit ARM Linux, hard-float EABI, with Debian's
# g++-arm-linux-gnueabihf. Programs built here (tests, tavrin-host) run
# through qemu-user with the ARM system root of the cross toolchain.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)

set(TAVRIN_ARM_TRIPLET arm-linux-gnueabihf)
set(TAVRIN_ARM_SYSROOT /usr/${TAVRIN_ARM_TRIPLET})

set(CMAKE_C_COMPILER ${TAVRIN_ARM_TRIPLET}-gcc)
set(CMAKE_CXX_COMPILER ${TAVRIN_ARM_TRIPLET}-g++)
# ar, nm, readelf, objdump and strip are found by the same triplet prefix.

# GCC notes on every vector iterator passed by value that its parameter
# passing changed in GCC 7.1; it matters only when linking objects built by
# an older GCC, and the host framework and the plug-in are built by one.
set(CMAKE_CXX_FLAGS_INIT "-Wno-psabi")

set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm -L ${TAVRIN_ARM_SYSROOT})

# Libraries and headers of the target come from the cross toolchain's root
# only; build tools (cmake, ninja, python) from the build machine.
set(CMAKE_FIND_ROOT_PATH ${TAVRIN_ARM_SYSROOT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
