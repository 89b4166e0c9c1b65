#pragma once

#include "engine/RunContext.h"

#include <cstddef>
#include <string>
#include <vector>

namespace morlevant {

class RunProgress;

// Works the files of a run on `jobs` threads at once, each thread with a page of its own made
// from `codes`, and gives what a run one at a time gives: the same results, the messages and
// the alerts' places in list order, and the first failure in list order. A failure or a stop
// stops every thread at its next block read; the results of files finished before stay, and
// those being written are dropped. Throws that failure, or RunStopped.
void workFilesAtOnce(const RunContext& shared, const TaskCodes& codes,
                     const std::vector<std::string>& files, std::size_t jobs,
                     RunProgress* progress);

} // namespace morlevant
