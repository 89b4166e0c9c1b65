#pragma once

#include <cstddef>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace morlevant {

// The messages of a run whose files are worked at once, shown in list order as a run one at a
// time shows them: those of the first unfinished file go out at once, while it is worked;
// those of a later file wait until every file before it has finished. Messages of files after
// one that did not finish (the run failed or was stopped there) are never shown.
class OrderedMessages {
public:
    OrderedMessages(std::size_t files, std::function<void(const std::string&)> show);

    void message(std::size_t file, const std::string& text);
    // `file` has ended, its results whole or not.
    void finished(std::size_t file, bool whole);

private:
    std::function<void(const std::string&)> show_;
    std::mutex mutex_;
    std::vector<std::vector<std::string>> waiting_;
    std::vector<char> whole_;
    std::size_t first_ = 0; // the first file that has not finished whole
};

} // namespace morlevant
