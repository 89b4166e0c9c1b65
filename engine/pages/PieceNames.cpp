#include "engine/pages/PieceNames.h"

#include "taskdef/PathNames.h"
#include "taskdef/TaskError.h"
#include "taskdef/VisibleName.h"

#include <charconv>
#include <limits>

namespace morlevant {

namespace {

// The whole number of a settings line, at least `least`; `what` names it in the message.
std::uint64_t wholeNumber(const std::string& text, std::string_view what, std::uint64_t least) {
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const std::string named = "The " + std::string(what) + " \"" + visibleName(text) + "\"";
    if (error == std::errc::result_out_of_range && end == text.data() + text.size())
        throw TaskError(named + " is too large; at most " +
                        std::to_string(std::numeric_limits<std::uint64_t>::max()));
    if (text.empty() || error != std::errc() || end != text.data() + text.size() || value < least)
        throw TaskError(named + " is not a whole number" +
                        (least > 0 ? " of at least " + std::to_string(least) : ""));
    return value;
}

} // namespace

PieceNames::PieceNames(const TaskPageSettings& settings)
    : nameTemplate_(settings.divideNameTemplate), width_(settings.divideNumberFrom.size()) {
    if (nameTemplate_.empty())
        throw TaskError("The divide file-name template is blank: give the pieces a name such as "
                        "\"divided file(*).txt\"");
    // Pieces belong in the divide folder; a template naming another folder would scatter them.
    if (nameTemplate_.find_first_of(fileNameBreakers) != std::string::npos ||
        nameTemplate_ == "." || nameTemplate_ == "..")
        throw TaskError("The divide file-name template \"" + visibleName(nameTemplate_) +
                        "\" is not a file name: it may not name a folder");
    first_ = wholeNumber(settings.divideNumberFrom, "first piece number", 0);
}

std::string PieceNames::PieceNameByRow(std::uint64_t row, std::uint64_t rowsPerPiece) const {
    return nameFor((row - 1) / rowsPerPiece + first_);
}

std::string PieceNames::PieceNameByColumn(std::uint64_t index) const {
    return nameFor(index + first_);
}

std::string PieceNames::nameFor(std::uint64_t number) const {
    std::string digits = std::to_string(number);
    if (digits.size() > width_)
        throw TaskError("The piece number " + digits + " is wider than the " +
                        std::to_string(width_) + " digits of the first piece number; start from " +
                        "a number with more digits, such as \"" + std::string(width_ + 1, '0') +
                        "1\"");
    digits.insert(0, width_ - digits.size(), '0');

    std::string name;
    name.reserve(nameTemplate_.size() + digits.size());
    for (char c : nameTemplate_) {
        if (c == '*')
            name += digits;
        else
            name += c;
    }
    return name;
}

std::uint64_t pieceSize(const std::string& text, std::string_view what) {
    return wholeNumber(text, what, 1);
}

} // namespace morlevant
