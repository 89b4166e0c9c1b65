#include "taskdef/LeadingNumber.h"

#include <cctype>
#include <charconv>
#include <cmath>

namespace morlevant {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

std::size_t skipDigits(std::string_view text, std::size_t pos) {
    while (pos < text.size() && isDigit(text[pos]))
        ++pos;
    return pos;
}

} // namespace

double LeadingNumber(std::string_view text) {
    std::size_t pos = 0;
    while (pos < text.size() && (text[pos] == ' ' || text[pos] == '\t'))
        ++pos;
    bool negative = false;
    if (pos < text.size() && (text[pos] == '+' || text[pos] == '-'))
        negative = text[pos++] == '-';

    const std::size_t start = pos;
    pos = skipDigits(text, pos);
    bool hasDigits = pos > start;
    if (pos < text.size() && text[pos] == '.') {
        const std::size_t fraction = pos + 1;
        const std::size_t fractionEnd = skipDigits(text, fraction);
        hasDigits = hasDigits || fractionEnd > fraction;
        pos = fractionEnd;
    }
    if (!hasDigits)
        return 0.0;
    if (pos < text.size() && (text[pos] == 'e' || text[pos] == 'E')) {
        std::size_t exponent = pos + 1;
        if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-'))
            ++exponent;
        const std::size_t exponentEnd = skipDigits(text, exponent);
        if (exponentEnd > exponent)
            pos = exponentEnd;
    }

    double value = 0.0;
    const auto [end, error] =
        std::from_chars(text.data() + start, text.data() + pos, value, std::chars_format::general);
    if (error == std::errc::result_out_of_range) {
        // from_chars leaves the value alone here; tell overflow from underflow by the exponent.
        const std::string_view digits = text.substr(start, pos - start);
        const std::size_t e = digits.find_first_of("eE");
        const bool tiny =
            e != std::string_view::npos && digits.find('-', e) != std::string_view::npos;
        value = tiny ? 0.0 : HUGE_VAL;
    }
    (void)end;
    return negative ? -value : value;
}

} // namespace morlevant
