#include "taskdef/RangeText.h"

#include "taskdef/LeadingNumber.h"
#include "taskdef/RangePairs.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <array>
#include <memory>
#include <pcre2.h>
#include <stdexcept>
#include <vector>

namespace morlevant {

namespace {

struct Rewrite {
    const char* pattern;
    const char* replaceWith;
};

// Order and alternatives matter: at each position the first alternative that matches wins, so
// "7-,-9" becomes "7,-9" in the first pass and "7,9" in the second. The last pattern names the
// control characters by code: in PCRE2 "\v" would mean every vertical space, not the one tab.
constexpr std::array<Rewrite, 8> rewrites{{
    {"-{2,}", "-"},
    {",{2,}", ","},
    {",-{1,}|-,{1,}|-,-{1,}|,-,{1,}", ","},
    {",{2,}", ","},
    {",-{1,}|-,{1,}|-,-{1,}|,-,{1,}", ","},
    {"^,|^-|,$|-$", ""},
    {"^0", "1"},
    {"\\f+|\\n+|\\r+|\\t+|\\x0B+", ""},
}};

struct CodeFree {
    void operator()(pcre2_code* code) const { pcre2_code_free(code); }
};
struct ContextFree {
    void operator()(pcre2_compile_context* context) const { pcre2_compile_context_free(context); }
};

// Every match replaced by the literal text, "^" and "$" also at line starts and ends. The text
// is read byte by byte: the patterns are ASCII and pasted text need not be valid UTF-8.
std::string replaceAll(const std::string& text, const Rewrite& rewrite) {
    const std::unique_ptr<pcre2_compile_context, ContextFree> context(
        pcre2_compile_context_create(nullptr));
    // A pasted CR counts as a line end as well as LF, as it does for the box.
    pcre2_set_newline(context.get(), PCRE2_NEWLINE_ANYCRLF);
    int error = 0;
    PCRE2_SIZE offset = 0;
    const std::unique_ptr<pcre2_code, CodeFree> code(
        pcre2_compile(reinterpret_cast<PCRE2_SPTR>(rewrite.pattern), PCRE2_ZERO_TERMINATED,
                      PCRE2_MULTILINE, &error, &offset, context.get()));
    if (!code)
        throw std::logic_error(std::string("bad range pattern ") + rewrite.pattern);

    // Replacements only shorten the text or keep its length ("^0" to "1"), so the text's own
    // size is room enough.
    std::string result(text.size() + 1, '\0');
    PCRE2_SIZE length = result.size();
    const int rc =
        pcre2_substitute(code.get(), reinterpret_cast<PCRE2_SPTR>(text.data()), text.size(), 0,
                         PCRE2_SUBSTITUTE_GLOBAL | PCRE2_SUBSTITUTE_LITERAL, nullptr, nullptr,
                         reinterpret_cast<PCRE2_SPTR>(rewrite.replaceWith), PCRE2_ZERO_TERMINATED,
                         reinterpret_cast<PCRE2_UCHAR*>(result.data()), &length);
    if (rc < 0)
        throw std::logic_error(std::string("range pattern failed: ") + rewrite.pattern);
    result.resize(length);
    return result;
}

} // namespace

RangeKey rangeKeyFilter(RangeBox box, int keyCode) {
    constexpr int enter = 13, backspace = 8;
    const bool kept = (keyCode >= '0' && keyCode <= '9') || keyCode == '-' || keyCode == ',' ||
                      keyCode == backspace;
    return {kept, box == RangeBox::Row && keyCode == enter};
}

std::string normaliseRangeText(std::string_view text) {
    std::string result(text);
    for (const Rewrite& rewrite : rewrites)
        result = replaceAll(result, rewrite);
    return result;
}

std::optional<std::string> rangeOrderError(std::string_view text, RangeBox box) {
    const std::vector<std::string_view> items = rangeItems(text);
    std::vector<double> values;
    for (const std::string_view item : items)
        values.push_back(LeadingNumber(item));

    // Every item is compared with itself and every later one: the end of a range with all that
    // follow, the start of a range with all after its own end, and with its own end allowing
    // one below it.
    const std::size_t n = items.size() - 1;
    for (std::size_t i = 0; i < n; ++i) {
        for (std::size_t j = i; j <= n; ++j) {
            const bool odd = i % 2 == 1;
            const bool fails = odd || j >= i + 2 ? values[j] < values[i]
                               : j == i + 1      ? values[j] + 1 < values[i]
                                                 : false;
            if (fails)
                return std::string(box == RangeBox::Row ? "row range error:"
                                                        : "column range error:") +
                       std::string(items[i]) + " was bigger than " + std::string(items[j]);
        }
    }
    return std::nullopt;
}

RangeCheck checkRangeText(std::string_view text, RangeBox box) {
    RangeCheck check{normaliseRangeText(text), std::nullopt};
    check.error = rangeOrderError(check.text, box);
    return check;
}

} // namespace morlevant
