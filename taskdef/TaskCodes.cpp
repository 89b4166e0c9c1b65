#include "taskdef/TaskCodes.h"

#include <string>

namespace morlevant {

namespace {

// The code whose number is written on the line, among first .. last.
template <typename Code>
std::optional<Code> codeOf(const std::string& line, Code first, Code last) {
    for (int n = static_cast<int>(first); n <= static_cast<int>(last); ++n)
        if (line == std::to_string(n))
            return static_cast<Code>(n);
    return std::nullopt;
}

// Line 4 counts only under "by ranges"; under "all range" it may hold either value, since
// the editor greys "take the operating ranges out" without unticking it.
std::optional<RangeMode> rangeModeOf(const TaskPageSettings& settings) {
    const std::string& out = settings.takeRangesOut;
    if (out != "0" && out != "1")
        return std::nullopt;
    if (settings.rangeMode == "1")
        return RangeMode::WholeText;
    if (settings.rangeMode == "2")
        return out == "0" ? RangeMode::InPlace : RangeMode::RangesOut;
    return std::nullopt;
}

} // namespace

TaskCodes readTaskCodes(const TaskPageSettings& settings) {
    return {
        rangeModeOf(settings),
        codeOf(settings.operationPage, PageCode::Calculate, PageCode::DivideOrMerge),
        codeOf(settings.insertAction, InsertFilterAction::InsertDateTime,
               InsertFilterAction::FilterAndOutput),
        codeOf(settings.divideAction, DivideMergeAction::DivideByRow, DivideMergeAction::Merge)};
}

} // namespace morlevant
