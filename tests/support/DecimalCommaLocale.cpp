#include "support/DecimalCommaLocale.h"

#include <clocale>
#include <cstdlib>
#include <locale>
#include <stdexcept>

namespace tavrin::test {

void DecimalCommaLocale::SetUp() {
    _previous = std::setlocale(LC_ALL, nullptr);
    try {
        // Sets the C++ global locale and, since the locale has a name, the C
        // locale as well.
        std::locale::global(std::locale(kLocale));
    } catch (const std::runtime_error&) {
        // make check-locale installs the locale and asks for it to be there.
        if (std::getenv("TAVRIN_REQUIRE_LOCALE") != nullptr)
            FAIL() << "locale " << kLocale << " is not installed";
        GTEST_SKIP() << "locale " << kLocale << " is not installed; make check-locale generates it";
    }
    _switched = true;
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
}

void DecimalCommaLocale::TearDown() {
    if (!_switched) return;
    std::locale::global(std::locale::classic());
    std::setlocale(LC_ALL, _previous.c_str());
}

}  // namespace tavrin::test
