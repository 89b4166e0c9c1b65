#include "engine/LinePage.h"

#include "engine/LineReader.h"
#include "engine/LineWriter.h"
#include "engine/ResultPlaces.h"
#include "engine/RowRanges.h"
#include "taskdef/TaskError.h"

namespace morlevant {

LinePage::LinePage(const RunContext& context, std::unique_ptr<RangedRoutine> routine)
    : context_(context), routine_(std::move(routine)) {}

void LinePage::checkResults(const std::string& source) const {
    checkResultFile(context_.sources, modifiedPath(source), "the result");
}

void LinePage::process(const std::string& source) {
    LineReader reader(source);
    LineWriter writer(modifiedPath(source), LineWriter::Mode::Truncate);
    std::string_view line;
    while (reader.next(line)) {
        const double row = static_cast<double>(reader.lineNumber());
        const bool selected = rowSelected(context_.rows, row);
        if (context_.mode == RangeMode::RangesOut && !selected)
            continue;
        if (context_.mode == RangeMode::InPlace && !selected) {
            writer.writeLine(line);
            continue;
        }
        apply(source, reader.lineNumber(), line);
        writer.writeLine(out_);
    }
    writer.close();
}

void LinePage::apply(const std::string& source, std::size_t lineNumber, std::string_view line) {
    try {
        if (context_.mode == RangeMode::WholeText) {
            routine_->wholeLine(line, out_);
            return;
        }
        columns_.assign(line);
        if (context_.mode == RangeMode::InPlace)
            routine_->inPlace(columns_, out_);
        else
            routine_->rangesOut(columns_, out_);
    } catch (const TaskError& error) {
        throw TaskError(source + ", line " + std::to_string(lineNumber) + ": " + error.what());
    }
}

} // namespace morlevant
