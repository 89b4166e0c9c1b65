#pragma once

#include <string>
#include <string_view>

namespace morlevant {

// LeadingNumber(text), read directly when the number is a short decimal.
double readLeadingNumber(std::string_view text);

// Appends the value as the shortest decimal text of at most 15 significant digits: 12.5,
// 0.333333333333333, 1E+20, 1E-05. Exponents have at least two digits; zero is never "-0".
void appendShortestNumber(double value, std::string& out);

// The value that the text appendShortestNumber writes for `value` reads back as, found without
// writing it when it is the value itself: when the shortest text that reads back as the value
// has at most 15 significant digits, which is the case for most numbers.
double shortestNumberValue(double value);

// Appends the value with exactly `decimals` digits after the point and at least one before it.
// The value is first written with 15 significant digits and that decimal text is rounded half
// away from zero, so 2.675 with 2 decimals gives 2.68 as the user reads it, although the binary
// double lies just below. A result that rounds to zero carries no minus sign.
void appendFixedNumber(double value, int decimals, std::string& out);

} // namespace morlevant
