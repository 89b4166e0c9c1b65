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
        std::string_view rest = parts[2];
        std::string lineByLine;
        std::string out;
        // Text after the last end is a line too, as a block's lines are read.
        while (!rest.empty()) {
            const std::size_t end = findCrOrLf(rest);
            routine->wholeLine(rest.substr(0, end), out);
            lineByLine += out;
            if (end == rest.size())
                break;
            const std::size_t endLength = rest.substr(end, 2) == "\r\n" ? 2 : 1;
            lineByLine += rest.substr(end, endLength);
            rest.remove_prefix(end + endLength);
        }
        if (routine->manyLines(parts[2], out) && out != lineByLine)
            std::abort();
    } catch (const TaskError&) {
    }
    return 0;
}
