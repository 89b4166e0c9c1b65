#include "engine/regex/EcmaRegex.h"

#include "engine/regex/BacktrackMatcher.h"
#include "engine/regex/EcmaPatternCheck.h"
#include "engine/regex/EcmaPatternParser.h"
#include "engine/regex/EcmaPatternWriter.h"
#include "engine/regex/LookbehindStarts.h"
#include "engine/text/Utf8.h"
#include "taskdef/TaskError.h"

namespace morlevant {

namespace {

// The translated pattern spells out every construct; the one option left is JavaScript's
// reading of a back-reference to a group that did not take part: it matches the empty text.
constexpr std::uint32_t compileOptions = PCRE2_MATCH_UNSET_BACKREF;
constexpr PCRE2_SIZE jitStackStart = 64 * 1024;
constexpr PCRE2_SIZE jitStackMax = 256 * 1024 * 1024;
// What the start-position callout returns to abandon a search whose budget is spent: below
// every error code of PCRE2's own.
constexpr int budgetSpent = -10'000;
// Lines longer than this are matched within the budget. A shorter one is done in seconds even
// by a pattern whose work grows with the square of the line.
constexpr std::size_t budgetedFrom = 16 * 1024;

std::string errorText(int code) {
    PCRE2_UCHAR buffer[256];
    const int length = pcre2_get_error_message(code, buffer, sizeof buffer);
    return length < 0 ? "error " + std::to_string(code)
                      : std::string(reinterpret_cast<const char*>(buffer), length);
}

} // namespace

EcmaRegex::EcmaRegex(std::string_view pattern, MatchBudget budget, Matcher matcher)
    : pattern_(pattern), budget_(budget) {
    ParsedPattern parsed;
    try {
        parsed = parseEcmaPattern(pattern);
    } catch (const PatternError& error) {
        throw TaskError("The regular expression \"" + pattern_ + "\" " +
                        (error.unsupported ? "cannot be matched as JavaScript matches it: "
                                           : "is not valid: ") +
                        error.cause + " at position " + std::to_string(error.position));
    }
    groupCount_ = parsed.groupCount;
    staysWithinLine_ = morlevant::staysWithinLine(parsed.root);
    canMatchEmpty_ = morlevant::canMatchEmpty(parsed.root);
    for (int group = 1; group <= parsed.groupCount; ++group)
        if (!parsed.groupNames[group - 1].empty())
            groupNames_.emplace_back(parsed.groupNames[group - 1], group);

    if (matcher == Matcher::Fastest) {
        shortenLookbehindStarts(parsed.root);
        byteRun_ = ByteRunMatcher::of(parsed.root);
    }
    if (byteRun_) {
        ovector_ = runMatch_;
        readsBytesAlike_ = true;
        return;
    }

    bool pcreMatchesLikeJavaScript = matcher == Matcher::Fastest;
    try {
        checkPcreMatchesLikeJavaScript(parsed);
    } catch (const PatternError&) {
        pcreMatchesLikeJavaScript = false;
    }
    // Long lines are matched by a compile with a callout before the whole pattern, run at every
    // start position, where the budget is kept (PCRE2 still skips the positions where no match
    // can start). Short lines cannot take long and are spared its cost.
    const auto compiled = [&](bool utf, pcre2_code*& code, pcre2_code*& budgeted) {
        const std::string translated = writePcrePattern(parsed, utf);
        code = compile(translated, utf);
        if (code != nullptr)
            budgeted = compile("(?C)(?:" + translated + ")", utf);
        if (budgeted == nullptr) {
            pcre2_code_free(code);
            code = nullptr;
        }
        return code != nullptr;
    };
    // A pattern PCRE2 does not take (a lookbehind cut to a fixed length may still exceed its
    // limits) goes to the backtracking matcher, which takes any; so do the lines that are not
    // valid UTF-8 when the compile that reads bytes fails, as it does for a lookbehind of a fixed
    // number of characters that are not all of one length in bytes.
    if (!pcreMatchesLikeJavaScript || !compiled(true, utfCode_, utfBudgetedCode_) ||
        !compiled(false, byteCode_, byteBudgetedCode_))
        backtracker_ = std::make_unique<BacktrackMatcher>(compileBacktrackProgram(parsed));
    if (utfCode_ == nullptr) {
        ovector_ = backtracker_->captures();
        readsBytesAlike_ = !canMatchEmpty_ && matchesOnlyAscii(parsed.root);
        return;
    }

    // An empty match is followed by a step of one character, which byte by byte could end
    // inside one: only patterns that never match the empty text read bytes alike.
    readsBytesAlike_ = byteCode_ != nullptr && !canMatchEmpty_ && matchesOnlyAscii(parsed.root);

    matchData_ = pcre2_match_data_create_from_pattern(utfCode_, nullptr);
    ovector_ = pcre2_get_ovector_pointer(matchData_);
    matchContext_ = pcre2_match_context_create(nullptr);
    // Deeply nested or backtracking patterns on long lines need more than JIT's small default.
    jitStack_ = pcre2_jit_stack_create(jitStackStart, jitStackMax, nullptr);
    pcre2_jit_stack_assign(matchContext_, nullptr, jitStack_);
    pcre2_set_callout(matchContext_, &EcmaRegex::atStartPosition, this);
}

int EcmaRegex::atStartPosition(pcre2_callout_block*, void* self) {
    auto* regex = static_cast<EcmaRegex*>(self);
    // The clock is read once in a while: a start position costs far less than reading it.
    if ((++regex->attempts_ & 0xFF) == 0 && std::chrono::steady_clock::now() > regex->deadline_)
        return budgetSpent;
    return 0;
}

EcmaRegex::~EcmaRegex() {
    pcre2_jit_stack_free(jitStack_);
    pcre2_match_context_free(matchContext_);
    pcre2_match_data_free(matchData_);
    pcre2_code_free(byteBudgetedCode_);
    pcre2_code_free(byteCode_);
    pcre2_code_free(utfBudgetedCode_);
    pcre2_code_free(utfCode_);
}

pcre2_code* EcmaRegex::compile(std::string_view pattern, bool utf) {
    int code = 0;
    PCRE2_SIZE offset = 0;
    pcre2_code* compiled =
        pcre2_compile(reinterpret_cast<PCRE2_SPTR>(pattern.data()), pattern.size(),
                      compileOptions | (utf ? PCRE2_UTF : 0), &code, &offset, nullptr);
    if (compiled == nullptr)
        return nullptr;
    // Without JIT (not built for this machine) the interpreter matches the same way.
    pcre2_jit_compile(compiled, PCRE2_JIT_COMPLETE);
    return compiled;
}

int EcmaRegex::groupNumber(std::string_view name) const {
    for (const auto& [groupName, number] : groupNames_)
        if (groupName == name)
            return number;
    return 0;
}

EcmaRegex::Reading EcmaRegex::readingOf(std::string_view subject) const {
    if (readsBytesAlike_) // read byte by byte, as ASCII is, whatever its encoding
        return Reading::Ascii;
    const std::size_t asciiPrefix = asciiPrefixLength(subject);
    if (asciiPrefix == subject.size())
        return Reading::Ascii;
    // The ASCII prefix ends between characters: only the rest needs its encoding checked.
    return isValidUtf8(subject.substr(asciiPrefix)) ? Reading::Utf8 : Reading::Invalid;
}

void EcmaRegex::setSubject(std::string_view subject) {
    use(subject, readingOf(subject), subject.size() > budgetedFrom);
}

bool EcmaRegex::setLines(std::string_view lines) {
    const Reading reading = readingOf(lines);
    if (reading == Reading::Invalid)
        return false;
    // Lines are given many at once only when each is shorter than a block of the reader and
    // the pattern stays within a line: a search over such a line ends in seconds even when its
    // work grows with the square of the line (the budget is for lines of megabytes), and one
    // that backtracks without end meets PCRE2's match limit. Unbudgeted, the searches are
    // spared a callout at every start position.
    use(lines, reading, false);
    return true;
}

void EcmaRegex::use(std::string_view subject, Reading reading, bool budgeted) {
    subject_ = subject;
    subjectIsUtf_ = reading != Reading::Invalid;
    if (byteRun_)
        return;
    backtracking_ = utfCode_ == nullptr || (reading == Reading::Invalid && byteCode_ == nullptr);
    if (backtracking_) {
        ovector_ = backtracker_->captures();
        // Every subject has its budget: without PCRE2's match limit, it is what stops runaway
        // backtracking on a short line too.
        backtracker_->setSubject(subject, reading == Reading::Utf8, budgetFor(subject));
        return;
    }
    ovector_ = pcre2_get_ovector_pointer(matchData_);
    // A line of ASCII reads the same byte by byte, and the byte compile matches it faster: its
    // classes need no test for characters beyond ASCII.
    const bool bytes = reading != Reading::Utf8 && byteCode_ != nullptr;
    const pcre2_code* code = nullptr;
    if (budgeted) {
        code = bytes ? byteBudgetedCode_ : utfBudgetedCode_;
        // Only the budgeted compiles look at the clock: a short line need not read it.
        deadline_ = std::chrono::steady_clock::now() + budgetFor(subject);
    } else {
        code = bytes ? byteCode_ : utfCode_;
    }
    if (code != code_) {
        code_ = code;
        std::size_t jitSize = 0;
        pcre2_pattern_info(code_, PCRE2_INFO_JITSIZE, &jitSize);
        jitCompiled_ = jitSize != 0;
    }
}

std::chrono::steady_clock::duration EcmaRegex::budgetFor(std::string_view subject) const {
    return budget_.fixed + budget_.perMebibyte * static_cast<std::int64_t>(subject.size() >> 20);
}

bool EcmaRegex::find(std::size_t start) {
    if (byteRun_)
        return byteRun_->find(subject_, start, runMatch_);
    if (backtracking_)
        return backtrackerFind(start);
    static constexpr char empty[] = "";
    const auto* text = reinterpret_cast<PCRE2_SPTR>(subject_.empty() ? empty : subject_.data());
    // The subject was checked once by setSubject: re-checking it on every call would make a
    // global match over a long line quadratic.
    // A JIT compile is called directly, past the checks of the general entry; it never checks
    // the subject's UTF-8.
    const int rc = jitCompiled_ ? pcre2_jit_match(code_, text, subject_.size(), start, 0,
                                                  matchData_, matchContext_)
                                : pcre2_match(code_, text, subject_.size(), start,
                                              PCRE2_NO_UTF_CHECK, matchData_, matchContext_);
    if (rc >= 0)
        return true;
    if (rc == PCRE2_ERROR_NOMATCH)
        return false;
    if (rc == budgetSpent)
        throwTakesTooLong();
    // Limits of backtracking and of JIT's stack end the run with a message, never a crash.
    throwTooComplex(errorText(rc));
}

bool EcmaRegex::backtrackerFind(std::size_t start) {
    switch (backtracker_->find(start)) {
    case BacktrackMatcher::Outcome::Match:
        return true;
    case BacktrackMatcher::Outcome::NoMatch:
        return false;
    case BacktrackMatcher::Outcome::OutOfTime:
        throwTakesTooLong();
    case BacktrackMatcher::Outcome::OutOfMemory:
        break;
    }
    throwTooComplex("its backtracking stack is full");
}

void EcmaRegex::throwTakesTooLong() const {
    throw TaskError("The regular expression \"" + pattern_ +
                    "\" takes too long on this line: its work grows faster than the line; "
                    "simplify it (a lookahead to the end of the line tried at every "
                    "position is a usual cause)");
}

void EcmaRegex::throwTooComplex(const std::string& cause) const {
    throw TaskError("The regular expression \"" + pattern_ +
                    "\" is too complex to match against this line (" + cause + ")");
}

// groups() hands out the offsets as they are: a group without a value is at npos.
static_assert(PCRE2_UNSET == std::string_view::npos);

std::string_view EcmaRegex::group(int n) const {
    const PCRE2_SIZE begin = ovector_[2 * n];
    if (begin == PCRE2_UNSET)
        return {};
    return subject_.substr(begin, ovector_[2 * n + 1] - begin);
}

std::size_t EcmaRegex::characterLength(std::size_t pos) const {
    return subjectIsUtf_ ? utf8CharLength(subject_, pos) : 1;
}

} // namespace morlevant
