#pragma once

#include "engine/io/LineWriter.h"
#include "engine/pages/PieceNames.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace morlevant {

class TaskSources;

// A batch of consecutive divide pieces, numbered from 0 as PieceNameByColumn numbers them,
// created empty and open together. A divide into more pieces than one batch holds reads its
// source once per batch, so that neither memory nor the number of open files grows with the
// number of pieces. Pieces that share a name (a template without "*") share one file, which
// then receives their lines in the order they are written, all in one batch.
class PieceFiles {
public:
    static constexpr std::uint64_t batchSize = 32;

    // Opens pieces first .. first + count - 1 of `folder`, emptying them. Throws TaskError when
    // a piece would be written over a source of the task.
    PieceFiles(const TaskSources& sources, const std::string& folder, const PieceNames& names,
               std::uint64_t first, std::uint64_t count);

    std::uint64_t first() const { return first_; }
    std::uint64_t end() const { return first_ + pieceWriter_.size(); }
    void writeLine(std::uint64_t index, std::string_view line);
    void close();

private:
    std::uint64_t first_;
    std::vector<std::unique_ptr<LineWriter>> writers_; // one per distinct name
    std::vector<std::size_t> pieceWriter_;             // index into writers_ for each piece
};

// Calls `pass` with each batch of `pieceCount` pieces in turn; `pass` reads the source and
// writes the lines of the pieces the batch holds.
template <typename Pass>
void forEachPieceBatch(const TaskSources& sources, const std::string& folder,
                       const PieceNames& names, std::uint64_t pieceCount, Pass pass) {
    const std::uint64_t size = names.numbered() ? PieceFiles::batchSize : pieceCount;
    for (std::uint64_t first = 0; first < pieceCount; first += size) {
        PieceFiles batch(sources, folder, names, first, std::min(size, pieceCount - first));
        pass(batch);
        batch.close();
    }
}

} // namespace morlevant
