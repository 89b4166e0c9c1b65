#pragma once

#include <string>
#include <string_view>

namespace morlevant {

// One line of an HTML file without its markup: a "<" starts a tag and a ">" ends one, both
// dropped with everything between them. insideTag carries from one line to the next, so a tag
// that spans lines goes whole. Character entities stay as they are.
std::string stripTags(std::string_view line, bool& insideTag);

// Writes every line of source without its tags to target (replacing it), each ended by CR LF,
// also when it is empty. Throws TaskError naming the file when source cannot be read; target
// is then left as it was.
void stripHtmlFile(const std::string& source, const std::string& target);

} // namespace morlevant
