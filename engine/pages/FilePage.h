#pragma once

#include "engine/RunContext.h"

#include <memory>
#include <string>

namespace morlevant {

// The work that the task's page does to one source file, prepared once per run.
class FilePage {
public:
    virtual ~FilePage() = default;
    // What can be checked before the run writes anything: throws TaskError when a result of
    // `source` would be written over a source of the task or where a folder or file is in
    // the way.
    virtual void checkResults(const std::string& source) const = 0;
    virtual void process(const std::string& source) = 0;
    // Where the results of `source` go (its result file or its divide folder): two sources of
    // one place are worked one after the other, in list order, as a run one at a time would.
    virtual std::string resultPlace(const std::string& source) const = 0;
    // Whether several files can be worked at once, each by a page of its own: not when one
    // result gathers every file in list order.
    virtual bool worksFilesApart() const { return true; }
    // After the last file: a result that gathers every file is given its final name.
    virtual void finish() {}
};

// The page that the codes of lines 5, 19 and 26 select for the range mode of the context, or
// nullptr when they select nothing for that mode (the files are then left untouched). Throws
// TaskError for settings the page cannot work with, before any file is written.
std::unique_ptr<FilePage> makeFilePage(const RunContext& context, const TaskCodes& codes);

} // namespace morlevant
