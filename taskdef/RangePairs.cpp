#include "taskdef/RangePairs.h"

#include "taskdef/LeadingNumber.h"
#include "taskdef/TaskError.h"

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
        throw TaskError("The " + std::string(what) + " \"" + std::string(text) +
                        "\" end with a number that has no partner; write ranges as low-high");
    for (std::size_t i = 0; i < items.size(); i += 2)
        result.pairs_.push_back({items[i], items[i + 1]});
    return result;
}

bool RangePairs::contains(double row) const {
    for (const RangePair& pair : pairs_)
        if (pair.low <= row && row <= pair.high)
            return true;
    return false;
}

bool RangePairs::isPoint(double row) const {
    for (const RangePair& pair : pairs_)
        if (pair.low == row && pair.high == row)
            return true;
    return false;
}

} // namespace morlevant
