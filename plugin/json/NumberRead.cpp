#include "json/internal/NumberRead.h"

#include <charconv>
#include <climits>
#include <clocale>
#include <cstdlib>
#include <locale.h>
#include <string>
#include <system_error>

namespace tavrin::plugin::json {

namespace {

// The C locale as an object, made once; strtod_l reads with it whatever the
// process locale is.
locale_t CLocale() {
    static const locale_t c = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return c;
}

}  // namespace

long long ReadInt64(const char* first, const char* last) {
    long long value = 0;
    const auto result = std::from_chars(first, last, value, 10);
    if (result.ec == std::errc::result_out_of_range)
        return first != last && *first == '-' ? LLONG_MIN : LLONG_MAX;
    return value;
}

// from_chars is exact for every value in range; the rare texts beyond the
// range of double go to strtod_l, which gives the standard overflow and
// underflow results.
double ReadDouble(const char* first, const char* last) {
    double value = 0.0;
    const auto result = std::from_chars(first, last, value);
    if (result.ec != std::errc::result_out_of_range) return value;
    const std::string text(first, last);
    const locale_t c = CLocale();
    return c != static_cast<locale_t>(nullptr) ? strtod_l(text.c_str(), nullptr, c)
                                               : std::strtod(text.c_str(), nullptr);
}

}  // namespace tavrin::plugin::json
