// SPDX-License-Identifier: MIT
#include <vexaTrackLib/cutting/CoordinateScan.h>

#include <charconv>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace vexaTrackLib::cutting {

namespace {

/// A number of a text, or a letter for a half of the earth.
struct Token {
    char letter = 0; ///< 0 for a number
    double value = 0.0;
    std::size_t decimals = 0;
    std::size_t begin = 0;
    std::size_t end = 0;

    bool IsNumber() const { return letter == 0; }
    bool IsFine() const { return IsNumber() && decimals >= 3; }
};

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsWordPart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || static_cast<unsigned char>(c) >= 0x80;
}

/// Reads the tokens of a text one by one.
class TokenReader {
public:
    explicit TokenReader(std::string_view text) : text_(text) {}

    std::optional<Token> Next() {
        for (; at_ < text_.size(); ++at_) {
            const char c = text_[at_];
            if (IsDigit(c))
                return Number();
            if ((c == 'N' || c == 'S' || c == 'E' || c == 'W') && StandsAlone())
                return Token{c, 0.0, 0, at_, ++at_};
        }
        return std::nullopt;
    }

private:
    // "N" and "N47", but not the first letter of a word. The degree sign is no letter.
    bool StandsAlone() const {
        const auto isLetter = [this](std::size_t place) {
            return place < text_.size() && IsWordPart(text_[place]) &&
                   static_cast<unsigned char>(text_[place]) < 0x80;
        };
        return !isLetter(at_ + 1) && (at_ == 0 || !isLetter(at_ - 1));
    }
    Token Number() {
        constexpr std::size_t kLongest = 40;
        Token token;
        token.begin = at_;
        const bool isNegative = at_ > 0 && text_[at_ - 1] == '-';
        std::size_t end = at_;
        while (end < text_.size() && IsDigit(text_[end]))
            ++end;
        if (end + 1 < text_.size() && text_[end] == '.' && IsDigit(text_[end + 1])) {
            const std::size_t point = end++;
            while (end < text_.size() && IsDigit(text_[end]))
                ++end;
            token.decimals = end - point - 1;
        }
        if (end - at_ <= kLongest)
            std::from_chars(text_.data() + at_, text_.data() + end, token.value);
        if (isNegative)
            token.value = -token.value;
        at_ = token.end = end;
        return token;
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

/// Looks at the last tokens of a text for places.
class PlaceFinder {
public:
    explicit PlaceFinder(const std::function<bool(double, double)>& visit) : visit_(visit) {}

    // Returns true when a place was wanted.
    bool Take(const Token& token) {
        const bool isFound = TakeDecimal(token) || TakeAngle(token);
        lastEnd_ = token.end;
        return isFound;
    }
    bool Finish() { return EndAngle(); }

private:
    static constexpr std::size_t kFarthest = 12;

    bool TakeDecimal(const Token& token) {
        if (!token.IsFine())
            return false;
        const double before = std::exchange(decimal_, token.value);
        const std::size_t beforeEnd = std::exchange(decimalEnd_, token.end);
        if (beforeEnd == 0 || token.begin - beforeEnd > kFarthest)
            return false;
        return Visit(before, token.value) || Visit(token.value, before);
    }

    // A letter starts an angle when numbers follow, and ends one that had none before its numbers.
    bool TakeAngle(const Token& token) {
        if (token.begin - lastEnd_ > kFarthest && EndAngle())
            return true;
        if (token.IsNumber()) {
            if (numbers_.size() < 3)
                numbers_.push_back(token.value);
            return false;
        }
        if (letter_ == 0 && !numbers_.empty()) {
            letter_ = token.letter;
            return EndAngle();
        }
        const bool isFound = EndAngle();
        letter_ = token.letter;
        return isFound;
    }
    bool EndAngle() {
        const char letter = std::exchange(letter_, 0);
        const std::vector<double> numbers = std::exchange(numbers_, {});
        if (letter == 0 || numbers.empty())
            return false;
        double angle = numbers[0];
        if (numbers.size() > 1)
            angle += numbers[1] / 60.0;
        if (numbers.size() > 2)
            angle += numbers[2] / 3600.0;
        if (letter == 'N' || letter == 'S') {
            latitude_ = letter == 'N' ? angle : -angle;
            return false;
        }
        const std::optional<double> latitude = std::exchange(latitude_, std::nullopt);
        return latitude && Visit(*latitude, letter == 'E' ? angle : -angle);
    }
    bool Visit(double latitude, double longitude) {
        return latitude >= -90.0 && latitude <= 90.0 && longitude >= -180.0 && longitude <= 180.0 &&
               visit_(latitude, longitude);
    }

    const std::function<bool(double, double)>& visit_;
    std::size_t lastEnd_ = 0;
    double decimal_ = 0.0;
    std::size_t decimalEnd_ = 0; ///< 0 before the first one
    char letter_ = 0;
    std::vector<double> numbers_;
    std::optional<double> latitude_;
};

} // namespace

bool FindPlace(std::string_view text, const std::function<bool(double latitude, double longitude)>& visit) {
    TokenReader reader(text);
    PlaceFinder finder(visit);
    while (const std::optional<Token> token = reader.Next())
        if (finder.Take(*token))
            return true;
    return finder.Finish();
}

} // namespace vexaTrackLib::cutting
