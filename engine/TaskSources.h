#pragma once

#include "engine/io/FileIdentity.h"

#include <set>
#include <string>
#include <vector>

namespace morlevant {

// The source files of a run, known by identity so that no result can ever be written over
// one of them, whatever name or link leads to it.
class TaskSources {
public:
    // Throws TaskError naming the first source that is missing or is not a regular file (a
    // folder, a device): such a list stops the run before anything is written.
    explicit TaskSources(const std::vector<std::string>& paths);

    const std::vector<std::string>& paths() const { return paths_; }

    // Throws TaskError when `result` is, or links to, one of the sources; `what` says what the
    // run was about to write there ("the result", "the merge result", "a piece").
    void refuseToOverwrite(const std::string& result, const std::string& what) const;

private:
    std::vector<std::string> paths_;
    std::set<FileIdentity> identities_;
};

} // namespace morlevant
