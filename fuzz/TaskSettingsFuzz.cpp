// The ".ttp" reader over any bytes: a record or a clear error, never anything else.
#include "fuzz/FuzzInput.h"
#include "taskdef/TaskError.h"
#include "taskdef/TaskPageSettings.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morlevant;
    try {
        readTaskPageSettings(fuzz::fileWith(data, size));
    } catch (const TaskError&) {
    }
    return 0;
}
