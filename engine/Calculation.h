#pragma once

#include "engine/RangedLineOperation.h"
#include "taskdef/TaskPageSettings.h"

#include <string>
#include <vector>

namespace morlevant {

// The Calculate page: the steps of line 10 applied to the number of a line or of a column
// range, the result rounded by line 6 and, in columns, aligned by line 7.
class Calculation final : public RangedLineOperation {
public:
    // Throws TaskError for a number of decimals or a column range that cannot be honoured.
    explicit Calculation(const TaskPageSettings& settings);

    void wholeLine(std::string_view line, std::string& out) override { CalculateLine(line, out); }
    void inRanges(const LineColumns& line, std::string& out) override {
        CalculateInRanges(line, out);
    }
    void rangesOut(const LineColumns& line, std::string& out) override {
        CalculateRangesOut(line, out);
    }

    // Throws TaskError naming the step when it divides by zero or overflows.
    void CalculateLine(std::string_view line, std::string& out);
    void CalculateInRanges(const LineColumns& line, std::string& out) { workInPlace(line, out); }
    void CalculateRangesOut(const LineColumns& line, std::string& out) { takeOut(line, out); }

protected:
    void applyTo(std::string_view text, std::string& out) override { CalculateLine(text, out); }
    void fitToWidth(std::string& result, std::size_t width) const override;

private:
    struct Step {
        std::string text; // as written, for messages
        char op = 0;
        double operand = 0;
    };

    double apply(const Step& step, double value) const;

    std::vector<Step> steps_;
    // Whole numbers rounded half to even (line 6 "0") or n decimals rounded half away from zero.
    enum class Rounding { WholeHalfEven, Decimals } rounding_ = Rounding::Decimals;
    int decimals_ = 0;
    bool alignLeft_ = true;
};

} // namespace morlevant
