#include "taskdef/TaskPageSettings.h"

#include "taskdef/FilePath.h"
#include "taskdef/TaskError.h"
#include "taskdef/TextLines.h"
#include "taskdef/WholeFile.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace morlevant {

namespace {

using Field = std::string TaskPageSettings::*;

constexpr std::array<Field, TaskPageSettings::lineCount> fieldsInFileOrder = {
    &TaskPageSettings::rangeMode,
    &TaskPageSettings::rowRange,
    &TaskPageSettings::columnRange,
    &TaskPageSettings::takeRangesOut,
    &TaskPageSettings::operationPage,
    &TaskPageSettings::decimalNumber,
    &TaskPageSettings::alignment,
    &TaskPageSettings::nonNumericAlert,
    &TaskPageSettings::crossBorderAlert,
    &TaskPageSettings::calculateSteps,
    &TaskPageSettings::find1,
    &TaskPageSettings::replace1,
    &TaskPageSettings::find2,
    &TaskPageSettings::replace2,
    &TaskPageSettings::find3,
    &TaskPageSettings::replace3,
    &TaskPageSettings::find4,
    &TaskPageSettings::replace4,
    &TaskPageSettings::insertAction,
    &TaskPageSettings::dateTimeFormat,
    &TaskPageSettings::insertString,
    &TaskPageSettings::insertFile,
    &TaskPageSettings::filterReplacement,
    &TaskPageSettings::filterPattern,
    &TaskPageSettings::insertExtra,
    &TaskPageSettings::divideAction,
    &TaskPageSettings::divideByRowValue,
    &TaskPageSettings::divideByColumnValue,
    &TaskPageSettings::divideNameTemplate,
    &TaskPageSettings::divideNumberFrom,
    &TaskPageSettings::divideNumberTo,
};

Field fieldOfLine(int n) {
    if (n < 1 || n > TaskPageSettings::lineCount)
        throw TaskError("task settings have no line " + std::to_string(n));
    return fieldsInFileOrder[static_cast<std::size_t>(n - 1)];
}

} // namespace

const std::string& TaskPageSettings::line(int n) const {
    return this->*fieldOfLine(n);
}

std::string& TaskPageSettings::line(int n) {
    return this->*fieldOfLine(n);
}

void writeTaskPageSettings(const std::string& path, const TaskPageSettings& settings) {
    std::string text;
    for (Field field : fieldsInFileOrder)
        text += settings.*field + "\r\n";
    writeWholeFile(path, text, "the task settings file");
}

TaskPageSettings readTaskPageSettings(const std::string& path) {
    const std::string text =
        readWholeFile(path, "The task settings file", "edit the task and press OK first");
    if (text.empty())
        throw TaskError("The task settings file " + path +
                        " is empty: the task was not confirmed in the editor; edit it again");

    const std::vector<std::string_view> lines = textLines(text);
    if (lines.size() < fieldsInFileOrder.size())
        throw TaskError("The task settings file " + path + " has only " +
                        std::to_string(lines.size()) + " of its " +
                        std::to_string(TaskPageSettings::lineCount) +
                        " lines: edit the task again");
    // Lines after the last field are not read.
    TaskPageSettings settings;
    for (std::size_t i = 0; i < fieldsInFileOrder.size(); ++i)
        settings.*fieldsInFileOrder[i] = lines[i];
    return settings;
}

bool hasCompleteTaskPageSettings(const std::string& path) {
    // Anything but a regular file (a pipe above all) could keep the reader waiting.
    std::error_code error;
    if (!std::filesystem::is_regular_file(toFsPath(path), error))
        return false;
    std::ifstream in(toFsPath(path), std::ios::binary);
    int lines = 0;
    bool atLineStart = true;
    bool afterCr = false;
    for (char c; in.get(c);) {
        if (afterCr) {
            afterCr = false;
            if (c == '\n') // the second half of CR LF
                continue;
        }
        if (atLineStart && ++lines == TaskPageSettings::lineCount)
            return true;
        atLineStart = c == '\r' || c == '\n';
        afterCr = c == '\r';
    }
    return false;
}

} // namespace morlevant
