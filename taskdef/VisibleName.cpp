#include "taskdef/VisibleName.h"

#include <cstdint>
#include <cstdio>

namespace morlevant {

namespace {

// The length of the UTF-8 sequence at the start of `text` and its code point, or 0 for a byte
// that starts no valid sequence.
std::size_t decode(std::string_view text, char32_t& code) {
    const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
    const std::uint8_t first = byte(0);
    if (first < 0x80) {
        code = first;
        return 1;
    }
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : first >= 0xC2 ? 2 : 0;
    if (length == 0 || first > 0xF4 || text.size() < length)
        return 0;
    code = first & (0x7F >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
        code = (code << 6) | (byte(i) & 0x3F);
    }
    const char32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
    if (code < least[length] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        return 0;
    return length;
}

std::string hex(const char* format, unsigned value) {
    char text[16];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

// The bracketed name of a character that shows as nothing, or "" for one that shows.
std::string invisibleName(char32_t code) {
    switch (code) {
    case 0:
        return "[NUL]";
    case '\t':
        return "[TAB]";
    case '\n':
        return "[LF]";
    case '\r':
        return "[CR]";
    case 0xFEFF:
        return "[BOM]";
    default:
        break;
    }
    const bool control = code < 0x20 || (code >= 0x7F && code < 0xA0);
    // Also what turns the text around (bidirectional controls) or looks like a blank.
    const bool hidden = (code >= 0x200B && code <= 0x200F) || (code >= 0x2028 && code <= 0x202E) ||
                        (code >= 0x2060 && code <= 0x2069) || code == 0x061C || code == 0x00A0 ||
                        code == 0x00AD;
    return control || hidden ? hex("[U+%04X]", static_cast<unsigned>(code)) : "";
}

} // namespace

std::string visibleName(std::string_view name) {
    const std::size_t firstShown = name.find_first_not_of(' ');
    const std::size_t lastShown = name.find_last_not_of(' ');
    std::string shown;
    for (std::size_t i = 0; i < name.size();) {
        if (name[i] == ' ' && (i < firstShown || i > lastShown)) {
            shown += "[space]";
            ++i;
            continue;
        }
        char32_t code = 0;
        const std::size_t length = decode(name.substr(i), code);
        if (length == 0) {
            shown += hex("[x%02X]", static_cast<std::uint8_t>(name[i]));
            ++i;
            continue;
        }
        const std::string invisible = invisibleName(code);
        if (invisible.empty())
            shown.append(name.substr(i, length));
        else
            shown += invisible;
        i += length;
    }
    return shown;
}

} // namespace morlevant
