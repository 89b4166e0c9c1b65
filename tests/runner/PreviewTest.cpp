// A preview works the task's own pages on the first rows of a file and writes nothing beside
// the sources.
#include "engine/preview/TaskPreview.h"
#include "tests/support/RunnerFixture.h"

#include <gtest/gtest.h>

using namespace morlevant;
using namespace morlevant::testing;

namespace fs = std::filesystem;

namespace {

using Rows = std::vector<std::string>;

struct PreviewCase {
    const char* name;
    Lines lines;
    TaskPreview::Kind kind;
    Rows result = {};                                     // Lines and Merge
    std::size_t changed = 0;                              // Lines
    std::vector<std::pair<std::string, Rows>> files = {}; // Pieces and Merge: name, first rows
};

using Kind = TaskPreview::Kind;
const PreviewCase previewCases[] = {
    {"Replace", {{5, "4"}, {11, "r"}, {12, "R"}}, Kind::Lines, {"R1", "x", "R3"}, 2},
    {"InsertAtTheEndOfTheSample",
     {{5, "5"}, {19, "2"}, {21, "END"}},
     Kind::Lines,
     {"r1", "x", "r3", "END"},
     1},
    {"DivideByRow",
     {{5, "6"}, {26, "1"}, {27, "2"}},
     Kind::Pieces,
     {},
     0,
     {{"p(001).txt", {"r1", "x"}}, {"p(002).txt", {"r3"}}}},
    // The merge's first rows: "b", past the rows shown, is not among them.
    {"Merge",
     {{5, "6"}, {26, "5"}},
     Kind::Merge,
     {"r1", "x", "r3"},
     0,
     {{"a.txt", {"r1", "x", "r3"}}, {"b.txt", {"b"}}}},
    {"ColumnDivideInPlaceDoesNothing",
     {{1, "2"}, {4, "0"}, {5, "6"}, {26, "2"}, {28, "1"}},
     Kind::Nothing},
};

class Previews : public ::testing::TestWithParam<PreviewCase> {};

TEST_P(Previews, ShowWhatTheRunWouldWriteAndWriteNothing) {
    const PreviewCase& c = GetParam();
    RunnerFixture fixture;
    fixture.set(c.lines);
    // Three rows of a.txt are previewed; the fourth is past the sample.
    fixture.writeSource("a.txt", "r1\nx\nr3\nr4\n");
    fixture.writeSource("b.txt", "b");
    const auto files = [&] {
        std::vector<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(fixture.home.path()))
            names.push_back(entry.path().string());
        return names;
    };
    const auto before = files();

    const TaskPreview preview =
        previewTask(fixture.settings, {fixture.source("a.txt"), fixture.source("b.txt")},
                    fixture.source("a.txt"), 3);

    EXPECT_EQ(files(), before);
    EXPECT_FALSE(preview.error) << *preview.error;
    EXPECT_EQ(preview.kind, c.kind);
    if (c.kind == Kind::Nothing)
        return;
    EXPECT_EQ(preview.result.rows, c.result);
    std::vector<std::pair<std::string, Rows>> shown;
    for (const PreviewFile& file : preview.files)
        shown.emplace_back(fs::path(file.name).filename().string(), file.rows);
    EXPECT_EQ(shown, c.files);
    if (c.kind == Kind::Lines) {
        EXPECT_EQ(preview.source.rows, (Rows{"r1", "x", "r3"}));
        EXPECT_EQ(preview.changedRows(), c.changed);
    }
}

INSTANTIATE_TEST_SUITE_P(Runner, Previews, ::testing::ValuesIn(previewCases),
                         [](const auto& info) { return std::string(info.param.name); });

// An error the run would meet shows with the run's own message, naming the source and its
// line rather than the preview's copy.
TEST(Preview, ShowsTheRunsErrorAboutTheSource) {
    const struct {
        Lines lines;
        std::string message; // after the source's name
    } cases[] = {
        {{{5, "3"}, {6, "0"}, {10, "/0"}}, ", line 1: "},
        {{{5, "5"}, {19, "4"}, {24, "(?<n>a)\\k<m>"}}, ""},
    };
    for (const auto& c : cases) {
        RunnerFixture fixture;
        fixture.writeSource("a.txt", "1\n2\n");
        fixture.set(c.lines);
        const TaskPreview preview =
            previewTask(fixture.settings, {fixture.source("a.txt")}, fixture.source("a.txt"), 200);
        ASSERT_TRUE(preview.error) << c.message;
        EXPECT_EQ(preview.error->find("morlevant-preview"), std::string::npos) << *preview.error;
        EXPECT_NE(preview.error->find(c.message), std::string::npos) << *preview.error;
    }
    RunnerFixture fixture;
    fixture.set({{5, "4"}, {11, "r"}});
    const TaskPreview missing = previewTask(fixture.settings, {}, fixture.source("gone.txt"), 200);
    ASSERT_TRUE(missing.error);
    EXPECT_NE(missing.error->find(fixture.source("gone.txt")), std::string::npos);
}

} // namespace
