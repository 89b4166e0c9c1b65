// The backtracking matcher over a line: fields are the pattern and the line. It never crashes
// or runs away, and where PCRE2 matches the pattern too, the two find the same matches with
// the same groups.
#include "engine/regex/EcmaRegex.h"
#include "fuzz/FuzzInput.h"
#include "taskdef/TaskError.h"

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

namespace {

using morlevant::EcmaRegex;

// Every match of a global search: where it starts and the text of each group, as the filter
// uses them (a group without a value gives the empty text, as one that matched it does);
// nothing when the search stops with an error.
std::optional<std::vector<std::string>>
allMatches(EcmaRegex::Matcher matcher, const std::string& pattern, const std::string& line) {
    std::vector<std::string> found;
    try {
        EcmaRegex regex(pattern, {std::chrono::milliseconds(200), {}}, matcher);
        regex.setSubject(line);
        std::size_t start = 0;
        while (start <= line.size() && regex.find(start)) {
            found.push_back(std::to_string(regex.matchStart()));
            for (int group = 0; group <= regex.groupCount(); ++group)
                found.emplace_back(regex.group(group));
            const std::size_t end = regex.matchEnd();
            start = end > regex.matchStart()
                        ? end
                        : end + (end < line.size() ? regex.characterLength(end) : 1);
        }
    } catch (const morlevant::TaskError&) {
        return std::nullopt;
    }
    return found;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace morlevant;
    const auto parts = fuzz::fields(data, size, 2);
    const auto backtracked = allMatches(EcmaRegex::Matcher::Backtracking, parts[0], parts[1]);
    if (!backtracked)
        return 0;
    const auto fastest = allMatches(EcmaRegex::Matcher::Fastest, parts[0], parts[1]);
    if (fastest && *fastest != *backtracked) {
        std::fprintf(stderr, "The matchers differ on /%s/\n", parts[0].c_str());
        std::abort();
    }
    return 0;
}
