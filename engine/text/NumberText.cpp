#include "engine/text/NumberText.h"

#include "engine/text/ProcessorFeatures.h"
#include "taskdef/LeadingNumber.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

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

// The powers of ten that a double holds exactly.
constexpr std::array<double, 23> exactPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// The whole part and the fraction of product + error, a product held exactly as a sum of two
// doubles (the error from fma): exact but for the last bit of the fraction.
MORLEVANT_FLOAT_STEPS_HELPER double wholePart(double product, double error, double& fraction) {
    double whole = std::floor(product);
    fraction = (product - whole) + error;
    if (fraction < 0) {
        whole -= 1;
        fraction += 1;
    } else if (fraction >= 1) {
        whole += 1;
        fraction -= 1;
    }
    return whole;
}

// The doubles nearest 10^-7 to 10^15.
constexpr std::array<double, 23> nearPowers = {1e-7, 1e-6, 1e-5, 1e-4, 1e-3, 1e-2, 1e-1, 1e0,
                                               1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,
                                               1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// The 15 significant digits of a positive double as a whole number `digits` and the power of
// ten `scale` it is to be divided by, found with double arithmetic alone. The product of the
// magnitude and an exact power of ten is held exactly as a sum of two doubles, so its integer
// part and fraction are exact but for the last bit of the fraction: a fraction within a
// millionth of a half is left to the exact conversion. Only for magnitudes from 1e-7 to below
// 1e15, whose scale lies within the exact powers. The digits divided by the power, one
// correctly rounded division of two exact numbers, are then the double that the 15 digits
// read back as.
MORLEVANT_FLOAT_STEPS_HELPER bool scaledDigits(double magnitude, std::uint64_t& digits,
                                               int& scale) {
    if (!(magnitude >= 1e-7 && magnitude < 1e15))
        return false;
    // floor(log10(magnitude)) is this estimate from the binary exponent or one more; the scale
    // that gives 15 digits is 14 less it. The likelier one is tried first, by comparing with the
    // double nearest the next power of ten: near that power the other is tried as well.
    const int binaryExponent =
        static_cast<int>((std::bit_cast<std::uint64_t>(magnitude) >> 52) & 0x7ff) - 1023;
    const int estimate = (binaryExponent * 78913) >> 18;
    const bool nextPower = magnitude >= nearPowers[static_cast<std::size_t>(estimate + 8)];
    const std::array<int, 2> scales = nextPower ? std::array{13 - estimate, 14 - estimate}
                                                : std::array{14 - estimate, 13 - estimate};
    for (const int tried : scales) {
        scale = tried;
        if (scale < 0 || scale > 22)
            continue;
        const double power = exactPowers[static_cast<std::size_t>(scale)];
        const double product = magnitude * power;
        double fraction = 0;
        const double whole = wholePart(product, std::fma(magnitude, power, -product), fraction);
        if (whole < 1e14 || whole >= 1e15)
            continue;
        if (std::fabs(fraction - 0.5) < 1e-6)
            return false;
        digits = static_cast<std::uint64_t>(whole) + (fraction > 0.5 ? 1 : 0);
        return true;
    }
    return false;
}

// |value| times 10^decimals rounded half away from zero, found directly where the rounding to 15
// significant digits that comes first cannot change it: that rounding moves the product by at
// most half a unit in its 15th digit, below product * 1e-14, so only a fraction that close to
// a half is left to the digits. Spares finding the 15 digits for nearly every result.
MORLEVANT_FLOAT_STEPS_HELPER bool roundedDirectly(double magnitude, int decimals,
                                                  std::uint64_t& whole) {
    if (decimals < 0 || decimals >= static_cast<int>(exactPowers.size()))
        return false;
    const double power = exactPowers[static_cast<std::size_t>(decimals)];
    const double product = magnitude * power;
    if (!(product < 1e15))
        return false;
    double fraction = 0;
    const double floor = wholePart(product, std::fma(magnitude, power, -product), fraction);
    if (std::fabs(fraction - 0.5) <= product * 1e-14 + 1e-15)
        return false;
    whole = static_cast<std::uint64_t>(floor) + (fraction > 0.5 ? 1 : 0);
    return true;
}

// Appends whole / 10^(decimals - zeros), with `zeros` (at most `decimals`) zeros after the
// digits of `whole`, as appendFixedNumber does. Laid out from the right in a buffer and appended in
// one step: this is the last and most frequent step of a calculated line.
void appendWholeAsFixed(bool negative, std::uint64_t whole, int zeros, int decimals,
                        std::string& out) {
    assert(zeros <= decimals); // the zeros are all decimals
    // The digits of 0 to 99 in pairs: two digits take one division rather than two.
    static constexpr auto pairs = [] {
        std::array<char, 200> digits{};
        for (std::size_t n = 0; n < 100; ++n) {
            digits[2 * n] = static_cast<char>('0' + n / 10);
            digits[2 * n + 1] = static_cast<char>('0' + n % 10);
        }
        return digits;
    }();
    const auto putPair = [&](char*& at, std::uint64_t n) {
        at -= 2;
        std::memcpy(at, &pairs[2 * n], 2);
    };
    // Room for a sign, a point, 20 digits and the zeros of as many decimals as can be asked for.
    std::array<char, maxFixedDecimals + 24> text; // NOLINT: written before it is read
    char* const end = text.data() + text.size();
    char* p = end;
    const bool minus = negative && whole != 0;
    // The decimals: the zeros, then the low digits of `whole`, then zeros once it has run out.
    int left = decimals;
    for (; zeros > 0; --zeros, --left)
        *--p = '0';
    for (; left >= 2; left -= 2) {
        putPair(p, whole % 100);
        whole /= 100;
    }
    if (left == 1) {
        *--p = static_cast<char>('0' + whole % 10);
        whole /= 10;
    }
    if (decimals > 0)
        *--p = '.';
    // The whole part, at least one digit.
    for (; whole >= 100; whole /= 100)
        putPair(p, whole % 100);
    if (whole >= 10)
        putPair(p, whole);
    else
        *--p = static_cast<char>('0' + whole);
    if (minus)
        *--p = '-';
    out.append(p, end);
}

// Appends digits / 10^scale with `decimals` decimals as appendFixedNumber does.
void appendScaledFixed(bool negative, std::uint64_t digits, int scale, int decimals,
                       std::string& out) {
    // The number times 10^decimals, rounded half away from zero; the digits stop short of it
    // by `zeros` places.
    std::uint64_t whole = digits;
    int zeros = 0;
    if (decimals >= scale) {
        zeros = decimals - scale;
    } else if (scale - decimals > 15) {
        whole = 0; // the digits are below 10^15 + 1, less than half a unit
    } else {
        // The quotient in doubles, far cheaper than a 64-bit division: both sides are exact and
        // below 2^53, and a quotient just below a whole number n lies at least 1/unit below it,
        // more than its rounding error, so the floor is the exact whole part.
        const double unit = exactPowers[static_cast<std::size_t>(scale - decimals)];
        const auto quotient = static_cast<std::uint64_t>(static_cast<double>(digits) / unit);
        const std::uint64_t remainder = digits - quotient * static_cast<std::uint64_t>(unit);
        whole = quotient + (2 * remainder >= static_cast<std::uint64_t>(unit) ? 1 : 0);
    }
    appendWholeAsFixed(negative, whole, zeros, decimals, out);
}

} // namespace

double readLeadingNumber(std::string_view text, int& decimalsRead) {
    // Blanks, a sign, then at most 15 digits with or without a point and no exponent: the
    // digits as a whole number divided by an exact power of ten, one correctly rounded step.
    decimalsRead = 0;
    std::size_t pos = 0; // a plain loop: find_first_not_of searches the set for every byte
    while (pos < text.size() && (text[pos] == ' ' || text[pos] == '\t'))
        ++pos;
    if (pos == text.size())
        return 0.0;
    const bool negative = text[pos] == '-';
    if (text[pos] == '+' || text[pos] == '-')
        ++pos;
    std::uint64_t digits = 0;
    int count = 0;
    int decimals = -1; // digits after the point, -1 before it
    for (; pos < text.size() && count <= significantDigits; ++pos) {
        const char c = text[pos];
        if (c >= '0' && c <= '9') {
            digits = digits * 10 + static_cast<std::uint64_t>(c - '0');
            ++count;
            if (decimals >= 0)
                ++decimals;
        } else if (c == '.' && decimals < 0) {
            decimals = 0;
        } else {
            break;
        }
    }
    const bool exponent = pos < text.size() && (text[pos] == 'e' || text[pos] == 'E');
    decimalsRead = std::max(decimals, 0);
    if (count == 0)
        return 0.0; // no digits before the first other character: not a number, and never -0
    if (count > significantDigits || exponent) {
        decimalsRead = -1;
        return LeadingNumber(text);
    }
    const double value =
        static_cast<double>(digits) / exactPowers[static_cast<std::size_t>(std::max(decimals, 0))];
    return negative ? -value : value;
}

double readLeadingNumber(std::string_view text) {
    int decimals = 0;
    return readLeadingNumber(text, decimals);
}

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

MORLEVANT_FLOAT_STEPS double shortestNumberValue(double value, int decimals) {
    if (value == 0)
        return 0.0; // written "0", never "-0"
    // A whole number of at most 15 digits is written as it is, and so is a value that a
    // decimal of at most 15 digits with the decimals given reads back as.
    if (std::fabs(value) < 1e15 && std::trunc(value) == value)
        return value;
    if (decimals > 0 && decimals < static_cast<int>(exactPowers.size())) {
        const double power = exactPowers[static_cast<std::size_t>(decimals)];
        // Rounded by adding and taking away 2^52, which the compiler keeps inline.
        const double scaled = std::fabs(value * power);
        const double digits = scaled < 1e15 ? (scaled + 0x1p52) - 0x1p52 : 0;
        if (digits != 0 && digits / power == std::fabs(value))
            return value;
    }
    std::uint64_t digits = 0;
    int scale = 0;
    if (scaledDigits(std::fabs(value), digits, scale)) {
        const double rounded =
            static_cast<double>(digits) / exactPowers[static_cast<std::size_t>(scale)];
        return value < 0 ? -rounded : rounded;
    }
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

MORLEVANT_FLOAT_STEPS void appendFixedNumber(double value, int decimals, std::string& out) {
    // The layouts from whole numbers hold at most maxFixedDecimals; more go digit by digit.
    decimals = std::max(decimals, 0);
    const bool laidOutWhole = decimals <= maxFixedDecimals;
    std::uint64_t digits = 0;
    if (laidOutWhole && roundedDirectly(std::fabs(value), decimals, digits)) {
        appendWholeAsFixed(value < 0, digits, 0, decimals, out);
        return;
    }
    int scale = 0;
    if (laidOutWhole && scaledDigits(std::fabs(value), digits, scale)) {
        appendScaledFixed(value < 0, digits, scale, decimals, out);
        return;
    }
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
