#pragma once

#include "engine/io/FileIdentity.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace morlevant {

// Which file of a run a free worker takes next, when several are worked at once: the first in
// list order that no earlier file holds back. A file waits for the latest earlier file with the
// same result place, whose results it writes over as a run one at a time would, and for the
// latest earlier one that is the same file under another name. Not thread-safe: the workers
// share it under their lock.
class FileSchedule {
public:
    FileSchedule(const std::vector<std::string>& places,
                 const std::vector<std::optional<FileIdentity>>& identities);

    // The next file to work, or nothing when none is free now (every file left waits for one
    // at work) or none is left.
    std::optional<std::size_t> take();
    void finish(std::size_t file);
    bool allTaken() const { return firstWaiting_ == state_.size(); }

private:
    enum class State : char { Waiting, Taken, Finished };
    bool free(std::size_t file) const;

    std::vector<std::vector<std::size_t>> after_; // the earlier files each one waits for
    std::vector<State> state_;
    std::size_t firstWaiting_ = 0;
};

} // namespace morlevant
