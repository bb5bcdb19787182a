# Debian packages (part of check): libpluginjson1, libpluginjson-dev and
# pluginjson-tools (cmake/TavrinPackage.cmake) for this machine from the dev
# build and for armhf from the ARM cross build, into build/<preset>/packages/.
# Each set is checked by tests/package/check-debs.sh: fields, file lists,
# object format, and consumers built against the packages unpacked into a
# scratch root (the ARM ones run under qemu-arm). Only the shipped targets
# are built.

.PHONY: package package-native package-arm

PACKAGE_TARGETS := pluginjson tavrin tavrin-host

package: package-native package-arm

package-native:
	@scripts/deps.sh base package
	cmake --preset dev
	cmake --build --preset dev --target $(PACKAGE_TARGETS)
	cpack --config build/dev/CPackConfig.cmake
	tests/package/check-debs.sh build/dev $$(dpkg --print-architecture)

package-arm:
	@scripts/deps.sh base arm package
	cmake --preset arm
	cmake --build --preset arm --target $(PACKAGE_TARGETS)
	cpack --config build/arm/CPackConfig.cmake
	tests/package/check-debs.sh build/arm armhf qemu-arm -L /usr/arm-linux-gnueabihf

CHECK_TARGETS += package
