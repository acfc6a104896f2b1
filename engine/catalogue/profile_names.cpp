#include "catalogue/profile_names.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

#include "base/numbers.h"
#include "base/text.h"

namespace halvorn::engine {

namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kBlanks = " \t\n\v\f\r";
constexpr std::string_view kTimes = "\xC3\x97";  // the multiplication sign in UTF-8

bool IsDigit(char c) {
    return kDigits.find(c) != std::string_view::npos;
}

// The end of the digits that begin at a place; the place itself where there are none.
std::size_t EndOfDigits(std::string_view text, std::size_t start) {
    return std::min(text.find_first_not_of(kDigits, start), text.size());
}

// Sixteen digits and more are no size of a profile and would not be kept.
constexpr std::size_t kMostDigits = 15;

// A number without sign as names have them: "12", "10.500", "3/8", "1-1/4", "1 1/4".
struct NumberText {
    std::size_t end = 0;  // behind its last character
    double value = 0.0;   // meaningful when it has a fraction or decimals
    bool isFraction = false;
    std::size_t decimals = 0;  // digits behind its point
};

double Whole(std::string_view digits) {
    double value = 0.0;
    for (const char digit : digits) value = 10.0 * value + (digit - '0');
    return value;
}

// The end of a fraction such as 3/8 at a place, and its value; 0 where there is none.
std::size_t FractionAt(std::string_view text, std::size_t start, double* value) {
    const std::size_t slash = EndOfDigits(text, start);
    if (slash == start || slash == text.size() || text[slash] != '/') return 0;
    const std::size_t end = EndOfDigits(text, slash + 1);
    const double divisor = Whole(text.substr(slash + 1, end - slash - 1));
    if (divisor == 0.0 || end - start > kMostDigits) return 0;
    *value = Whole(text.substr(start, slash - start)) / divisor;
    return end;
}

NumberText NumberAt(std::string_view text, std::size_t start) {
    NumberText number;
    const std::size_t whole = EndOfDigits(text, start);
    number.end = FractionAt(text, start, &number.value);
    if (number.end != 0) {
        number.isFraction = true;
        return number;
    }
    // A hyphen or blanks between a whole number and its fraction.
    const std::size_t fraction = text.find_first_not_of(" -", whole);
    if (whole > start && fraction != std::string_view::npos && fraction > whole) {
        number.end = FractionAt(text, fraction, &number.value);
        if (number.end != 0) {
            number.isFraction = true;
            number.value += Whole(text.substr(start, whole - start));
            return number;
        }
    }
    number.end = whole;
    if (whole == text.size() || (text[whole] != '.' && text[whole] != ',')) return number;
    const std::size_t end = EndOfDigits(text, whole + 1);
    if (end == whole + 1) return number;  // a point that ends something
    number.end = end;
    number.decimals = end - whole - 1;
    return number;
}

// 114.30 becomes 114.3, 0.50 becomes .5, 5.0 becomes 5.
std::string WithoutEmptyDigits(std::string text) {
    std::replace(text.begin(), text.end(), ',', '.');
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    if (text.starts_with("0.")) text.erase(0, 1);
    return text.empty() ? "0" : text;
}

std::string CanonicalNumber(std::string_view text, const NumberText& number) {
    constexpr double kParts = 64.0;       // of an inch
    constexpr double kRounding = 0.0006;  // how far three digits are from it [in], and a little
    constexpr std::size_t kFewestDecimals = 3;
    if (!number.isFraction && number.decimals == 0) return std::string(text);
    if (text.size() > kMostDigits) return WithoutEmptyDigits(std::string(text));
    double value = number.value;
    if (!number.isFraction) {
        if (number.decimals < kFewestDecimals) return WithoutEmptyDigits(std::string(text));
        std::string plain(text);
        std::replace(plain.begin(), plain.end(), ',', '.');
        value = NumberIn(plain).value_or(0.0);
        const double part = std::round(kParts * value) / kParts;
        if (std::fabs(value - part) > kRounding) return WithoutEmptyDigits(plain);
        value = part;
    }
    constexpr int kDecimals = 6;  // every sixty-fourth
    std::string decimals = FixedNumber(value, kDecimals);
    return decimals.starts_with("0.") ? decimals.substr(1) : decimals;
}

// Other orders and short forms in use: HE200B, equal sides written once, a square RHS.
std::string WithAllSides(const std::string& text) {
    const std::size_t first = std::min(text.find_first_of(kDigits), text.size());
    const std::string series = text.substr(0, first);
    const std::string size = text.substr(first);
    if (series == "HE" && !size.empty() && size.find_first_not_of(kDigits) + 1 == size.size() &&
        std::string_view("ABM").find(size.back()) != std::string_view::npos) {
        return series + size.back() + size.substr(0, size.size() - 1);
    }
    const std::size_t times = size.find('X');
    if (times == std::string::npos) return text;
    const std::string side = size.substr(0, times + 1), rest = size.substr(times + 1);
    const bool isShort = rest.find('X') == std::string::npos;
    if (isShort && (series == "L" || series == "SHS")) return series + side + side + rest;
    if (series == "RHS" && rest.starts_with(side)) return "SHS" + size;
    return text;
}

}  // namespace

std::string CanonicalProfileName(std::string_view name) {
    constexpr std::string_view kJoining = "-_";
    std::string text;
    for (std::size_t i = 0; i < name.size();) {
        const char c = name[i];
        const bool isNumber =
            IsDigit(c) || ((c == '.' || c == ',') && i + 1 < name.size() && IsDigit(name[i + 1]));
        if (isNumber) {
            const NumberText number = NumberAt(name, i);
            text += CanonicalNumber(name.substr(i, number.end - i), number);
            i = number.end;
        } else if (name.substr(i, kTimes.size()) == kTimes) {
            text += 'X';
            i += kTimes.size();
        } else {
            const bool isLeftOut = kBlanks.find(c) != std::string_view::npos ||
                                   kJoining.find(c) != std::string_view::npos;
            if (!isLeftOut) text += c == '*' ? 'X' : c;
            ++i;
        }
    }
    return WithAllSides(InCapitals(text));
}

std::optional<double> FractionIn(std::string_view text) {
    const NumberText number = NumberAt(text, 0);
    if (!number.isFraction || number.end != text.size()) return std::nullopt;
    return number.value;
}

std::string PlainProfileName(std::string_view name) {
    std::string text;
    bool isAfterBlank = false;
    for (const char c : name) {
        if (kBlanks.find(c) != std::string_view::npos) {
            isAfterBlank = true;
            continue;
        }
        if (isAfterBlank && IsDigit(c) && !text.empty() && IsDigit(text.back())) text += ' ';
        text += c;
        isAfterBlank = false;
    }
    return InCapitals(text);
}

std::string SeriesOf(std::string_view name) {
    return FirstLettersOf(CanonicalProfileName(name));
}

std::string FirstLettersOf(std::string_view name) {
    const std::string_view word = name.substr(0, name.find(kTimes));
    // Letters beyond ASCII have such bytes alone.
    const auto isLetter = [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
               static_cast<unsigned char>(c) > 0x7FU;
    };
    const auto end = std::find_if_not(word.begin(), word.end(), isLetter);
    return InCapitals(word.substr(0, static_cast<std::size_t>(end - word.begin())));
}

std::string WithSidesSwapped(const std::string& canonicalName) {
    const std::size_t first = canonicalName.find_first_of(kDigits);
    const std::size_t second = canonicalName.find('X', first);
    if (second == std::string::npos) return canonicalName;
    const std::size_t third = canonicalName.find('X', second + 1);
    if (third == std::string::npos) return canonicalName;
    return canonicalName.substr(0, first) + canonicalName.substr(second + 1, third - second - 1) +
           "X" + canonicalName.substr(first, second - first) + canonicalName.substr(third);
}

std::size_t EditDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t k = 0; k < b.size(); ++k) {
            const std::size_t changed = diagonal + (a[i] == b[k] ? 0 : 1);
            diagonal = row[k + 1];
            row[k + 1] = std::min({changed, row[k] + 1, row[k + 1] + 1});
        }
    }
    return row.back();
}

}  // namespace halvorn::engine
