# Front door of the project. Every target installs the Debian packages it
# needs (scripts/deps.sh) before it configures and builds with CMake presets.
# Further targets live in mk/*.mk; each adds its CI part to CHECK_TARGETS.

.PHONY: all run test check clean

CHECK_TARGETS :=

all: run

# The main job: build everything and run the plug-in inside the substitute
# host on the sample documents.
run:
	@scripts/deps.sh base
	cmake --preset dev
	cmake --build --preset dev
	scripts/run-examples.sh build/dev

# Every test of the dev build on this machine.
test:
	@scripts/deps.sh base
	cmake --preset dev
	cmake --build --preset dev
	ctest --preset dev -j2

include $(wildcard mk/*.mk)

# Every test CI runs.
check: test $(CHECK_TARGETS)

clean:
	rm -rf build
