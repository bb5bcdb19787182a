# Front door of the project. Every target installs the Debian packages it
# needs (scripts/deps.sh) before it configures and builds with CMake presets.

.PHONY: all run test check clean

all: run

# The main job: build everything and run the plug-in inside the substitute
# host on the sample documents.
run:
	@scripts/deps.sh base
	cmake --preset dev
	cmake --build --preset dev
	scripts/run-examples.sh build/dev

# The unit, conformance and end-to-end tests on this machine.
test:
	@scripts/deps.sh base
	cmake --preset dev
	cmake --build --preset dev
	ctest --preset dev -j2

# Every test CI runs.
check: test

clean:
	rm -rf build
