#include "platform/wildcard.h"

#include "platform/cp1252.h"

#include <vector>

namespace platform {
namespace {

enum class Kind {
    Literal,
    AnyRun,       // "*": any run of characters
    RunToLastDot, // "*" before ".": any run that does not take the name's last dot
    OneOrAtDot,   // "?": one character but a dot; nothing at a dot or at the end of the name
    DotOrEnd,     // "." before "*", "?" or the pattern's end: a dot, or nothing at the end
};

struct Token {
    Kind kind;
    char literal = '\0';
};

std::vector<Token> tokens(std::string_view pattern) {
    std::vector<Token> result;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const char next = i + 1 < pattern.size() ? pattern[i + 1] : '\0';
        switch (pattern[i]) {
        case '*':
            result.push_back({next == '.' ? Kind::RunToLastDot : Kind::AnyRun});
            break;
        case '?':
            result.push_back({Kind::OneOrAtDot});
            break;
        case '.':
            if (next == '\0' || next == '*' || next == '?') {
                result.push_back({Kind::DotOrEnd});
            } else {
                result.push_back({Kind::Literal, '.'});
            }
            break;
        default:
            result.push_back({Kind::Literal, cp1252::toUpper(pattern[i])});
        }
    }
    return result;
}

class Matcher {
public:
    Matcher(std::string_view pattern, std::string_view name)
        : tokens_(tokens(pattern)), name_(name), lastDot_(name.rfind('.')),
          // 0 unknown, 1 match, 2 no match; one cell per (token, name position).
          memo_((tokens_.size() + 1) * (name.size() + 1), 0) {}

    bool matches() { return match(0, 0); }

private:
    bool match(std::size_t t, std::size_t n) {
        unsigned char& cell = memo_[t * (name_.size() + 1) + n];
        if (cell == 0) {
            cell = compute(t, n) ? 1 : 2;
        }
        return cell == 1;
    }

    bool compute(std::size_t t, std::size_t n) {
        const bool atEnd = n == name_.size();
        if (t == tokens_.size()) {
            return atEnd;
        }
        const Token& token = tokens_[t];
        switch (token.kind) {
        case Kind::Literal:
            return !atEnd && cp1252::toUpper(name_[n]) == token.literal && match(t + 1, n + 1);
        case Kind::AnyRun:
            return match(t + 1, n) || (!atEnd && match(t, n + 1));
        case Kind::RunToLastDot:
            return match(t + 1, n) || (!atEnd && n != lastDot_ && match(t, n + 1));
        case Kind::OneOrAtDot:
            if (atEnd || name_[n] == '.') {
                return match(t + 1, n);
            }
            return match(t + 1, n + 1);
        case Kind::DotOrEnd:
            return atEnd ? match(t + 1, n) : name_[n] == '.' && match(t + 1, n + 1);
        }
        return false;
    }

    std::vector<Token> tokens_;
    std::string_view name_;
    std::size_t lastDot_;
    std::vector<unsigned char> memo_;
};

} // namespace

bool wildcardMatch(std::string_view pattern, std::string_view name) {
    return Matcher(pattern, name).matches();
}

} // namespace platform
