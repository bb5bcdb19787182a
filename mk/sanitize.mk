# Sanitizer and valgrind runs (part of check).
#   make check-asan       every test under AddressSanitizer, UndefinedBehavior-
#                         Sanitizer and LeakSanitizer (clang, preset "asan"),
#                         except the exported-symbol list (label "symbols"), the GCC
#                         build's (clang exports other template instances)
#   make check-tsan       the threaded tests under ThreadSanitizer (preset
#                         "tsan"): tests labelled "threads". The
#                         runtime's operator new takes the place of the test
#                         binaries' allocation-counting one (the preset links
#                         with --allow-multiple-definition); tests that count
#                         allocations do not run there.
#   make check-valgrind   tavrin-host under valgrind on the corpus documents
#                         and on malformed inputs (dev build)
#   make check-arm-ubsan  the ARM cross build under UndefinedBehaviorSanitizer
#                         (preset "arm-ubsan"), every test but the package
#                         ones under qemu-arm: 32-bit long, size_t and
#                         pointers, and the target's alignment

.PHONY: check-asan check-tsan check-valgrind check-arm-ubsan

check-asan:
	@scripts/deps.sh base fuzz
	cmake --preset asan
	cmake --build --preset asan -j2
	ctest --preset asan -j2

check-tsan:
	@scripts/deps.sh base fuzz
	cmake --preset tsan
	cmake --build --preset tsan -j2
	ctest --preset tsan -j2 -L threads

check-valgrind:
	@scripts/deps.sh base valgrind
	cmake --preset dev
	cmake --build --preset dev -j2
	scripts/valgrind-host.sh build/dev

check-arm-ubsan:
	@scripts/deps.sh base arm
	cmake --preset arm-ubsan
	cmake --build --preset arm-ubsan
	ctest --preset arm-ubsan

CHECK_TARGETS += check-asan check-tsan check-valgrind check-arm-ubsan
