#include "NumberText.h"

#include <array>
#include <charconv>

namespace morlevant {

namespace {

constexpr int significantDigits = 15;

// The 15 significant digits of |value| and the power of ten of the first one.
struct DecimalDigits {
    std::array<char, significantDigits> digits{};
    int exponent = 0;
};

DecimalDigits decimalDigits(double value) {
    // "d.dddddddddddddde+xxx": to_chars is locale-independent, unlike printf.
    std::array<char, 40> text{};
    const auto result =
        std::to_chars(text.data(), text.data() + text.size(), value < 0 ? -value : value,
                      std::chars_format::scientific, significantDigits - 1);
    DecimalDigits d;
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
