// The filter over a line: fields are the kind (first byte), the pattern, the replacement and
// the line. A pattern is compiled or refused with a clear error; a match never crashes.
#include "engine/routines/Filter.h"
#include "engine/routines/RangedRoutine.h"
#include "fuzz/FuzzInput.h"
#include "taskdef/TaskError.h"

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
        std::string out;
        makeFilter(settings, ColumnRanges(""), kind)->wholeLine(parts[2], out);
    } catch (const TaskError&) {
    }
    return 0;
}
