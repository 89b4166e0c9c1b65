#include "engine/NumberText.h"

#include "taskdef/LeadingNumber.h"

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
    bool shortest = false; // the digits are those of the shortest text that reads back the same
};

// The 15 significant digits of a positive double whose shortest round-trip text has at most
// 15, or whose further digits say clearly which way to round; false for the rest. That text
// lies within half a unit in the last bit of the double, which for a normal double is less than
// 0.12 units in the 15th digit: so text and double round to the same 15 digits, unless the
// digits beyond the 15th are within 0.12 of a half. This spares the slow exact conversion to 15
// digits for nearly every number.
bool fastDigits(double magnitude, DecimalDigits& d) {
    if (!(magnitude >= 1e-300 && magnitude <= 1e300)) // subnormals, and room to round up
        return false;
    std::array<char, 32> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), magnitude,
                                      std::chars_format::scientific);
    const char* e = std::find(text.data(), result.ptr, 'e');
    std::array<char, 17> all{}; // a shortest text has at most 17 digits
    all.fill('0');
    std::size_t count = 0;
    for (const char* p = text.data(); p != e; ++p)
        if (*p != '.')
            all[count++] = *p;
    std::from_chars(e[1] == '+' ? e + 2 : e + 1, result.ptr, d.exponent);
    std::copy_n(all.begin(), significantDigits, d.digits.begin());
    d.shortest = count <= significantDigits;
    const int beyond = (all[15] - '0') * 10 + (all[16] - '0'); // hundredths of the 15th digit
    if (beyond < 50 - 12)
        return true;
    if (beyond <= 50 + 12)
        return false;
    int i = significantDigits - 1;
    for (; i >= 0 && d.digits[i] == '9'; --i)
        d.digits[i] = '0';
    if (i >= 0) {
        ++d.digits[i];
    } else {
        d.digits[0] = '1';
        ++d.exponent;
    }
    return true;
}

// The number that 15 significant digits stand for.
double valueOf(const DecimalDigits& d) {
    std::array<char, 32> text{};
    char* p = std::copy(d.digits.begin(), d.digits.end(), text.data());
    *p++ = 'e';
    p = std::to_chars(p, text.data() + text.size(), d.exponent - (significantDigits - 1)).ptr;
    double value = 0;
    std::from_chars(text.data(), p, value);
    return value;
}

DecimalDigits decimalDigits(double value) {
    const double magnitude = std::fabs(value);
    DecimalDigits d;
    if (fastDigits(magnitude, d))
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
    // A whole number of at most 15 digits is written as it is.
    if (std::fabs(value) < 1e15 && std::trunc(value) == value)
        return value;
    DecimalDigits d;
    if (fastDigits(std::fabs(value), d)) {
        if (d.shortest)
            return value;
        return value < 0 ? -valueOf(d) : valueOf(d);
    }
    std::string written;
    appendShortestNumber(value, written);
    return LeadingNumber(written);
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
