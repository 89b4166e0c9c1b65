#include "engine/pages/LinePage.h"

#include "engine/io/LineReader.h"
#include "engine/io/LineWriter.h"
#include "engine/pages/LineBatches.h"
#include "engine/pages/ResultPlaces.h"
#include "engine/ranges/RowRanges.h"
#include "engine/text/LineEnds.h"
#include "taskdef/TaskError.h"
#include "taskdef/VisibleName.h"

namespace morlevant {

namespace {

// A routine's failure on one line, its message naming the file and the line.
TaskError atLine(const std::string& source, std::size_t lineNumber, const TaskError& error) {
    return TaskError(visibleName(source) + ", line " + std::to_string(lineNumber) + ": " +
                     error.what());
}

// Writes lines that end in CR LF, LF or a lone CR over `out`, with every end made CR LF. A
// string reused for results of a like size is grown, and zeroed, only where this one is longer.
void assignWithCrLfEnds(std::string& out, std::string_view lines) {
    const std::size_t room = lines.size() + countLineEnds(lines).lines + crLfCopySpare;
    if (out.size() < room)
        out.resize(room);
    out.resize(static_cast<std::size_t>(copyWithCrLfEnds(lines, out.data()) - out.data()));
}

} // namespace

LinePage::LinePage(const RunContext& context, RoutineMaker makeRoutine)
    : context_(context), makeRoutine_(std::move(makeRoutine)) {
    work_.routine = makeRoutine_(context_.alerts);
    work_.alerts = context_.alerts;
}

void LinePage::checkResults(const std::string& source) const {
    checkResultFile(context_.sources, modifiedPath(source), "the result");
}

bool LinePage::takesManyLines() const {
    if (context_.mode == RangeMode::WholeText)
        return work_.routine->takesManyLines();
    // Blank row ranges select every row: every line of a block goes through the ranges.
    return context_.mode == RangeMode::InPlace && context_.rows.empty() &&
           work_.routine->takesManyLinesInPlace();
}

void LinePage::process(const std::string& source) {
    LineReader reader(source, context_.stop, context_.bytesRead);
    LineWriter writer(modifiedPath(source), LineWriter::Mode::Truncate,
                      LineWriter::writesWith(context_.lineJobs));
    if (worthBatching(reader, context_.lineJobs))
        processInBatches(source, reader, writer);
    else
        processInOrder(source, reader, writer);
    writer.close();
}

void LinePage::processInOrder(const std::string& source, LineReader& reader, LineWriter& writer) {
    const bool manyLines = takesManyLines();
    const auto write = [&](std::string_view result) { writer.writeLine(result); };
    std::string_view line;
    while (true) {
        // A block's whole lines are worked at once, and the line that goes on into the next
        // block by itself. The routine keeps the line ends, so what holds for the ends read
        // holds for those written.
        if (bool allCrLf = false; manyLines && reader.nextLines(line, allCrLf)) {
            if (applyToLines(work_, line)) {
                writer.writeLines(work_.out, allCrLf || work_.routine->linesEndInCrLf());
                continue;
            }
            std::size_t lineNumber = reader.lineNumber() - countLineEnds(line).lines;
            forEachLine(line, [&](std::string_view one) {
                workLine(work_, source, ++lineNumber, one, write);
            });
            continue;
        }
        if (!reader.next(line))
            break;
        workLine(work_, source, reader.lineNumber(), line, write, &writer, reader.gatheredLine());
    }
}

void LinePage::processInBatches(const std::string& source, LineReader& reader, LineWriter& writer) {
    while (lanes_.size() < context_.lineJobs) {
        RunAlerts* alerts = nullptr;
        if (context_.alerts)
            alerts = &laneAlerts_.emplace_back(context_.alerts->watches(RunAlerts::Kind::NoNumber),
                                               context_.alerts->watches(RunAlerts::Kind::TooWide));
        LineWork& work = lanes_.emplace_back();
        work.routine = makeRoutine_(alerts);
        work.alerts = alerts;
    }
    LineBatches batches(
        lanes_.size(),
        [&](std::size_t lane, LineBatch& batch) { workBatch(lanes_[lane], source, batch); },
        [&](LineBatch& batch) {
            writer.writeBytes(batch.result);
            if (context_.alerts)
                context_.alerts->take(batch.alerts);
        });
    batches.workAll(reader, [&](std::string_view line) {
        workLine(
            work_, source, reader.lineNumber(), line,
            [&](std::string_view result) { writer.writeLine(result); }, &writer,
            reader.gatheredLine());
    });
}

void LinePage::workBatch(LineWork& work, const std::string& source, LineBatch& batch) {
    if (takesManyLines() && applyToLines(work, batch.lines)) {
        if (batch.allCrLf || work.routine->linesEndInCrLf())
            std::swap(batch.result, work.out);
        else
            assignWithCrLfEnds(batch.result, work.out);
    } else {
        batch.result.clear();
        std::size_t lineNumber = batch.firstLine;
        forEachLine(batch.lines, [&](std::string_view line) {
            workBatchLine(work, source, lineNumber++, line, batch);
        });
    }
    if (work.alerts)
        batch.alerts.take(*work.alerts);
}

void LinePage::workBatchLine(LineWork& work, const std::string& source, std::size_t lineNumber,
                             std::string_view line, LineBatch& batch) {
    const RangeMode mode = context_.mode;
    if (mode == RangeMode::WholeText) {
        batch.appendResultLine(apply(work, mode, source, lineNumber, line, nullptr, {}));
        return;
    }
    if (!rowSelected(context_.rows, static_cast<double>(lineNumber))) {
        if (mode == RangeMode::InPlace)
            batch.appendResultLine(line);
        return;
    }
    if (work.alerts)
        work.alerts->at(source, lineNumber);
    work.routine->assignColumns(work.columns, line);
    try {
        applyToRanges(*work.routine, mode, work.columns, batch.result);
    } catch (const TaskError& error) {
        throw atLine(source, lineNumber, error);
    }
    batch.endResultLine();
}

template <typename Emit>
void LinePage::workLine(LineWork& work, const std::string& source, std::size_t lineNumber,
                        std::string_view line, const Emit& emit, LineWriter* writer,
                        std::span<char> gathered) {
    const bool selected = rowSelected(context_.rows, static_cast<double>(lineNumber));
    if (context_.mode == RangeMode::RangesOut && !selected)
        return;
    if (context_.mode == RangeMode::InPlace && !selected)
        emit(line);
    else
        emit(apply(work, context_.mode, source, lineNumber, line, writer, gathered));
}

bool LinePage::applyToLines(LineWork& work, std::string_view lines) const {
    // A failure is met again line by line, where its message names its line. (It may also not
    // be met there: one search over many lines may exceed a limit that each line keeps within.)
    try {
        if (context_.mode == RangeMode::InPlace)
            return work.routine->manyLinesInPlace(lines, work.out);
        return work.routine->manyLines(lines, work.out);
    } catch (const TaskError&) {
        return false;
    }
}

std::string_view LinePage::apply(LineWork& work, RangeMode mode, const std::string& source,
                                 std::size_t lineNumber, std::string_view line, LineWriter* writer,
                                 std::span<char> gathered) {
    if (work.alerts)
        work.alerts->at(source, lineNumber);
    RangedRoutine& routine = *work.routine;
    try {
        if (mode == RangeMode::WholeText) {
            // A long line is then held once, not beside a result of about its size.
            if (!gathered.empty() && routine.overwritesLine())
                return {gathered.data(), routine.wholeLineOver(gathered)};
            if (!gathered.empty() && routine.spillsLine())
                routine.wholeLineSpilling(line, work.out,
                                          [&](std::string_view part) { writer->writeBytes(part); });
            else
                routine.wholeLine(line, work.out);
            return work.out;
        }
        work.routine->assignColumns(work.columns, line);
        if (!gathered.empty()) {
            // A long line's result goes out in parts, the line's untouched bytes from where
            // they lie.
            const Spill spill = [&](std::string_view part) { writer->writeBytes(part); };
            if (mode == RangeMode::InPlace)
                routine.inPlaceSpilling(work.columns, gathered, work.out, spill);
            else
                routine.rangesOutSpilling(work.columns, work.out, spill);
        } else {
            work.out.clear();
            applyToRanges(routine, mode, work.columns, work.out);
        }
        return work.out;
    } catch (const TaskError& error) {
        throw atLine(source, lineNumber, error);
    }
}

void LinePage::applyToRanges(RangedRoutine& routine, RangeMode mode, const LineColumns& line,
                             std::string& out) {
    if (mode == RangeMode::InPlace)
        routine.inPlace(line, out);
    else
        routine.rangesOut(line, out);
}

} // namespace morlevant
