// A line break in a large find or replace box moves every later line of the settings file:
// "ok" asks first, and writes the file as it always has only when the user says yes.
#include "tests/editor/EditorFixture.h"
#include "tests/support/QStringPrinter.h"

#include <QPlainTextEdit>

namespace morlevant {
namespace {

using EditorLineBreak = testing::EditorFixture;

TEST_F(EditorLineBreak, OkAsksFirstAndNoKeepsTheEditorOpenAsItWas) {
    for (const char* box : {"Text7", "Text8"}) {
        prompts.asked.clear();
        reopen();
        driver().perform({"Check4", "Text1=cat", QString(box) + "=one\rtwo"});
        prompts.answers.enqueue(Answer::No);
        click("ok");
        ASSERT_EQ(prompts.asked.size(), 1) << box;
        EXPECT_TRUE(prompts.asked[0].startsWith(
            "yesno|Morlevant|The large find or replace box holds a line break."));
        EXPECT_TRUE(prompts.asked[0].contains("every setting after it moves down"));
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_EQ(control<QPlainTextEdit>(box)->toPlainText(), "one\ntwo");
        EXPECT_FALSE(std::filesystem::exists(home.file("Job.ttp"))) << box;
    }
}

TEST_F(EditorLineBreak, YesWritesTheLineBreakAsTheFileAlwaysHas) {
    driver().perform({"Check4", "Text7=one\rtwo", "Text8=1\r2"});
    prompts.answers.enqueue(Answer::Yes);
    click("ok");
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    const std::string file = written();
    // Lines 17 to 20: the fourth pair's two lines each, where line 19 (the insert action) was.
    EXPECT_NE(file.find("\r\none\r\ntwo\r\n1\r\n2\r\n"), std::string::npos) << file;
}

} // namespace
} // namespace morlevant
