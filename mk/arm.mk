# 32-bit ARM hard-float: cross-build everything with arm-linux-gnueabihf-g++,
# run the whole test suite under qemu-arm, then run tavrin-host under qemu-arm
# on the sample documents.

.PHONY: check-arm build-arm

build-arm:
	@scripts/deps.sh base arm
	cmake --preset arm
	cmake --build --preset arm

check-arm: build-arm
	ctest --preset arm
	scripts/arm-smoke.sh build/arm

CHECK_TARGETS += check-arm
