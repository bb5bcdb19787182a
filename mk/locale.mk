# The locale tests with a decimal-comma locale installed (part of check):
# installs the locale sources, generates de_DE.UTF-8 when it is missing, then
# runs the tests that switch the process to a decimal-comma locale.

.PHONY: check-locale

check-locale:
	@scripts/deps.sh base locales
	@locale -a | grep -qix 'de_DE.utf8' || localedef -i de_DE -f UTF-8 de_DE.UTF-8
	cmake --preset dev
	cmake --build --preset dev -j2
	ctest --preset dev -L locale

CHECK_TARGETS += check-locale
