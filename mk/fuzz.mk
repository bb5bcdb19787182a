# libFuzzer runs (clang, preset "fuzz").
#   make fuzz SECONDS=300   every target for that long, one after another
#                           (make -j2 fuzz runs two at once)
#   make fuzz-smoke         every target for about a minute (part of check)
# Crash inputs are left in build/fuzz/artifacts/<target>/; saved into
# fuzz/regressions/<target>/ they replay in the ordinary test run.

.PHONY: fuzz fuzz-smoke fuzz-build

FUZZ_TARGETS := $(basename $(notdir $(wildcard fuzz/fuzz_*.cpp)))
SECONDS ?= 300
FUZZ_SMOKE_SECONDS ?= 60

fuzz-build:
	@scripts/deps.sh fuzz
	cmake --preset fuzz
	cmake --build --preset fuzz -j2

fuzz: $(addprefix fuzz-run-,$(FUZZ_TARGETS))

fuzz-run-%: fuzz-build
	scripts/fuzz-run.sh $* $(SECONDS)

fuzz-smoke: fuzz-build
	@for target in $(FUZZ_TARGETS); do \
	  scripts/fuzz-run.sh $$target $(FUZZ_SMOKE_SECONDS) || exit 1; \
	done

CHECK_TARGETS += fuzz-smoke
