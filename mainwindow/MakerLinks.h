#pragma once

// Where the maker can be reached: the web site and the feedback mailbox.
namespace morlevant::maker {

inline constexpr char homepage[] = "https://morlevant.example.org";
inline constexpr char feedbackAddress[] = "feedback@morlevant.example.org";
inline constexpr char feedbackMail[] =
    "mailto:feedback@morlevant.example.org?subject=Morlevant%20Feedback";

} // namespace morlevant::maker
