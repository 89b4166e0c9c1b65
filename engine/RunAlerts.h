#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace morlevant {

// What the two alerts of the Calculate page (lines 8 and 9, "Yes") count over a run: rows
// whose text held no number, which count as 0, and results longer than their column range,
// which are kept whole and run past it. Each keeps the first few places as file and row.
class RunAlerts {
public:
    enum class Kind { NoNumber, TooWide };
    static constexpr std::size_t placesShown = 5;

    RunAlerts(bool noNumber, bool tooWide) : watched_{noNumber, tooWide} {}

    bool watches(Kind kind) const { return watched_[index(kind)]; }
    // The row being worked; `file` outlives it.
    void at(const std::string& file, std::uint64_t row) {
        file_ = &file;
        row_ = row;
    }
    void note(Kind kind);
    // Counts what `later` noted after what this one did: the files worked at once are added up
    // in list order. Leaves `later` counting from nothing.
    void take(RunAlerts& later);
    // One line for the end of the run, or the empty text when nothing was noted.
    std::string report() const;

private:
    static std::size_t index(Kind kind) { return kind == Kind::NoNumber ? 0 : 1; }

    struct Count {
        std::uint64_t count = 0;
        std::vector<std::pair<std::string, std::uint64_t>> places;
    };
    bool watched_[2];
    Count counts_[2];
    const std::string* file_ = nullptr;
    std::uint64_t row_ = 0;
};

} // namespace morlevant
