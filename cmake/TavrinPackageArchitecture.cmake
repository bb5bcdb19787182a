# Read by cpack: the packages are for the Debian architecture whose multiarch
# triplet the build's toolchain targets (armhf for arm-linux-gnueabihf), not
# for the machine cpack runs on.
if(CPACK_TAVRIN_TRIPLET)
  execute_process(
    COMMAND dpkg-architecture -t ${CPACK_TAVRIN_TRIPLET} -qDEB_HOST_ARCH
    OUTPUT_VARIABLE CPACK_DEBIAN_PACKAGE_ARCHITECTURE
    OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY)
endif()
