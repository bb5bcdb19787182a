# The locale tests with a decimal-comma locale installed (part of check):
# generates de_DE.UTF-8 when it is missing, then runs the tests that switch
# the process to it. In the plain test run they skip when it is missing.

.PHONY: check-locale

check-locale:
	@scripts/deps.sh base locales
	@locale -a | grep -qix 'de_DE.utf8' || localedef -i de_DE -f UTF-8 de_DE.UTF-8
	cmake --preset dev
	cmake --build --preset dev -j2
	TAVRIN_REQUIRE_LOCALE=1 ctest --preset dev -R 'DecimalCommaLocale'

CHECK_TARGETS += check-locale
