#pragma once

#include <string_view>

namespace morlevant {

// The value of the number at the start of a text: leading blanks are skipped, then an optional
// sign, digits, a decimal point and an exponent are read for as long as they can continue a
// number. A text without a leading number is 0. A number too large for a double is +-infinity.
double LeadingNumber(std::string_view text);

} // namespace morlevant
