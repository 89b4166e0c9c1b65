// Calculation steps and decimals applied to a line: fields are the steps, the decimals and the
// line.
#include "engine/routines/Calculation.h"
#include "engine/routines/RangedRoutine.h"
#include "fuzz/FuzzInput.h"
#include "taskdef/TaskError.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morlevant;
    const auto parts = fuzz::fields(data, size, 3);
    TaskPageSettings settings;
    settings.calculateSteps = parts[0];
    settings.decimalNumber = parts[1];
    settings.alignment = "Left";
    try {
        std::string out;
        makeCalculation(settings, ColumnRanges(""), nullptr)->wholeLine(parts[2], out);
    } catch (const TaskError&) {
    }
    return 0;
}
