#include "mainwindow/find/FileSearch.h"

#include "mainwindow/viewer/RegularFile.h"
#include "taskdef/FilePath.h"

#include <algorithm>
#include <fstream>
#include <functional>
#include <vector>

namespace morlevant {

bool Search(const std::string& path, std::string_view text, std::size_t blockSize) {
    if (whyNotRegularFile(path))
        return false;
    std::ifstream in(toFsPath(path), std::ios::binary);
    if (!in)
        return false;
    if (text.empty())
        return true;
    // A match that starts in one block and ends in the next begins within the block's last
    // text.size() - 1 bytes; those are kept in front of the next block.
    const std::size_t overlap = text.size() - 1;
    blockSize = std::max<std::size_t>(blockSize, 1);
    std::vector<char> buffer(overlap + blockSize);
    const std::boyer_moore_horspool_searcher searcher(text.begin(), text.end());
    std::size_t kept = 0;
    while (in.read(buffer.data() + kept, static_cast<std::streamsize>(blockSize)) ||
           in.gcount() > 0) {
        const auto end = buffer.begin() + static_cast<std::ptrdiff_t>(kept + in.gcount());
        if (std::search(buffer.begin(), end, searcher) != end)
            return true;
        kept = std::min(overlap, static_cast<std::size_t>(end - buffer.begin()));
        std::copy(end - static_cast<std::ptrdiff_t>(kept), end, buffer.begin());
    }
    return false;
}

} // namespace morlevant
