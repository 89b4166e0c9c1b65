#pragma once

#include <string>
#include <string_view>

namespace morlevant {

// LeadingNumber(text), read directly when the number is a short decimal.
double readLeadingNumber(std::string_view text);
// The same, with the number of digits after its point in `decimals` (0 without a point), or
// -1 when the number was not read directly.
double readLeadingNumber(std::string_view text, int& decimals);

// Appends the value as the shortest decimal text of at most 15 significant digits: 12.5,
// 0.333333333333333, 1E+20, 1E-05. Exponents have at least two digits; zero is never "-0".
void appendShortestNumber(double value, std::string& out);

// The value that the text appendShortestNumber writes for `value` reads back as, found without
// writing it when it is the value itself: when the shortest text that reads back as the value
// has at most 15 significant digits, which is the case for most numbers. `decimals`, when not
// negative, is a guess at the decimals of such a text (the sum of numbers of 2 and 0 decimals
// has 2), tried first; any guess gives the same result.
double shortestNumberValue(double value, int decimals = -1);

// More decimals than a double can carry meaning in: appendFixedNumber writes more only digit by
// digit, the slow way, and the Calculate page refuses more.
constexpr int maxFixedDecimals = 340;

// Appends the value with exactly `decimals` digits after the point and at least one before it.
// The value is first written with 15 significant digits and that decimal text is rounded half
// away from zero, so 2.675 with 2 decimals gives 2.68 as the user reads it, although the binary
// double lies just below. A result that rounds to zero carries no minus sign.
// `decimals` below 0 count as 0.
void appendFixedNumber(double value, int decimals, std::string& out);

} // namespace morlevant
