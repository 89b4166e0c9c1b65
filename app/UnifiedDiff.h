#pragma once

#include <string>
#include <vector>

namespace morlevant {

// The rows `before` became `after`, as a unified diff with three rows of context under the
// headers "--- beforeName" and "+++ afterName"; the empty text when nothing changed. Rows that
// keep their places are compared in place and changed runs are shown whole, which suits what a
// page does to a file (rows changed where they stand, added at the end, left out): the diff is
// always right, though not always the shortest.
std::string unifiedDiff(const std::vector<std::string>& before,
                        const std::vector<std::string>& after, const std::string& beforeName,
                        const std::string& afterName);

} // namespace morlevant
