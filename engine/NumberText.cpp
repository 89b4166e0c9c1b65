#include "NumberText.h"

#include "LeadingNumber.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace morlevant {

namespace {

constexpr int significantDigits = 15;

// The 15 significant digits of |value| and the power of ten of the first one.
struct DecimalDigits {
    std::array<char, significantDigits> digits{};
    int exponent = 0;
};

// The digits of the shortest text that reads back as `magnitude`, padded with zeros, when there
// are at most 15 of them. For a positive normal double these are also its 15 significant
// digits: the double lies within half a unit in its 53rd bit of that text, much nearer than half
// a unit in the 15th digit, so rounding it to 15 digits gives the same text.
bool shortestDigits(double magnitude, DecimalDigits& d) {
    std::array<char, 32> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), magnitude,
                                      std::chars_format::scientific);
    const char* e = std::find(text.data(), result.ptr, 'e');
    d.digits.fill('0');
    std::size_t count = 0;
    for (const char* p = text.data(); p != e; ++p) {
        if (*p == '.')
            continue;
        if (count == d.digits.size())
            return false;
        d.digits[count++] = *p;
    }
    std::from_chars(e[1] == '+' ? e + 2 : e + 1, result.ptr, d.exponent);
    return true;
}

DecimalDigits decimalDigits(double value) {
    const double magnitude = std::fabs(value);
    DecimalDigits d;
    if (std::isnormal(magnitude) && shortestDigits(magnitude, d))
        return d;
    // "d.dddddddddddddde+xxx": to_chars is locale-independent, unlike printf.
    std::array<char, 40> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), magnitude,
                                      std::chars_format::scientific, significantDigits - 1);
    d.digits[0] = text[0];
    for (int i = 1; i < significantDigits; ++i)
        d.digits[i] = text[i + 1];
    const char* e = text.data() + significantDigits + 2; // past "d." and 14 digits, after 'e'
    std::from_chars(*e == '+' ? e + 1 : e, result.ptr, d.exponent);
    return d;
}

} // namespace

void appendShortestNumber(double value, std::string& out) {
    if (value == 0) {
        out += '0';
        return;
    }
    std::array<char, 40> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value,
                                      std::chars_format::general, significantDigits);
    for (const char* p = text.data(); p != result.ptr; ++p)
        out += *p == 'e' ? 'E' : *p;
}

double shortestNumberValue(double value) {
    if (value == 0)
        return 0.0; // written "0", never "-0"
    DecimalDigits unused;
    if (std::isnormal(value) && shortestDigits(std::fabs(value), unused))
        return value;
    std::string text;
    appendShortestNumber(value, text);
    return LeadingNumber(text);
}

void appendFixedNumber(double value, int decimals, std::string& out) {
    const DecimalDigits d = decimalDigits(value);
    // Digit k of the magnitude stands for 10^(exponent - k); lay them out around the point.
    const auto digitAt = [&](long power) -> int {
        const long k = d.exponent - power;
        return k >= 0 && k < significantDigits ? d.digits[static_cast<std::size_t>(k)] - '0' : 0;
    };
    // Written straight into `out`, which the caller reuses from line to line.
    const std::size_t start = out.size();
    const long highest = d.exponent > 0 ? d.exponent : 0;
    for (long power = highest; power >= -decimals; --power)
        out += static_cast<char>('0' + digitAt(power));
    if (digitAt(-decimals - 1) >= 5) {
        std::size_t i = out.size();
        while (i > start && out[i - 1] == '9')
            out[--i] = '0';
        if (i == start)
            out.insert(start, 1, '1');
        else
            ++out[i - 1];
    }
    const bool zero = out.find_first_not_of('0', start) == std::string::npos;
    if (decimals > 0)
        out.insert(out.size() - static_cast<std::size_t>(decimals), 1, '.');
    if (value < 0 && !zero)
        out.insert(start, 1, '-');
}

} // namespace morlevant
