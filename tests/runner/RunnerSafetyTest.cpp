// Whatever the names, links and order of a task's list, no source is ever changed and every
// result lands beside its source, in its divide folder, or in the merge folder.
#include "engine/pages/ResultPlaces.h"
#include "tests/support/NonRegularFiles.h"
#include "tests/support/RunnerFixture.h"

#include <gtest/gtest.h>
#include <random>

using namespace morlevant;
using namespace morlevant::testing;

namespace fs = std::filesystem;

namespace {

const Lines replaceAtoB = {{5, "4"}, {11, "a"}, {12, "b"}};
const Lines divideByRow = {{5, "6"}, {26, "1"}, {27, "2"}};
const Lines divideByColumn = {{5, "6"}, {26, "2"}, {28, "3"}};
const Lines mergeAll = {{5, "6"}, {26, "5"}};
const Lines rangesOut = {{1, "2"}, {2, "1-9"}, {3, "1-4"}, {4, "1"}};

using Prepare = std::function<void(RunnerFixture&)>;

// Writes the named files below "files/" before the run.
Prepare writes(const std::vector<std::pair<std::string, std::string>>& files) {
    return [files](RunnerFixture& f) {
        for (const auto& [name, bytes] : files)
            f.writeSource(name, bytes);
    };
}

struct HostileCase {
    const char* name;
    Lines lines;
    std::vector<std::string> list;
    Prepare prepare;
    const char* failure;                   // part of the message, or nullptr when the run succeeds
    std::vector<std::string> written = {}; // below "files/" when the run succeeds
};

const HostileCase hostileCases[] = {
    {"DottedNameDividesIntoAFolderOfItsOwn",
     divideByRow + Lines{{29, ".notes"}},
     {".notes"},
     writes({{".notes", "1\n2\n3\n"}}),
     nullptr,
     {".notes pieces/.notes"}},
    {"OnlyDotsBeforeTheExtension",
     divideByRow,
     {"...txt"},
     writes({{"...txt", "1\n"}}),
     nullptr,
     {"...txt pieces/p(001).txt"}},
    {"ResultLinkedToItsSource",
     replaceAtoB,
     {"a.txt"},
     [](RunnerFixture& f) { fs::create_symlink(f.source("a.txt"), f.source("a.txt.modify")); },
     "source file of the task"},
    {"ResultHardLinkedToItsSource",
     replaceAtoB,
     {"a.txt"},
     [](RunnerFixture& f) { fs::create_hard_link(f.source("a.txt"), f.source("a.txt.modify")); },
     "source file of the task"},
    {"ResultOfOneSourceIsAnother",
     replaceAtoB,
     {"b.txt", "a.txt", "a.txt.modify"},
     writes({{"a.txt.modify", "old"}}),
     "a.txt.modify"},
    {"MergeResultListedAfterAnotherSource",
     mergeAll,
     {"a.txt", "../outcome/merge/merge-application-file.txt"},
     writes({{"../outcome/merge/merge-application-file.txt", "kept"}}),
     "merge result"},
    {"PieceWouldReplaceASource",
     divideByRow,
     {"a.txt", "a/p(001).txt"},
     writes({{"a/p(001).txt", "kept"}}),
     "a piece"},
    {"TemporaryOfAResultLinkedToASource",
     replaceAtoB,
     {"a.txt", "b.txt"},
     [](RunnerFixture& f) {
         fs::create_symlink(f.source("b.txt"), f.source("a.txt.modify.unfinished"));
     },
     "source file of the task"},
    {"FolderListedAsASource",
     replaceAtoB,
     {"a.txt", "dir"},
     [](RunnerFixture& f) { fs::create_directories(f.source("dir")); },
     "it is a folder"},
    {"PipeListedAsASource",
     replaceAtoB,
     {"a.txt", "pipe"},
     [](RunnerFixture& f) { ASSERT_TRUE(makeFifo(f.source("pipe"))); },
     "pipe cannot be worked: it is not a regular file"},
    {"MissingSourceStopsBeforeAnyFolderIsMade",
     divideByColumn,
     {"a.txt", "gone.txt"},
     {},
     "gone.txt"},
    {"ColumnsOutLeaveUnrelatedFilesAlone",
     divideByColumn + rangesOut,
     {"a.txt", "noext"},
     writes({{"a.txtmodify", "unrelated"}, {"noext", "abcdef\n"}}),
     nullptr,
     {"a/p(001).txt", "a/p(002).txt", "noext pieces/p(001).txt", "noext pieces/p(002).txt"}},
    {"DivideFolderBlockedByAFile",
     divideByRow,
     {"b.txt", "a.txt"},
     writes({{"a", "a file"}}),
     "in the way"},
};

class HostileLists : public ::testing::TestWithParam<HostileCase> {};

TEST_P(HostileLists, NeverChangeASourceAndWriteOnlyWhereTheyMay) {
    const HostileCase& test = GetParam();
    RunnerFixture fixture;
    fixture.set(test.lines);
    fixture.writeSource("a.txt", "abc\nabcdef\n");
    fixture.writeSource("b.txt", "b\n");
    if (test.prepare)
        test.prepare(fixture);
    const auto before = snapshot(fixture.home.path() / "files");
    const auto mergeBefore = snapshot(fixture.home.path() / "outcome");

    const std::string message = fixture.failure(test.list);
    const auto after = snapshot(fixture.home.path() / "files");
    if (test.failure != nullptr) {
        EXPECT_NE(message.find(test.failure), std::string::npos) << message;
        EXPECT_EQ(after, before); // refused before anything was written
        EXPECT_EQ(snapshot(fixture.home.path() / "outcome"), mergeBefore);
        return;
    }
    EXPECT_EQ(message, "no error");
    for (const auto& [path, bytes] : before)
        EXPECT_EQ(after.at(path), bytes) << path;
    std::vector<std::string> written;
    for (const auto& [path, bytes] : after)
        if (!before.contains(path) && !fs::is_directory(fixture.source(path)))
            written.push_back(path);
    EXPECT_EQ(written, test.written);
}

INSTANTIATE_TEST_SUITE_P(Runner, HostileLists, ::testing::ValuesIn(hostileCases),
                         [](const auto& info) { return std::string(info.param.name); });

// Random bytes: invalid UTF-8, NUL, lone CR, mixed line ends, and sometimes no last line end.
std::string randomText(std::mt19937& random) {
    const std::string alphabet = std::string("ab1 .-\r\n\n\0\xc3\xa9\xff\xe2\x82", 16);
    std::string text(random() % 40, ' ');
    for (char& c : text)
        c = alphabet[random() % alphabet.size()];
    return text;
}

TEST(RunnerProperty, EveryPageAndModeLeavesSourcesAsTheyWereAndWritesOnlyInItsPlaces) {
    const Lines pages[] = {
        {{5, "3"}, {6, "1"}, {10, "+1,"}},
        replaceAtoB,
        {{5, "5"}, {19, "2"}, {21, "END"}},
        {{5, "5"}, {19, "5"}, {24, "[a-z]+"}},
        {{5, "5"}, {19, "6"}, {24, "\\d"}},
        divideByRow,
        divideByColumn,
        {{5, "6"}, {26, "3"}},
        {{5, "6"}, {26, "4"}},
        mergeAll,
    };
    const Lines modes[] = {{{1, "1"}, {4, "0"}},
                           {{1, "2"}, {2, "2-3"}, {3, "2-4"}, {4, "0"}},
                           {{1, "2"}, {2, "1-2,4-9"}, {3, "1-1,3-5"}, {4, "1"}}};
    const std::vector<std::string> names = {"plain.txt", ".hidden",   "noext",   "two.dots.txt",
                                            "...txt",    "empty.txt", "link.txt"};
    std::mt19937 random(20261122);
    for (const Lines& page : pages)
        for (const Lines& mode : modes) {
            RunnerFixture fixture;
            fixture.set(page + mode);
            for (const std::string& name : names)
                if (name != "link.txt")
                    fixture.writeSource(name, name == "empty.txt" ? "" : randomText(random));
            fs::create_symlink(fixture.source("plain.txt"), fixture.source("link.txt"));
            const auto before = snapshot(fixture.home.path());
            const std::string message = fixture.failure(names);

            const auto after = snapshot(fixture.home.path());
            const std::string merge = fixture.home.file("outcome/merge/");
            for (const auto& [below, bytes] : after) {
                const std::string path = fixture.home.file(below);
                if (path.find("/task/") != std::string::npos)
                    continue; // the task's own files, written for the run
                if (before.contains(below)) {
                    if (path.find("/files/") != std::string::npos) {
                        EXPECT_EQ(bytes, before.at(below)) << path << ": " << message;
                    }
                    continue;
                }
                const bool allowed = path.starts_with(merge) ||
                                     std::any_of(names.begin(), names.end(), [&](auto& n) {
                                         const std::string source = fixture.source(n);
                                         return path == source + ".modify" ||
                                                path.starts_with(divideFolder(source)) ||
                                                path + "/" == divideFolder(source);
                                     });
                EXPECT_TRUE(allowed) << path << " (" << message << ")";
            }
        }
}

} // namespace
