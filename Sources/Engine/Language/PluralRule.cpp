#include "Engine/Language/PluralRule.h"

#include <cctype>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <utility>

namespace gull {

namespace {

/// Parses and evaluates in one pass, by precedence. It evaluates both sides of a condition, which have no
/// side effects.
class Reader {
  public:
    Reader(std::string_view text, std::int64_t n) : text_(text), n_(n) {}

    std::int64_t whole() {
        const std::int64_t value = condition();
        if (next() != '\0') fail();
        return value;
    }

  private:
    char next() {
        while (at_ < text_.size() && std::isspace(static_cast<unsigned char>(text_[at_]))) ++at_;
        return at_ < text_.size() ? text_[at_] : '\0';
    }
    bool take(std::string_view symbol) {
        next();
        if (!text_.substr(at_).starts_with(symbol)) return false;
        at_ += symbol.size();
        return true;
    }
    [[noreturn]] void fail() const {
        throw std::invalid_argument("plural rule \"" + std::string(text_) + "\" cannot be read at " +
                                    std::to_string(at_));
    }

    std::int64_t condition() {
        const std::int64_t test = either();
        if (!take("?")) return test;
        const std::int64_t yes = condition();
        if (!take(":")) fail();
        const std::int64_t no = condition();
        return test != 0 ? yes : no;
    }
    std::int64_t either() {
        std::int64_t value = both();
        while (take("||")) {
            const std::int64_t other = both();
            value = value != 0 || other != 0;
        }
        return value;
    }
    std::int64_t both() {
        std::int64_t value = equality();
        while (take("&&")) {
            const std::int64_t other = equality();
            value = value != 0 && other != 0;
        }
        return value;
    }
    std::int64_t equality() {
        std::int64_t value = order();
        while (true) {
            if (take("==")) {
                value = value == order();
            } else if (take("!=")) {
                value = value != order();
            } else {
                return value;
            }
        }
    }
    std::int64_t order() {
        std::int64_t value = sum();
        while (true) {
            if (take("<=")) {
                value = value <= sum();
            } else if (take(">=")) {
                value = value >= sum();
            } else if (take("<")) {
                value = value < sum();
            } else if (take(">")) {
                value = value > sum();
            } else {
                return value;
            }
        }
    }
    std::int64_t sum() {
        std::int64_t value = product();
        while (true) {
            if (take("+")) {
                value += product();
            } else if (take("-")) {
                value -= product();
            } else {
                return value;
            }
        }
    }
    std::int64_t product() {
        std::int64_t value = factor();
        while (true) {
            if (take("*")) {
                value *= factor();
            } else if (take("/")) {
                value /= divisor();
            } else if (take("%")) {
                value %= divisor();
            } else {
                return value;
            }
        }
    }
    std::int64_t divisor() {
        const std::int64_t value = factor();
        if (value == 0) fail();
        return value;
    }
    std::int64_t factor() {
        const Depth depth(*this);
        if (take("!")) return factor() == 0;
        if (take("(")) {
            const std::int64_t value = condition();
            if (!take(")")) fail();
            return value;
        }
        if (take("n")) return n_;
        std::int64_t value = 0;
        const std::size_t start = at_;
        while (std::isdigit(static_cast<unsigned char>(next())) && at_ - start < 9) {
            value = value * 10 + (text_[at_++] - '0');
        }
        if (at_ == start) fail();
        return value;
    }

    struct Depth {
        explicit Depth(Reader& reader) : reader_(reader) {
            if (++reader_.depth_ > 50) reader_.fail();
        }
        ~Depth() { --reader_.depth_; }
        Depth(const Depth&) = delete;
        Depth& operator=(const Depth&) = delete;
        Reader& reader_;
    };

    std::string_view text_;
    std::int64_t n_;
    std::size_t at_ = 0;
    int depth_ = 0;
};

}  // namespace

std::int64_t PluralRule::form(std::string_view rule, std::int64_t count) {
    return Reader(rule, std::abs(count)).whole();
}

std::string_view PluralRule::inHeader(std::string_view header) {
    constexpr std::string_view key = "plural=";
    const std::size_t line = header.find("Plural-Forms:");
    const std::size_t start = line == std::string_view::npos ? line : header.find(key, line);
    if (start == std::string_view::npos) return "n != 1";
    const std::string_view rest = header.substr(start + key.size());
    return rest.substr(0, rest.find(';'));
}

}  // namespace gull
