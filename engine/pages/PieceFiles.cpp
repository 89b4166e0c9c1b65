#include "engine/pages/PieceFiles.h"

#include "engine/TaskSources.h"

#include <algorithm>

namespace morlevant {

PieceFiles::PieceFiles(const TaskSources& sources, const std::string& folder,
                       const PieceNames& names, std::uint64_t first, std::uint64_t count)
    : first_(first) {
    pieceWriter_.reserve(count);
    for (std::uint64_t index = first; index < first + count; ++index) {
        const std::string path = folder + names.PieceNameByColumn(index);
        const auto same = std::find_if(writers_.begin(), writers_.end(),
                                       [&](const auto& writer) { return writer->path() == path; });
        if (same == writers_.end()) {
            sources.refuseToOverwrite(path, "a piece");
            writers_.push_back(std::make_unique<LineWriter>(path, LineWriter::Mode::Truncate));
            pieceWriter_.push_back(writers_.size() - 1);
        } else {
            pieceWriter_.push_back(static_cast<std::size_t>(same - writers_.begin()));
        }
    }
}

void PieceFiles::writeLine(std::uint64_t index, std::string_view line) {
    writers_[pieceWriter_[index - first_]]->writeLine(line);
}

void PieceFiles::close() {
    for (const std::unique_ptr<LineWriter>& writer : writers_)
        writer->close();
}

} // namespace morlevant
