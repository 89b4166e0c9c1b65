#include "mainwindow/desktop/MimeAppsList.h"

#include "tests/support/QStringPrinter.h"

#include <gtest/gtest.h>

namespace morlevant {
namespace {

const QString defaults = MimeAppsList::defaultApplications;
const QString removed = MimeAppsList::removedAssociations;
const QString type = "application/x-corvellum";
const QString ours = "morlevant.desktop";

TEST(MimeAppsList, AddingAnEntryKeepsEveryOtherLine) {
    struct Case {
        QString list;
        QString group;
        QString expected;
    };
    const Case cases[] = {
        {"", defaults, "[Default Applications]\napplication/x-corvellum=morlevant.desktop;\n"},
        // A missing group goes at the end, after a last line without a line end.
        {"[Added Associations]\ntext/plain=a.desktop;", removed,
         "[Added Associations]\ntext/plain=a.desktop;\n"
         "[Removed Associations]\napplication/x-corvellum=morlevant.desktop;\n"},
        // The key goes first in its group; the group is found with blanks around it.
        {"# mine\n [Default Applications] \ntext/plain=a.desktop;\n\n[Other]\nk=v\n", defaults,
         "# mine\n [Default Applications] \napplication/x-corvellum=morlevant.desktop;\n"
         "text/plain=a.desktop;\n\n[Other]\nk=v\n"},
        // An existing key gets the entry first, once.
        {"[Removed Associations]\napplication/x-corvellum = other.desktop;morlevant.desktop\n",
         removed,
         "[Removed Associations]\napplication/x-corvellum =morlevant.desktop;other.desktop;\n"},
        // The same type in another group is another key.
        {"[Added Associations]\napplication/x-corvellum=other.desktop;\n", defaults,
         "[Added Associations]\napplication/x-corvellum=other.desktop;\n"
         "[Default Applications]\napplication/x-corvellum=morlevant.desktop;\n"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(MimeAppsList::withEntry(c.list, c.group, type, ours), c.expected)
            << c.list.toStdString();
}

TEST(MimeAppsList, RemovingAnEntryDropsWhatItLeavesEmpty) {
    struct Case {
        QString list;
        QString expected;
    };
    const Case cases[] = {
        {"[Default Applications]\napplication/x-corvellum=morlevant.desktop;\n", ""},
        {"[Other]\nk=v\n[Default Applications]\napplication/x-corvellum=morlevant.desktop;\n\n"
         "[Last]\nk=v\n",
         "[Other]\nk=v\n[Last]\nk=v\n"},
        {"[Default Applications]\napplication/x-corvellum=other.desktop;morlevant.desktop;\n",
         "[Default Applications]\napplication/x-corvellum=other.desktop;\n"},
        {"[Default Applications]\n# kept\napplication/x-corvellum=morlevant.desktop;\n",
         "[Default Applications]\n# kept\n"},
        // Nothing of ours: the text stays byte for byte, odd spacing included.
        {"[Default Applications]\napplication/x-corvellum = other.desktop\n",
         "[Default Applications]\napplication/x-corvellum = other.desktop\n"},
        {"[Added Associations]\napplication/x-corvellum=morlevant.desktop;",
         "[Added Associations]\napplication/x-corvellum=morlevant.desktop;"},
        {"[Default Applications]\napplication/x-corvellum-old=morlevant.desktop;\n",
         "[Default Applications]\napplication/x-corvellum-old=morlevant.desktop;\n"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(MimeAppsList::withoutEntry(c.list, defaults, type, ours), c.expected)
            << c.list.toStdString();
}

TEST(MimeAppsList, TakingBackWhatWasAddedGivesTheListAsItStood) {
    for (const QString& list :
         {QString(), QString("[Default Applications]\ntext/plain=a.desktop;\n"),
          QString("[Removed Associations]\napplication/x-corvellum=b.desktop;\n[X]\nk=v\n")}) {
        for (const QString& group : {defaults, removed}) {
            const QString added = MimeAppsList::withEntry(list, group, type, ours);
            EXPECT_EQ(MimeAppsList::entries(added, group, type).value(0), ours);
            EXPECT_EQ(MimeAppsList::withoutEntry(added, group, type, ours), list)
                << list.toStdString();
        }
    }
}

} // namespace
} // namespace morlevant
