#include "engine/pages/InsertPage.h"

#include "engine/io/LineReader.h"
#include "engine/io/LineWriter.h"
#include "engine/io/ResultFile.h"
#include "engine/pages/ResultPlaces.h"
#include "engine/ranges/InsertInRanges.h"
#include "engine/ranges/RowRanges.h"
#include "engine/ranges/TakeRangesOut.h"
#include "taskdef/FilePath.h"
#include "taskdef/TaskError.h"
#include "taskdef/VisibleName.h"

#include <filesystem>
#include <limits>
#include <system_error>

namespace morlevant {

InsertPage::InsertPage(const RunContext& context, InsertFilterAction action)
    : context_(context), fromFile_(action == InsertFilterAction::InsertTextFile),
      insertionColumns_(insertionColumns(context.columns)) {
    if (action == InsertFilterAction::InsertDateTime)
        text_ = context.settings.dateTimeFormat;
    else if (action == InsertFilterAction::InsertString)
        text_ = context.settings.insertString;
    if (fromFile_ && context.settings.insertFile.empty())
        throw TaskError("The task names no text file to insert: edit the task and choose one");
}

void InsertPage::checkResults(const std::string& source) const {
    checkResultFile(context_.sources, modifiedPath(source), "the result");
}

void InsertPage::process(const std::string& source) {
    LineReader reader(source, context_.stop, context_.bytesRead);
    const std::string result = modifiedPath(source);
    LineWriter writer(result, LineWriter::Mode::Truncate,
                      LineWriter::writesWith(context_.lineJobs));
    if (fromFile_) {
        checkInsertFileIsNot(result);
        // Read once per source file rather than once per row: the text is the same unless the
        // file changes while the run lasts.
        if (context_.mode == RangeMode::InPlace)
            text_ = joinedInsertFile();
    }

    // Whole text every line is copied unchanged, in stretches, and a long line never gathered.
    if (context_.mode == RangeMode::WholeText)
        reader.copyLines(std::numeric_limits<std::size_t>::max(), writer);
    std::string_view line;
    while (reader.next(line)) {
        const double row = static_cast<double>(reader.lineNumber());
        switch (context_.mode) {
        case RangeMode::WholeText:
            writer.writeLine(line);
            break;
        case RangeMode::InPlace:
            if (RowIsInsertPoint(context_.rows, row))
                writer.writeLine(text_);
            if (!rowSelected(context_.rows, row)) {
                writer.writeLine(line);
                break;
            }
            columns_.assign(line);
            InsertInRanges(insertionColumns_, columns_, text_, out_);
            writer.writeLine(out_);
            break;
        case RangeMode::RangesOut:
            if (!rowSelected(context_.rows, row))
                break;
            columns_.assign(line);
            TakeRangesOut(context_.columnRanges, columns_, out_);
            writer.writeLine(out_);
            break;
        }
    }
    if (context_.mode != RangeMode::InPlace)
        appendInsertion(writer);
    writer.close();
}

void InsertPage::appendInsertion(LineWriter& writer) const {
    if (!fromFile_) {
        writer.writeLine(text_);
        return;
    }
    LineReader insert(context_.settings.insertFile, context_.stop);
    std::string_view line;
    while (insert.next(line))
        writer.writeLine(line);
}

// The joined lines are held in memory for the whole file and written at every insertion
// point, so they are bounded far above any text a user inserts by hand.
std::string InsertPage::joinedInsertFile() const {
    constexpr std::size_t mostBytes = std::size_t{64} << 20;
    LineReader insert(context_.settings.insertFile, context_.stop);
    std::string joined;
    std::string_view line;
    while (insert.size() > mostBytes || insert.next(line)) {
        if (insert.size() > mostBytes || line.size() > mostBytes - joined.size())
            throw TaskError("The file to insert " + visibleName(context_.settings.insertFile) +
                            " is too large; at most " + std::to_string(mostBytes >> 20) +
                            " MB of its text can be inserted at the row ranges");
        joined.append(line);
    }
    return joined;
}

// Inserting F.modify into itself would read what is being written and never end; its older
// version, which the new one replaces, is no text to insert either.
void InsertPage::checkInsertFileIsNot(const std::string& result) const {
    const std::filesystem::path insert = toFsPath(context_.settings.insertFile);
    for (const std::string& written : {result, ResultFile::temporaryPath(result)}) {
        const std::filesystem::path path = toFsPath(written);
        std::error_code same, first, second; // a path that cannot be followed is another file
        const std::filesystem::path insertFound = std::filesystem::weakly_canonical(insert, first);
        const std::filesystem::path pathFound = std::filesystem::weakly_canonical(path, second);
        if (std::filesystem::equivalent(insert, path, same) ||
            (!first && !second && insertFound == pathFound))
            throw TaskError("The file to insert " + visibleName(context_.settings.insertFile) +
                            " is the result being written; choose another file to insert");
    }
}

} // namespace morlevant
