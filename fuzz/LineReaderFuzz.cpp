// The line reader over any bytes: the lines and their ends account for every byte.
#include "engine/io/LineReader.h"
#include "fuzz/FuzzInput.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morlevant;
    LineReader reader(fuzz::fileWith(data, size));
    std::string_view line;
    std::size_t lineBytes = 0;
    std::size_t lines = 0;
    while (reader.next(line)) {
        lineBytes += line.size();
        ++lines;
        if (line.find_first_of("\r\n") != std::string_view::npos)
            std::abort();
    }
    // Each line but possibly the last ends in one or two bytes.
    if (lineBytes > size || lineBytes + 2 * lines < size || reader.lineNumber() != lines)
        std::abort();
    return 0;
}
