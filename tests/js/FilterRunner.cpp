// Runs the filter routine on cases read from standard input, one per line: the pattern, the
// replace-with text and the line, each in hexadecimal UTF-8, separated by tabs. For each case
// it writes one line: "ok" and the results of kinds 1, 2 and 3, or "invalid" or "unsupported"
// and the message, every text in hexadecimal. differential.js feeds it and compares.
#include "engine/routines/Filter.h"
#include "engine/routines/RangedRoutine.h"
#include "taskdef/TaskError.h"

#include <iostream>
#include <sstream>
#include <string>
#include <vector>

using namespace morlevant;

namespace {

std::string fromHex(const std::string& hex) {
    std::string out;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
        out += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
    return out;
}

std::string toHex(const std::string& text) {
    static constexpr char digits[] = "0123456789abcdef";
    std::string out;
    for (const unsigned char c : text) {
        out += digits[c >> 4];
        out += digits[c & 15];
    }
    return out;
}

std::string runCase(const std::string& pattern, const std::string& replaceWith,
                    const std::string& line) {
    TaskPageSettings settings;
    settings.filterPattern = pattern;
    settings.filterReplacement = replaceWith;
    std::string reply = "ok";
    try {
        for (int kind = 1; kind <= 3; ++kind) {
            std::string out;
            makeFilter(settings, ColumnRanges(""), kind)->wholeLine(line, out);
            reply += '\t' + toHex(out);
        }
    } catch (const TaskError& error) {
        const std::string message = error.what();
        const bool unsupported =
            message.find("cannot be matched as JavaScript") != std::string::npos;
        return (unsupported ? "unsupported\t" : "invalid\t") + toHex(message);
    }
    return reply;
}

} // namespace

int main() {
    std::string record;
    while (std::getline(std::cin, record)) {
        std::vector<std::string> fields;
        std::istringstream split(record);
        for (std::string field; std::getline(split, field, '\t');)
            fields.push_back(field);
        fields.resize(3);
        std::cout << runCase(fromHex(fields[0]), fromHex(fields[1]), fromHex(fields[2])) << '\n';
    }
    return 0;
}
