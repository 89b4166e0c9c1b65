// The filter over a line: fields are the kind (first byte), the pattern, the replacement and
// the line. A pattern is compiled or refused with a clear error; a match never crashes; and where
// the filter takes many lines at once, the text read as lines gives what its lines give one by
// one.
#include "engine/routines/Filter.h"
#include "engine/routines/RangedRoutine.h"
#include "engine/text/LineEnds.h"
#include "fuzz/FuzzInput.h"
#include "taskdef/TaskError.h"

#include <chrono>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morlevant;
    if (size == 0)
        return 0;
    const int kind = data[0] % 3 + 1;
    const auto parts = fuzz::fields(data + 1, size - 1, 3);
    TaskPageSettings settings;
    settings.filterPattern = parts[0];
    settings.filterReplacement = parts[1];
    try {
        const auto routine = makeFilter(settings, ColumnRanges(""), kind);
        std::string out;
        const auto started = std::chrono::steady_clock::now();
        routine->wholeLine(parts[2], out);
        // A pattern that backtracks for long is not run again: its budget is the matcher's.
        if (!routine->takesManyLines() ||
            std::chrono::steady_clock::now() - started > std::chrono::milliseconds(100))
            return 0;
        std::string lineByLine;
        forEachLineWithEnd(parts[2], [&](std::string_view line, std::string_view end) {
            routine->wholeLine(line, out);
            lineByLine += out;
            lineByLine += end;
        });
        if (routine->manyLines(parts[2], out) && out != lineByLine)
            std::abort();
    } catch (const TaskError&) {
    }
    return 0;
}
