#include "taskdef/TextLines.h"

namespace morlevant {

std::vector<std::string_view> textLines(std::string_view text) {
    std::vector<std::string_view> lines;
    std::size_t pos = 0;
    while (pos < text.size()) {
        std::size_t end = text.find_first_of("\r\n", pos);
        if (end == std::string_view::npos)
            end = text.size();
        lines.push_back(text.substr(pos, end - pos));
        pos = end;
        if (pos < text.size() && text[pos++] == '\r' && pos < text.size() && text[pos] == '\n')
            ++pos;
    }
    return lines;
}

} // namespace morlevant
