#include "app/VbNumbers.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <cfenv>
#include <clocale>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <string>

namespace {

using vb::Val;

TEST(Val, ReadsTheNumberAtTheFrontOfTheText) {
    const std::pair<const char*, double> rows[] = {
        // clang-format off
        // Blanks in front and between digits are passed over.
        {"   42", 42}, {"\t\r\n 7", 7}, {"1 2 3", 123}, {"1\t2", 12}, {" 1 2 . 5", 12.5},
        {"- 5", -5},
        // Reading stops at the first character that cannot belong to a number.
        {"12abc", 12}, {"3x4", 3}, {"2.5.6", 2.5}, {"1,000", 1}, {"+7", 7}, {".5", 0.5},
        {"-.5", -0.5}, {"5.", 5},
        // The exponent is taken only when it has digits.
        {"-3.5e2", -350}, {"1E3", 1000}, {"2D2", 200}, {"1e+2", 100}, {"1.5e-1", 0.15},
        {"1e2x", 100}, {"1e", 1}, {"1e+", 1}, {"4E-", 4},
        // Hex and octal of up to sixteen bits are signed; wider literals are 32-bit values.
        {"&H10", 16}, {"&h1f", 31}, {"  &H1F junk", 31}, {"&HFFFF", -1}, {"&H8000", -32768},
        {"&H7FFF", 32767}, {"&H10000", 65536}, {"&HFFFFFFFF", -1}, {"&O17", 15}, {"&o777", 511},
        {"&O177777", -1}, {"&O19", 1},
        // Text that does not start with a number reads as nothing at all.
        {"", 0}, {" ", 0}, {"junk", 0}, {"abc12", 0}, {"$5", 0}, {"--1", 0}, {"-", 0}, {".", 0},
        {"e5", 0}, {"&", 0}, {"&H", 0}, {"&HG", 0}, {"&O8", 0},
        // clang-format on
    };
    for (auto [text, value] : rows)
        EXPECT_DOUBLE_EQ(Val(QString::fromLatin1(text)), value) << '"' << text << '"';
}

// The program calls the C library with the user's locale in force (QApplication sets it from
// the environment), and settings, preference files and text boxes always write "0.5". A user
// whose locale writes "0,5" must still get one half.
class ValUnderADecimalCommaLocale : public ::testing::Test {
protected:
    void SetUp() override {
        const char* current = std::setlocale(LC_NUMERIC, nullptr);
        savedLocale_ = current ? current : "C";
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "nl_NL.UTF-8"})
            if (Use(name)) return;

        // None is installed: build one that has nothing but a decimal comma.
        const QString localedef = QStandardPaths::findExecutable(QStringLiteral("localedef"));
        if (localedef.isEmpty() || !dir_.isValid())
            GTEST_SKIP() << "no locale with a decimal comma can be had here";
        QFile source(dir_.filePath(QStringLiteral("comma.src")));
        ASSERT_TRUE(source.open(QIODevice::WriteOnly));
        source.write("LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \".\"\ngrouping 3;3\n"
                     "END LC_NUMERIC\n");
        source.close();
        QProcess build;
        build.setProcessChannelMode(QProcess::MergedChannels);
        // -c: the other categories are missing on purpose.
        build.start(localedef, {QStringLiteral("-c"), QStringLiteral("-i"), source.fileName(),
                                dir_.filePath(QStringLiteral("comma"))});
        build.waitForFinished(30000);
        if (!QFile::exists(dir_.filePath(QStringLiteral("comma/LC_NUMERIC"))))
            GTEST_SKIP() << "localedef could not build a decimal comma locale";
        hadLocPath_ = qEnvironmentVariableIsSet("LOCPATH");
        savedLocPath_ = qgetenv("LOCPATH");
        qputenv("LOCPATH", QFile::encodeName(dir_.path()));
        changedLocPath_ = true;
        if (!Use("comma")) GTEST_SKIP() << "the C library refused the decimal comma locale";
    }

    void TearDown() override {
        std::setlocale(LC_NUMERIC, savedLocale_.c_str());
        if (!changedLocPath_) return;
        if (hadLocPath_)
            qputenv("LOCPATH", savedLocPath_);
        else
            qunsetenv("LOCPATH");
    }

private:
    bool Use(const char* name) {
        if (!std::setlocale(LC_NUMERIC, name)) return false;
        if (std::string(std::localeconv()->decimal_point) == ",") return true;
        std::setlocale(LC_NUMERIC, savedLocale_.c_str());
        return false;
    }

    std::string savedLocale_;
    QTemporaryDir dir_;
    bool hadLocPath_ = false;
    bool changedLocPath_ = false;
    QByteArray savedLocPath_;
};

TEST_F(ValUnderADecimalCommaLocale, ThePointIsStillTheDecimalPoint) {
    EXPECT_EQ(Val(QStringLiteral("0.5")), 0.5);
    EXPECT_EQ(Val(QStringLiteral("-3.5e2")), -350);
    EXPECT_EQ(Val(QStringLiteral("1.5E3")), 1500);
    EXPECT_EQ(Val(QStringLiteral(".25")), 0.25);
    // And a comma is still where the number ends.
    EXPECT_EQ(Val(QStringLiteral("0,5")), 0);
    EXPECT_TRUE(vb::IsNumeric(QStringLiteral("0.5")));
    EXPECT_FALSE(vb::IsNumeric(QStringLiteral("0,5")));
}

TEST(IsNumeric, TheWholeTextMustBeOneNumber) {
    for (const char* yes : {" 1234", "1234 ", "\t12\t", "5.", ".5", "-7", "+7", "-0.25", "1e5",
                            "2.5E-3", "&H1F", "&O17"}) {
        SCOPED_TRACE(yes);
        EXPECT_TRUE(vb::IsNumeric(QString::fromLatin1(yes)));
    }
    for (const char* no : {"", "   ", ":1234", "1 2", "12x", "x12", "-", "+", ".", "1e", "1e+",
                           "1.2.3", "&H", "&HZ", "1,5"}) {
        SCOPED_TRACE(no);
        EXPECT_FALSE(vb::IsNumeric(QString::fromLatin1(no)));
    }
}

TEST(WholeNumbers, RoundingFloorAndSixteenBitWrapInAnyRoundingMode) {
    // clang-format off
    // Ties go to the even neighbour.
    const std::pair<double, int> rounded[] = {{0.5, 0}, {1.5, 2}, {2.5, 2}, {3.5, 4}, {-0.5, 0},
        {-1.5, -2}, {-2.5, -2}, {2.4999, 2}, {2.5001, 3}, {-2.5001, -3}};
    // Int is the floor.
    const std::pair<double, int> floored[] = {{-1.5, -2}, {-0.1, -1}, {1.99, 1}, {3.0, 3},
        {-3.0, -3}};
    // Sixteen-bit values wrap around both ends.
    const std::pair<long long, int> wrapped[] = {{32767, 32767}, {32768, -32768}, {33000, -32536},
        {65535, -1}, {65536, 0}, {-1, -1}, {-32768, -32768}, {-32769, 32767}, {3LL * 65536 + 5, 5}};
    // clang-format on
    for (auto [value, whole] : rounded)
        EXPECT_EQ(vb::RoundHalfEven(value), whole) << value;
    for (auto [value, whole] : floored)
        EXPECT_EQ(vb::Int(value), whole) << value;
    for (auto [value, whole] : wrapped)
        EXPECT_EQ(vb::Wrap16(value), whole) << value;

    // Half-even rounding neither depends on nor disturbs the caller's rounding mode.
    const int old = std::fegetround();
    ASSERT_EQ(std::fesetround(FE_UPWARD), 0);
    const double twoAndAHalf = vb::RoundHalfEven(2.5);
    const double belowHalf = vb::RoundHalfEven(2.2);
    const int during = std::fegetround();
    std::fesetround(old);
    EXPECT_EQ(twoAndAHalf, 2);
    EXPECT_EQ(belowHalf, 2);
    EXPECT_EQ(during, FE_UPWARD);
}

// A conversion gives nothing when the value does not fit, so that the caller keeps what it
// had; only the watchdog's arithmetic wraps, and it says so with Wrap16.
TEST(Conversions, RoundHalfEvenAndRefuseWhatDoesNotFit) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    struct Row {
        double value;
        std::optional<std::int16_t> integer;
        std::optional<std::int32_t> whole;
        std::optional<float> single;
    };
    const Row rows[] = {
        {4.5, 4, 4, 4.5f},
        {5.5, 6, 6, 5.5f},
        {-4.5, -4, -4, -4.5f},
        {32767.0, 32767, 32767, 32767.0f},
        {32767.5, std::nullopt, 32768, 32767.5f},
        {32768.0, std::nullopt, 32768, 32768.0f},
        {-32768.5, -32768, -32768, -32768.5f},
        {-32769.0, std::nullopt, -32769, -32769.0f},
        {70000.0, std::nullopt, 70000, 70000.0f},
        {2147483647.0, std::nullopt, 2147483647, 2147483647.0f},
        {2147483647.5, std::nullopt, std::nullopt, 2147483647.5f},
        {-2147483648.0, std::nullopt, std::numeric_limits<std::int32_t>::min(), -2147483648.0f},
        {1e10, std::nullopt, std::nullopt, 1e10f},
        {1e39, std::nullopt, std::nullopt, std::nullopt},
        {vb::Val(QStringLiteral("junk")), 0, 0, 0.0f},
        {kNaN, std::nullopt, std::nullopt, std::nullopt},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.value);
        EXPECT_EQ(vb::CInt(r.value), r.integer);
        EXPECT_EQ(vb::CLng(r.value), r.whole);
        EXPECT_EQ(vb::CSng(r.value), r.single);
    }
}

TEST(ThousandsFormat, GroupsOfThreeAndNothingForZero) {
    // clang-format off
    const std::pair<std::int64_t, const char*> rows[] = {{0, ""}, {999, "999"}, {1000, "1,000"},
        {100000, "100,000"}, {1234567, "1,234,567"}, {-1234, "-1,234"}, {-999, "-999"},
        {std::numeric_limits<std::int64_t>::max(), "9,223,372,036,854,775,807"},
        {std::numeric_limits<std::int64_t>::min(), "-9,223,372,036,854,775,808"}};
    // clang-format on
    for (auto [number, text] : rows)
        EXPECT_EQ(vb::FormatThousands(number), QLatin1String(text)) << number;
}

} // namespace
