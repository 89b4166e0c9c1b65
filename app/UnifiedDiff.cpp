#include "app/UnifiedDiff.h"

#include <algorithm>
#include <cstddef>

namespace morlevant {

namespace {

struct Edit {
    char kind;          // ' ', '-' or '+'
    std::size_t before; // rows of `before` and `after` passed before this edit
    std::size_t after;
    const std::string* row;
};

std::vector<Edit> editsOf(const std::vector<std::string>& before,
                          const std::vector<std::string>& after) {
    std::size_t prefix = 0;
    while (prefix < before.size() && prefix < after.size() && before[prefix] == after[prefix])
        ++prefix;
    std::size_t suffix = 0;
    while (suffix < before.size() - prefix && suffix < after.size() - prefix &&
           before[before.size() - 1 - suffix] == after[after.size() - 1 - suffix])
        ++suffix;

    std::vector<Edit> edits;
    std::size_t b = 0;
    std::size_t a = 0;
    const auto keep = [&] {
        edits.push_back({' ', b, a, &before[b]});
        ++b;
        ++a;
    };
    // A run of changed rows: the rows taken out first, then those put in their place.
    const auto change = [&](std::size_t removed, std::size_t added) {
        for (std::size_t i = 0; i < removed; ++i, ++b)
            edits.push_back({'-', b, a, &before[b]});
        for (std::size_t i = 0; i < added; ++i, ++a)
            edits.push_back({'+', b, a, &after[a]});
    };
    while (b < prefix)
        keep();
    const std::size_t middleBefore = before.size() - prefix - suffix;
    const std::size_t middleAfter = after.size() - prefix - suffix;
    if (middleBefore == middleAfter) {
        const std::size_t end = b + middleBefore;
        while (b < end) {
            std::size_t run = 0;
            while (b + run < end && before[b + run] != after[a + run])
                ++run;
            if (run > 0)
                change(run, run);
            else
                keep();
        }
    } else {
        change(middleBefore, middleAfter);
    }
    while (b < before.size())
        keep();
    return edits;
}

// "start,count" of a hunk's side; an empty side names the row before it.
std::string range(std::size_t first, std::size_t count) {
    return std::to_string(count == 0 ? first : first + 1) + "," + std::to_string(count);
}

} // namespace

std::string unifiedDiff(const std::vector<std::string>& before,
                        const std::vector<std::string>& after, const std::string& beforeName,
                        const std::string& afterName) {
    constexpr std::size_t context = 3;
    const std::vector<Edit> edits = editsOf(before, after);
    std::string diff;
    std::size_t i = 0;
    while (true) {
        while (i < edits.size() && edits[i].kind == ' ')
            ++i;
        if (i == edits.size())
            break;
        // A hunk runs from `context` rows before its first change to `context` rows after its
        // last, taking in changes closer than twice the context.
        const std::size_t start = i - std::min(i, context);
        std::size_t end = i;
        while (true) {
            while (end < edits.size() && edits[end].kind != ' ')
                ++end;
            std::size_t same = end;
            while (same < edits.size() && edits[same].kind == ' ' && same - end < 2 * context)
                ++same;
            if (same < edits.size() && edits[same].kind != ' ') {
                end = same;
                continue;
            }
            end = std::min(end + context, edits.size());
            break;
        }
        std::size_t removed = 0;
        std::size_t added = 0;
        for (std::size_t k = start; k < end; ++k) {
            removed += edits[k].kind != '+' ? 1 : 0;
            added += edits[k].kind != '-' ? 1 : 0;
        }
        if (diff.empty())
            diff = "--- " + beforeName + "\n+++ " + afterName + "\n";
        diff += "@@ -" + range(edits[start].before, removed) + " +" +
                range(edits[start].after, added) + " @@\n";
        for (std::size_t k = start; k < end; ++k)
            diff += edits[k].kind + *edits[k].row + "\n";
        i = end;
    }
    return diff;
}

} // namespace morlevant
