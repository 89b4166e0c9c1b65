#include "engine/routines/Calculation.h"

#include "engine/RunAlerts.h"
#include "engine/routines/RangedRoutine.h"
#include "engine/text/LineEnds.h"
#include "engine/text/NumberText.h"
#include "engine/text/Utf8.h"
#include "taskdef/TaskError.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace morlevant {

namespace {

// A column range wider than this cannot hold an aligned result: padding to it would only fill
// memory with blanks.
constexpr std::size_t maxAlignedWidth = std::size_t{1} << 24;

bool isOperator(char c) {
    return c == '+' || c == '-' || c == '*' || c == '/' || c == '^' || c == '%';
}

std::string trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos)
        return {};
    return std::string(text.substr(first, text.find_last_not_of(" \t") - first + 1));
}

// Whether the text starts, after blanks and a sign, with a number rather than counting as 0.
bool holdsNumber(std::string_view text) {
    std::size_t at = text.find_first_not_of(" \t");
    if (at < text.size() && (text[at] == '+' || text[at] == '-'))
        ++at;
    if (at < text.size() && text[at] == '.')
        ++at;
    return at < text.size() && text[at] >= '0' && text[at] <= '9';
}

} // namespace

Calculation::Calculation(const TaskPageSettings& settings, const ColumnRanges& columns,
                         RunAlerts* alerts)
    : alignLeft_(settings.alignment == "Left") {
    if (alerts && alerts->watches(RunAlerts::Kind::NoNumber))
        noNumberAlert_ = alerts;
    if (alerts && alerts->watches(RunAlerts::Kind::TooWide))
        tooWideAlert_ = alerts;
    std::string_view steps = settings.calculateSteps;
    while (true) {
        const std::size_t comma = steps.find(',');
        const std::string_view text = steps.substr(0, comma);
        if (!text.empty() && isOperator(text.front())) {
            Step& step = steps_.emplace_back(Step{std::string(text), text.front()});
            step.operand = readLeadingNumber(text.substr(1), step.decimals);
        }
        if (comma == std::string_view::npos)
            break;
        steps = steps.substr(comma + 1);
    }

    // "0" rounds to whole numbers half to even. Any other text gives the format "#0." followed
    // by n zeros, n its leading whole number: n decimals rounded half away from zero. A blank
    // line 6, or one without a number, is 0 decimals of that kind ("00" too). With none, the
    // point of "#0." is not written: it would only end the number, and a result such as "3."
    // is not read back the same way by every program that reads the file.
    const std::string decimals = trimmed(settings.decimalNumber);
    if (decimals == "0") {
        rounding_ = Rounding::WholeHalfEven;
    } else {
        const std::size_t digits =
            std::min(decimals.find_first_not_of("0123456789"), decimals.size());
        const auto [end, error] =
            std::from_chars(decimals.data(), decimals.data() + digits, decimals_);
        if (error == std::errc::result_out_of_range || decimals_ > maxFixedDecimals)
            throw TaskError("The number of decimals " + decimals + " is too large; at most " +
                            std::to_string(maxFixedDecimals) + " decimals can be written");
        rounding_ = Rounding::Decimals;
    }

    // Every range's result is made up to the range's width, so their widths together are the
    // least a row of the ranges taken out can be: a cap keeps one row from growing unbounded.
    std::size_t total = 0;
    for (const ColumnRanges::Range& range : columns.written()) {
        total += std::min(range.width(), maxAlignedWidth + 1);
        if (total > maxAlignedWidth)
            throw TaskError("The column ranges from " + std::to_string(range.first) + "-" +
                            std::to_string(range.last) + " on are too wide to align calculated " +
                            "results in: together they may span at most " +
                            std::to_string(maxAlignedWidth) + " columns");
    }
}

[[gnu::always_inline]] inline double Calculation::apply(const Step& step, double value) {
    double result = 0;
    switch (step.op) {
    case '+':
        result = value + step.operand;
        break;
    case '-':
        result = value - step.operand;
        break;
    case '*':
        result = value * step.operand;
        break;
    case '/':
        if (step.operand == 0)
            failStep(step, "divides by zero");
        result = value / step.operand;
        break;
    default:
        result = powerOrRemainder(step, value);
        break;
    }
    if (!std::isfinite(result))
        failStep(step, value, result);
    return result;
}

double Calculation::powerOrRemainder(const Step& step, double value) {
    if (step.op == '^')
        return std::pow(value, step.operand);
    // Both sides are first made whole numbers, half to even, and the remainder takes the sign
    // of the value.
    const double divisor = std::nearbyint(step.operand);
    if (divisor == 0)
        failStep(step, "divides by zero (its operand rounds to 0)");
    return std::fmod(std::nearbyint(value), divisor);
}

void Calculation::failStep(const Step& step, std::string_view what) {
    throw TaskError("The calculation step \"" + step.text + "\" " + std::string(what));
}

void Calculation::failStep(const Step& step, double value, double result) {
    if (std::isinf(result))
        failStep(step, "overflows: the result is too large for a number");
    std::string number;
    appendShortestNumber(value, number);
    failStep(step, "has no result for the value " + number);
}

bool Calculation::notesNoNumber(std::string_view line) const {
    // A line left unchanged for want of steps is not a row without a number.
    return noNumberAlert_ && !steps_.empty() && !holdsNumber(line);
}

void Calculation::CalculateLine(std::string_view line, std::string& out) {
    if (notesNoNumber(line))
        noNumberAlert_->note(RunAlerts::Kind::NoNumber);
    out.clear();
    appendResult(line, out);
}

bool Calculation::CalculateLines(std::string_view lines, std::string& out) {
    out.clear();
    // A line without a number is noted where its position is known: line by line.
    bool noted = false;
    forEachLineWithEnd(lines, [&](std::string_view line, std::string_view end) {
        if (noted || (noted = notesNoNumber(line)))
            return;
        appendResult(line, out);
        if (!end.empty()) { // two stores rather than a copy call
            out += '\r';
            out += '\n';
        }
    });
    return !noted;
}

void Calculation::appendResult(std::string_view line, std::string& out) {
    // The current text carries from step to step, so each step reads the number that the
    // previous one wrote as text; shortestNumberValue gives that number without the text.
    // A line without steps to apply comes back unchanged, unrounded.
    if (steps_.empty()) {
        out.append(line);
        return;
    }
    // The decimals of the exact sums and products of the numbers read, while they are known:
    // they let shortestNumberValue find most values as they are.
    int decimals = 0;
    double value = readLeadingNumber(line, decimals);
    const std::size_t last = steps_.size() - 1;
    for (std::size_t i = 0; i < last; ++i) {
        const Step& step = steps_[i];
        value = apply(step, value);
        decimals = decimals < 0 || step.decimals < 0  ? -1
                   : step.op == '*'                   ? decimals + step.decimals
                   : step.op == '+' || step.op == '-' ? std::max(decimals, step.decimals)
                                                      : -1;
        value = shortestNumberValue(value, decimals);
    }
    value = apply(steps_[last], value);
    // Fixed decimals are made from the 15 significant digits of the value, which the value they
    // read back as has too: the last result is written without being rounded first, unless
    // its digits could read back as more than a double holds.
    if (rounding_ == Rounding::Decimals && std::fabs(value) < 1e15) {
        appendFixedNumber(value, decimals_, out);
        return;
    }
    // The value rounded is that of the 15-digit text, as the text is what the steps hand on.
    value = shortestNumberValue(value);
    if (rounding_ == Rounding::WholeHalfEven)
        appendShortestNumber(std::nearbyint(value), out);
    else
        appendFixedNumber(value, decimals_, out);
}

void Calculation::fitToWidth(std::string& result, std::size_t width) const {
    // Blanks make up a short result to the range's width; a longer one is kept whole.
    const std::size_t length = utf8CharCount(result);
    if (length >= width) {
        if (length > width && tooWideAlert_)
            tooWideAlert_->note(RunAlerts::Kind::TooWide);
        return;
    }
    if (alignLeft_)
        result.append(width - length, ' ');
    else
        result.insert(0, width - length, ' ');
}

std::unique_ptr<RangedRoutine> makeCalculation(const TaskPageSettings& settings,
                                               ColumnRanges columns, RunAlerts* alerts) {
    const auto calculation = std::make_shared<Calculation>(settings, columns, alerts);
    auto routine = std::make_unique<RangedRoutine>(
        std::move(columns),
        [calculation](std::string_view line, std::string& out) {
            calculation->CalculateLine(line, out);
        },
        [calculation](std::string& result, std::size_t width) {
            calculation->fitToWidth(result, width);
        });
    routine->setLinesRoutine(
        [calculation](std::string_view lines, std::string& out) {
            return calculation->CalculateLines(lines, out);
        },
        true);
    return routine;
}

} // namespace morlevant
