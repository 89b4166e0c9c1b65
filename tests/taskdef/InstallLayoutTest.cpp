// Where a program keeps its tasks, decided from its surroundings.
#include "taskdef/InstallLayout.h"

#include "tests/support/TempDir.h"

#include <gtest/gtest.h>

namespace morlevant {
namespace {

using testing::readBytes;
using testing::writeBytes;

class ProgramFolder : public ::testing::Test {
protected:
    std::string resolve(const std::string& home = {}) const {
        return resolveProgramFolder({home, bin, dir.file("user")});
    }

    testing::TempDir dir;
    const std::string bin = dir.file("prefix/bin");
    // A file of the probe's name tells whether the folder was written to.
    const std::string probe = bin + "/.morlevant-write-probe";
};

TEST_F(ProgramFolder, AWritableBuildFolderIsItsOwnAndTheHomeVariableWins) {
    writeBytes(probe, "kept");
    EXPECT_EQ(resolve(), bin);
    EXPECT_EQ(resolve("/elsewhere"), "/elsewhere");
}

TEST_F(ProgramFolder, AnInstalledProgramUsesTheUserFolderWithoutProbingItsOwn) {
    writeBytes(installedDataFolder(bin) + "/help/index.html", "<html/>");
    writeBytes(probe, "kept");
    EXPECT_EQ(resolve(), dir.file("user"));
    EXPECT_EQ(readBytes(probe), "kept");
}

} // namespace
} // namespace morlevant
