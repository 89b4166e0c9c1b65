#include "taskdef/RangePairs.h"

#include "taskdef/LeadingNumber.h"
#include "taskdef/TaskError.h"
#include "taskdef/VisibleName.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace morlevant {

std::vector<std::string_view> rangeItems(std::string_view text) {
    std::vector<std::string_view> items;
    std::size_t start = 0;
    while (true) {
        const std::size_t end = text.find_first_of(",-", start);
        items.push_back(text.substr(start, end - start));
        if (end == std::string_view::npos)
            return items;
        start = end + 1;
    }
}

RangePairs RangePairs::parse(std::string_view text, std::string_view what) {
    RangePairs result;
    if (text.find_first_not_of(" \t") == std::string_view::npos)
        return result;

    std::vector<double> items;
    for (const std::string_view item : rangeItems(text))
        items.push_back(LeadingNumber(item));
    if (items.size() % 2 != 0)
        throw TaskError("The " + std::string(what) + " \"" + visibleName(text) +
                        "\" end with a number that has no partner; write ranges as low-high");
    for (std::size_t i = 0; i < items.size(); i += 2)
        result.pairs_.push_back({items[i], items[i + 1]});

    for (const RangePair& pair : result.pairs_) {
        if (pair.low <= pair.high)
            result.covered_.push_back(pair);
        if (pair.low == pair.high)
            result.points_.push_back(pair.low);
    }
    std::sort(result.covered_.begin(), result.covered_.end(),
              [](const RangePair& a, const RangePair& b) { return a.low < b.low; });
    std::vector<RangePair> merged;
    for (const RangePair& pair : result.covered_) {
        if (!merged.empty() && pair.low <= merged.back().high)
            merged.back().high = std::max(merged.back().high, pair.high);
        else
            merged.push_back(pair);
    }
    result.covered_ = std::move(merged);
    std::sort(result.points_.begin(), result.points_.end());
    return result;
}

bool RangePairs::contains(double row) const {
    // The last range that starts at or before the row is the only one that can hold it.
    const auto after =
        std::upper_bound(covered_.begin(), covered_.end(), row,
                         [](double r, const RangePair& pair) { return r < pair.low; });
    return after != covered_.begin() && row <= std::prev(after)->high;
}

bool RangePairs::isPoint(double row) const {
    return std::binary_search(points_.begin(), points_.end(), row);
}

} // namespace morlevant
