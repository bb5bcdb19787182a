#pragma once
// Internal to the plug-in's sources: not part of the installed headers.

#include "json/internal/DecimalToDouble.h"

namespace tavrin::plugin::json {

// The shortest decimal that reads back as `value` (positive and finite), and
// among those of its length the nearest to `value`: digits * 10^exponent,
// found quickly for the doubles documents hold, from about 10^-37 to 10^17.
// Halfway between the two nearest, the even one. Sets the digits and the
// exponent; the sign is the caller's to set. False (and `decimal` unset) when
// there is no quick answer: subnormal values, powers of two and values out of
// that range.
bool ShortestDecimal(double value, Decimal& decimal);

}  // namespace tavrin::plugin::json
