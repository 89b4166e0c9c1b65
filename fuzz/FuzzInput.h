#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace morlevant::fuzz {

// The fuzzer's bytes cut into fields at each NUL, so one input can carry a pattern, a
// replacement and a line; missing fields are empty.
inline std::vector<std::string> fields(const std::uint8_t* data, std::size_t size,
                                       std::size_t count) {
    std::vector<std::string> parts(count);
    std::size_t field = 0;
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == 0 && field + 1 < count)
            ++field;
        else
            parts[field] += static_cast<char>(data[i]);
    }
    return parts;
}

// A file of this process holding the bytes, for the readers that take a path.
inline std::string fileWith(const std::uint8_t* data, std::size_t size) {
    const std::string path = "/tmp/morlevant-fuzz-" + std::to_string(::getpid());
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (size > 0)
        std::fwrite(data, 1, size, file);
    std::fclose(file);
    return path;
}

} // namespace morlevant::fuzz
