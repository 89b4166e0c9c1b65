#include "engine/regex/GroupNameCharacters.h"

#include "engine/text/Utf8.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

namespace morlevant {

bool isNameCharacter(char32_t c, bool first) {
    if (c == '$' || c == '_')
        return true;
    if (!first && (c == 0x200C || c == 0x200D))
        return true;
    if (c >= 0xD800 && c <= 0xDFFF)
        return false;
    struct Tester {
        explicit Tester(const char* pattern) {
            int code = 0;
            PCRE2_SIZE offset = 0;
            regex = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(pattern), PCRE2_ZERO_TERMINATED,
                                  PCRE2_UTF, &code, &offset, nullptr);
            data = pcre2_match_data_create(1, nullptr);
        }
        bool matches(char32_t c) const {
            const std::string text = utf8Of(c);
            return pcre2_match(regex, reinterpret_cast<PCRE2_SPTR>(text.data()), text.size(), 0, 0,
                               data, nullptr) >= 0;
        }
        ~Tester() {
            pcre2_match_data_free(data);
            pcre2_code_free(regex);
        }
        pcre2_code* regex;
        pcre2_match_data* data;
    };
    static const Tester start("^\\p{ID_Start}$");
    static const Tester part("^\\p{ID_Continue}$");
    return (first ? start : part).matches(c);
}

} // namespace morlevant
