// Range texts as the editor tidies and checks them, and as the runner parses them.
#include "taskdef/RangePairs.h"
#include "taskdef/RangeText.h"
#include "taskdef/TaskError.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morlevant;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const RangeCheck check = checkRangeText(text, RangeBox::Row);
    // Tidying only removes or replaces characters.
    if (check.text.size() > text.size())
        std::abort();
    try {
        const RangePairs pairs = RangePairs::parse(check.text, "row ranges");
        pairs.contains(3);
    } catch (const TaskError&) {
    }
    return 0;
}
