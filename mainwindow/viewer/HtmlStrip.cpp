#include "mainwindow/viewer/HtmlStrip.h"

#include "engine/io/LineReader.h"
#include "engine/io/LineWriter.h"

namespace morlevant {

std::string stripTags(std::string_view line, bool& insideTag) {
    std::string kept;
    kept.reserve(line.size());
    for (const char c : line) {
        if (c == '<')
            insideTag = true;
        else if (c == '>')
            insideTag = false;
        else if (!insideTag)
            kept.push_back(c);
    }
    return kept;
}

void stripHtmlFile(const std::string& source, const std::string& target) {
    // The source is opened first: when it cannot be read the target is not touched.
    LineReader reader(source);
    LineWriter writer(target, LineWriter::Mode::Truncate);
    bool insideTag = false;
    std::string_view line;
    while (reader.next(line))
        writer.writeLine(stripTags(line, insideTag));
    writer.close();
}

} // namespace morlevant
