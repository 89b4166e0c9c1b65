#pragma once

#include "engine/ranges/ColumnRanges.h"
#include "taskdef/TaskPageSettings.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace morlevant {

class RangedRoutine;
class RunAlerts;

// The Calculate page: the steps of line 10 applied to the number of a line or of a column
// range, the result rounded by line 6 and, in columns, aligned by line 7.
class Calculation final {
public:
    // Throws TaskError for a number of decimals or column ranges that cannot be honoured.
    // `alerts` (may be null) counts rows without a number and results wider than their range.
    Calculation(const TaskPageSettings& settings, const ColumnRanges& columns, RunAlerts* alerts);

    // Throws TaskError naming the step when it divides by zero or overflows.
    void CalculateLine(std::string_view line, std::string& out);
    // Calculates a block of whole lines, each end made CR LF. Returns false, having given nothing
    // to rely on, for a block with a line without a number when the alert watches for one.
    bool CalculateLines(std::string_view lines, std::string& out);
    // Aligns a range's result by line 7.
    void fitToWidth(std::string& result, std::size_t width) const;

private:
    struct Step {
        std::string text; // as written, for messages
        char op = 0;
        double operand = 0;
        int decimals = -1; // of the operand as written, -1 when not read directly
    };

    bool notesNoNumber(std::string_view line) const;
    void appendResult(std::string_view line, std::string& out);
    // Inlined where it is called, once or more for every line: a call there cost a tenth of the
    // page's time.
    static double apply(const Step& step, double value);
    // The steps ^ and %, kept out of apply() so that it stays small where it is inlined.
    [[gnu::noinline]] static double powerOrRemainder(const Step& step, double value);
    // Throw the failure of a step: `what` it does, or what its result says.
    [[noreturn]] static void failStep(const Step& step, std::string_view what);
    [[noreturn]] static void failStep(const Step& step, double value, double result);

    std::vector<Step> steps_;
    // Whole numbers rounded half to even (line 6 "0") or n decimals rounded half away from zero.
    enum class Rounding { WholeHalfEven, Decimals } rounding_ = Rounding::Decimals;
    int decimals_ = 0;
    RunAlerts* noNumberAlert_ = nullptr; // set only when the alert watches
    RunAlerts* tooWideAlert_ = nullptr;
    bool alignLeft_ = true;
};

// The Calculate page's routine over the whole line or the column ranges that the run read from
// line 3 (blank in whole-text mode). Throws TaskError for settings that cannot work (a bad
// number of decimals) before any file is written. `alerts` may be null.
std::unique_ptr<RangedRoutine> makeCalculation(const TaskPageSettings& settings,
                                               ColumnRanges columns, RunAlerts* alerts);

} // namespace morlevant
