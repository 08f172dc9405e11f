#include "app/VbNumbers.h"

#include <cfenv>
#include <charconv>
#include <cmath>
#include <limits>

namespace vb {
namespace {

bool IsBlank(QChar c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// Reads a number from text[pos...]. Returns the value and how far it read.
struct Scan {
    double value = 0;
    int end = 0;      // one past the last character that belongs to the number
    bool any = false; // at least one digit was read
};

Scan ScanNumber(const QString& text, bool skipInnerBlanks) {
    Scan s;
    int i = 0;
    const int n = static_cast<int>(text.size());
    auto skip = [&] {
        while (i < n && IsBlank(text[i]))
            ++i;
    };
    skip();
    if (i + 1 < n && text[i] == '&') {
        QChar kind = text[i + 1].toUpper();
        int base = kind == 'H' ? 16 : (kind == 'O' ? 8 : 0);
        if (base != 0) {
            i += 2;
            std::uint64_t v = 0;
            int digits = 0;
            while (i < n) {
                int d = -1;
                QChar c = text[i].toUpper();
                if (c >= '0' && c <= '9')
                    d = c.unicode() - '0';
                else if (base == 16 && c >= 'A' && c <= 'F')
                    d = c.unicode() - 'A' + 10;
                if (d < 0 || d >= base) break;
                v = v * static_cast<std::uint64_t>(base) + static_cast<std::uint64_t>(d);
                ++digits;
                ++i;
            }
            if (digits > 0) {
                // Hex and octal literals of up to 16 bits are 16-bit signed values.
                if (digits <= (base == 16 ? 4 : 6) && v <= 0xFFFF)
                    s.value = static_cast<std::int16_t>(static_cast<std::uint16_t>(v));
                else if (v <= 0xFFFFFFFFull)
                    s.value = static_cast<std::int32_t>(static_cast<std::uint32_t>(v));
                else
                    s.value = static_cast<double>(v);
                s.any = true;
                s.end = i;
            }
            return s;
        }
    }
    std::string digits;
    if (i < n && (text[i] == '+' || text[i] == '-')) {
        if (text[i] == '-') digits += '-';
        ++i;
        if (skipInnerBlanks) skip();
    }
    bool point = false;
    while (i < n) {
        QChar c = text[i];
        if (c >= '0' && c <= '9') {
            digits += static_cast<char>(c.unicode());
            s.any = true;
            s.end = i + 1;
        } else if (c == '.' && !point) {
            point = true;
            digits += '.';
            if (s.any) s.end = i + 1;
        } else if (skipInnerBlanks && IsBlank(c)) {
            // Blanks inside a number are passed over.
        } else {
            break;
        }
        ++i;
    }
    if (!s.any) return s;
    if (i < n && (text[i].toUpper() == 'E' || text[i].toUpper() == 'D')) {
        int j = i + 1;
        std::string exp = "e";
        if (j < n && (text[j] == '+' || text[j] == '-'))
            exp += static_cast<char>(text[j++].unicode());
        int expDigits = 0;
        while (j < n && text[j] >= '0' && text[j] <= '9') {
            exp += static_cast<char>(text[j++].unicode());
            ++expDigits;
        }
        if (expDigits > 0) {
            digits += exp;
            s.end = j;
        }
    }
    // from_chars, unlike strtod, ignores the locale: a user's decimal comma must not change how
    // the program's own files read.
    double parsed = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), parsed);
    s.value = result.ec == std::errc() && std::isfinite(parsed) ? parsed : 0;
    return s;
}

} // namespace

double Val(const QString& text) {
    return ScanNumber(text, true).value;
}

bool IsNumeric(const QString& text) {
    QString t = text.trimmed();
    if (t.isEmpty()) return false;
    Scan s = ScanNumber(t, false);
    return s.any && s.end == t.size();
}

double RoundHalfEven(double value) {
    const int old = std::fegetround();
    std::fesetround(FE_TONEAREST);
    double r = std::nearbyint(value);
    std::fesetround(old);
    return r;
}

double Int(double value) {
    return std::floor(value);
}

std::int16_t Wrap16(std::int64_t value) {
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(static_cast<std::uint64_t>(value)));
}

namespace {
template <typename T> std::optional<T> Whole(double value) {
    const double r = RoundHalfEven(value);
    if (!(r >= static_cast<double>(std::numeric_limits<T>::min()) &&
          r <= static_cast<double>(std::numeric_limits<T>::max())))
        return std::nullopt;
    return static_cast<T>(r);
}
} // namespace

std::optional<std::int16_t> CInt(double value) {
    return Whole<std::int16_t>(value);
}

std::optional<std::int32_t> CLng(double value) {
    return Whole<std::int32_t>(value);
}

std::optional<float> CSng(double value) {
    if (std::isnan(value) ||
        std::abs(value) > static_cast<double>(std::numeric_limits<float>::max()))
        return std::nullopt;
    return static_cast<float>(value);
}

QString FormatThousands(std::int64_t value) {
    if (value == 0) return QString();
    bool negative = value < 0;
    std::uint64_t v =
        negative ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
    QString digits = QString::number(v);
    QString out;
    int count = 0;
    for (int i = static_cast<int>(digits.size()) - 1; i >= 0; --i) {
        out.prepend(digits[i]);
        if (++count % 3 == 0 && i > 0) out.prepend(',');
    }
    return negative ? '-' + out : out;
}

} // namespace vb
