#pragma once

#include <string>
#include <string_view>

namespace morlevant {

// The 31 lines of a task's ".ttp" file, one field per line, in file order.
struct TaskPageSettings {
    static constexpr int lineCount = 31;

    std::string rangeMode;           // 1: "1" whole text, "2" by ranges
    std::string rowRange;            // 2
    std::string columnRange;         // 3
    std::string takeRangesOut;       // 4: "0" in place, "1" ranges taken out
    std::string operationPage;       // 5: "3" Calculate .. "6" Divide Or Merge
    std::string decimalNumber;       // 6
    std::string alignment;           // 7: "Left" or "Right"
    std::string nonNumericAlert;     // 8
    std::string crossBorderAlert;    // 9
    std::string calculateSteps;      // 10
    std::string find1;               // 11
    std::string replace1;            // 12
    std::string find2;               // 13
    std::string replace2;            // 14
    std::string find3;               // 15
    std::string replace3;            // 16
    std::string find4;               // 17
    std::string replace4;            // 18
    std::string insertAction;        // 19: "1".."3" insert, "4".."6" filter kinds 1..3
    std::string dateTimeFormat;      // 20
    std::string insertString;        // 21
    std::string insertFile;          // 22
    std::string filterReplacement;   // 23
    std::string filterPattern;       // 24
    std::string insertExtra;         // 25
    std::string divideAction;        // 26: "1".."4" divide, "5" merge
    std::string divideByRowValue;    // 27
    std::string divideByColumnValue; // 28
    std::string divideNameTemplate;  // 29
    std::string divideNumberFrom;    // 30
    std::string divideNumberTo;      // 31

    // Line n of the file, counted from 1 as the task file counts them.
    const std::string& line(int n) const;
    std::string& line(int n);

    bool operator==(const TaskPageSettings&) const = default;
};

// Writes the 31 values, each ended by CR LF, unquoted and unescaped: a value holding a line
// break shifts every later field down, which is the file's own format.
void writeTaskPageSettings(const std::string& path, const TaskPageSettings& settings);

// Reads the first 31 lines; lines may end in CR LF, LF or CR. Throws TaskError when the file
// is missing, empty (the editor was opened but not confirmed) or shorter than 31 lines.
TaskPageSettings readTaskPageSettings(const std::string& path);

// Whether readTaskPageSettings would find the 31 lines in the file at path, read no further
// than the start of line 31. False for a missing, empty, short or not regular file; throws
// nothing, so that asking costs no more than the answer.
bool hasCompleteTaskPageSettings(const std::string& path);

} // namespace morlevant
