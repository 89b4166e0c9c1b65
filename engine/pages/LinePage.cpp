#include "engine/pages/LinePage.h"

#include "engine/io/LineReader.h"
#include "engine/io/LineWriter.h"
#include "engine/pages/ResultPlaces.h"
#include "engine/ranges/RowRanges.h"
#include "taskdef/TaskError.h"
#include "taskdef/TextLines.h"
#include "taskdef/VisibleName.h"

namespace morlevant {

LinePage::LinePage(const RunContext& context, std::unique_ptr<RangedRoutine> routine)
    : context_(context), routine_(std::move(routine)) {}

void LinePage::checkResults(const std::string& source) const {
    checkResultFile(context_.sources, modifiedPath(source), "the result");
}

void LinePage::process(const std::string& source) {
    LineReader reader(source, context_.stop, context_.bytesRead);
    LineWriter writer(modifiedPath(source), LineWriter::Mode::Truncate);
    const bool manyLines = context_.mode == RangeMode::WholeText && routine_->takesManyLines();
    std::string_view line;
    while (true) {
        // A block's whole lines are worked at once, and the line that goes on into the next
        // block by itself. The routine keeps the line ends, so what holds for the ends read
        // holds for those written.
        if (bool allCrLf = false; manyLines && reader.nextLines(line, allCrLf)) {
            if (applyToLines(line))
                writer.writeLines(out_, allCrLf);
            else
                applyOneByOne(source, reader.lineNumber(), line, writer);
            continue;
        }
        if (!reader.next(line))
            break;
        const double row = static_cast<double>(reader.lineNumber());
        const bool selected = rowSelected(context_.rows, row);
        if (context_.mode == RangeMode::RangesOut && !selected)
            continue;
        if (context_.mode == RangeMode::InPlace && !selected) {
            writer.writeLine(line);
            continue;
        }
        writer.writeLine(apply(source, reader.lineNumber(), line, writer, reader.gatheredLine()));
    }
    writer.close();
}

bool LinePage::applyToLines(std::string_view lines) {
    // A failure is met again line by line, where its message names its line. (It may also not
    // be met there: one search over many lines may exceed a limit that each line keeps within.)
    try {
        return routine_->manyLines(lines, out_);
    } catch (const TaskError&) {
        return false;
    }
}

void LinePage::applyOneByOne(const std::string& source, std::size_t lastLineNumber,
                             std::string_view lines, LineWriter& writer) {
    const std::vector<std::string_view> split = textLines(lines);
    std::size_t lineNumber = lastLineNumber - split.size();
    for (const std::string_view line : split) {
        writer.writeLine(apply(source, ++lineNumber, line, writer));
    }
}

std::string_view LinePage::apply(const std::string& source, std::size_t lineNumber,
                                 std::string_view line, LineWriter& writer,
                                 std::span<char> gathered) {
    if (context_.alerts)
        context_.alerts->at(source, lineNumber);
    try {
        if (context_.mode == RangeMode::WholeText) {
            // A long line is then held once, not beside a result of about its size.
            if (!gathered.empty() && routine_->overwritesLine())
                return {gathered.data(), routine_->wholeLineOver(gathered)};
            if (!gathered.empty() && routine_->spillsLine())
                routine_->wholeLineSpilling(
                    line, out_, [&](std::string_view part) { writer.writeBytes(part); });
            else
                routine_->wholeLine(line, out_);
            return out_;
        }
        columns_.assign(line);
        if (!gathered.empty()) {
            // A long line's result goes out in parts, the line's untouched bytes from where
            // they lie.
            const Spill spill = [&](std::string_view part) { writer.writeBytes(part); };
            if (context_.mode == RangeMode::InPlace)
                routine_->inPlaceSpilling(columns_, gathered, out_, spill);
            else
                routine_->rangesOutSpilling(columns_, out_, spill);
        } else if (context_.mode == RangeMode::InPlace) {
            routine_->inPlace(columns_, out_);
        } else {
            routine_->rangesOut(columns_, out_);
        }
        return out_;
    } catch (const TaskError& error) {
        throw TaskError(visibleName(source) + ", line " + std::to_string(lineNumber) + ": " +
                        error.what());
    }
}

} // namespace morlevant
