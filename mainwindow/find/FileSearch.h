#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace morlevant {

// Whether the file at path holds text, compared byte for byte with case significant (text is
// given in the files' encoding, UTF-8). Only a regular file can match: a missing one, a folder,
// a pipe or a device does not, and nothing is reported. The file is read in blocks of
// blockSize bytes, each searched together with the last bytes of the block before, so memory
// stays bounded however large the file is and a match across two blocks is still found.
bool Search(const std::string& path, std::string_view text, std::size_t blockSize = 1 << 20);

} // namespace morlevant
