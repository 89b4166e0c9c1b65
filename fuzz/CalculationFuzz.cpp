// Calculation steps and decimals applied to lines one by one and as a block: fields are the
// steps, the decimals and the lines.
#include "engine/routines/Calculation.h"
#include "engine/routines/RangedRoutine.h"
#include "engine/text/LineEnds.h"
#include "fuzz/FuzzInput.h"
#include "taskdef/TaskError.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morlevant;
    const auto parts = fuzz::fields(data, size, 3);
    TaskPageSettings settings;
    settings.calculateSteps = parts[0];
    settings.decimalNumber = parts[1];
    settings.alignment = "Left";
    try {
        // The lines of the third field one by one, their ends kept, and as one block, which
        // must give the same.
        const auto routine = makeCalculation(settings, ColumnRanges(""), nullptr);
        std::string lineByLine;
        std::string out;
        forEachLineWithEnd(parts[2], [&](std::string_view line, std::string_view end) {
            routine->wholeLine(line, out);
            lineByLine += out;
            lineByLine += end.empty() ? "" : "\r\n";
        });
        if (routine->manyLines(parts[2], out) && out != lineByLine)
            std::abort();
    } catch (const TaskError&) {
    }
    return 0;
}
