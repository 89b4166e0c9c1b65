#pragma once

#include <QString>

// Where the maker can be reached: the web site and the feedback mailbox, set when building
// (MORLEVANT_HOMEPAGE, MORLEVANT_FEEDBACK_ADDRESS).
namespace morlevant::maker {

inline constexpr char homepage[] = MORLEVANT_HOMEPAGE;
inline constexpr char feedbackAddress[] = MORLEVANT_FEEDBACK_ADDRESS;

inline QString feedbackMail() {
    return QStringLiteral("mailto:") + QString::fromLatin1(feedbackAddress) +
           QStringLiteral("?subject=Morlevant%20Feedback");
}

} // namespace morlevant::maker
