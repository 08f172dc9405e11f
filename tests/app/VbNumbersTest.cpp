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

TEST(Val, BlanksInFrontAndBetweenDigitsArePassedOver) {
    EXPECT_EQ(Val(QStringLiteral("   42")), 42);
    EXPECT_EQ(Val(QStringLiteral("\t\r\n 7")), 7);
    EXPECT_EQ(Val(QStringLiteral("1 2 3")), 123);
    EXPECT_EQ(Val(QStringLiteral("1\t2")), 12);
    EXPECT_EQ(Val(QStringLiteral(" 1 2 . 5")), 12.5);
    EXPECT_EQ(Val(QStringLiteral("- 5")), -5);
}

TEST(Val, ReadingStopsAtTheFirstCharacterThatCannotBelongToANumber) {
    EXPECT_EQ(Val(QStringLiteral("12abc")), 12);
    EXPECT_EQ(Val(QStringLiteral("3x4")), 3);
    EXPECT_EQ(Val(QStringLiteral("2.5.6")), 2.5);
    EXPECT_EQ(Val(QStringLiteral("1,000")), 1);
    EXPECT_EQ(Val(QStringLiteral("+7")), 7);
    EXPECT_EQ(Val(QStringLiteral(".5")), 0.5);
    EXPECT_EQ(Val(QStringLiteral("-.5")), -0.5);
    EXPECT_EQ(Val(QStringLiteral("5.")), 5);
    // Text that does not start with a number reads as nothing at all.
    for (const char* junk :
         {"", " ", "junk", "abc12", "$5", "--1", "-", ".", "e5", "&", "&H", "&HG", "&O8"}) {
        SCOPED_TRACE(junk);
        EXPECT_EQ(Val(QString::fromLatin1(junk)), 0);
    }
}

TEST(Val, ExponentIsTakenOnlyWhenItHasDigits) {
    EXPECT_EQ(Val(QStringLiteral("-3.5e2")), -350);
    EXPECT_EQ(Val(QStringLiteral("1E3")), 1000);
    EXPECT_EQ(Val(QStringLiteral("2D2")), 200);
    EXPECT_EQ(Val(QStringLiteral("1e+2")), 100);
    EXPECT_DOUBLE_EQ(Val(QStringLiteral("1.5e-1")), 0.15);
    EXPECT_EQ(Val(QStringLiteral("1e2x")), 100);
    EXPECT_EQ(Val(QStringLiteral("1e")), 1);
    EXPECT_EQ(Val(QStringLiteral("1e+")), 1);
    EXPECT_EQ(Val(QStringLiteral("4E-")), 4);
}

TEST(Val, HexAndOctalOfUpToSixteenBitsAreSigned) {
    EXPECT_EQ(Val(QStringLiteral("&H10")), 16);
    EXPECT_EQ(Val(QStringLiteral("&h1f")), 31);
    EXPECT_EQ(Val(QStringLiteral("  &H1F junk")), 31);
    EXPECT_EQ(Val(QStringLiteral("&HFFFF")), -1);
    EXPECT_EQ(Val(QStringLiteral("&H8000")), -32768);
    EXPECT_EQ(Val(QStringLiteral("&H7FFF")), 32767);
    // Wider literals are 32-bit values.
    EXPECT_EQ(Val(QStringLiteral("&H10000")), 65536);
    EXPECT_EQ(Val(QStringLiteral("&HFFFFFFFF")), -1);
    EXPECT_EQ(Val(QStringLiteral("&O17")), 15);
    EXPECT_EQ(Val(QStringLiteral("&o777")), 511);
    EXPECT_EQ(Val(QStringLiteral("&O177777")), -1);
    EXPECT_EQ(Val(QStringLiteral("&O19")), 1);
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

TEST(HalfEvenRounding, TiesGoToTheEvenNeighbour) {
    EXPECT_EQ(vb::RoundHalfEven(0.5), 0);
    EXPECT_EQ(vb::RoundHalfEven(1.5), 2);
    EXPECT_EQ(vb::RoundHalfEven(2.5), 2);
    EXPECT_EQ(vb::RoundHalfEven(3.5), 4);
    EXPECT_EQ(vb::RoundHalfEven(-0.5), 0);
    EXPECT_EQ(vb::RoundHalfEven(-1.5), -2);
    EXPECT_EQ(vb::RoundHalfEven(-2.5), -2);
    EXPECT_EQ(vb::RoundHalfEven(2.4999), 2);
    EXPECT_EQ(vb::RoundHalfEven(2.5001), 3);
    EXPECT_EQ(vb::RoundHalfEven(-2.5001), -3);
}

TEST(HalfEvenRounding, DoesNotDependOnNorDisturbTheCallersRoundingMode) {
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

TEST(WholeNumbers, IntIsTheFloor) {
    EXPECT_EQ(vb::Int(-1.5), -2);
    EXPECT_EQ(vb::Int(-0.1), -1);
    EXPECT_EQ(vb::Int(1.99), 1);
    EXPECT_EQ(vb::Int(3), 3);
    EXPECT_EQ(vb::Int(-3), -3);
}

TEST(WholeNumbers, SixteenBitValuesWrapAroundBothEnds) {
    EXPECT_EQ(vb::Wrap16(32767), 32767);
    EXPECT_EQ(vb::Wrap16(32768), -32768);
    EXPECT_EQ(vb::Wrap16(33000), -32536);
    EXPECT_EQ(vb::Wrap16(65535), -1);
    EXPECT_EQ(vb::Wrap16(65536), 0);
    EXPECT_EQ(vb::Wrap16(-1), -1);
    EXPECT_EQ(vb::Wrap16(-32768), -32768);
    EXPECT_EQ(vb::Wrap16(-32769), 32767);
    EXPECT_EQ(vb::Wrap16(3LL * 65536 + 5), 5);
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
    EXPECT_EQ(vb::FormatThousands(0), QString());
    EXPECT_EQ(vb::FormatThousands(7), QStringLiteral("7"));
    EXPECT_EQ(vb::FormatThousands(999), QStringLiteral("999"));
    EXPECT_EQ(vb::FormatThousands(1000), QStringLiteral("1,000"));
    EXPECT_EQ(vb::FormatThousands(100000), QStringLiteral("100,000"));
    EXPECT_EQ(vb::FormatThousands(1234567), QStringLiteral("1,234,567"));
    EXPECT_EQ(vb::FormatThousands(-1234), QStringLiteral("-1,234"));
    EXPECT_EQ(vb::FormatThousands(-999), QStringLiteral("-999"));
    EXPECT_EQ(vb::FormatThousands(std::numeric_limits<std::int64_t>::max()),
              QStringLiteral("9,223,372,036,854,775,807"));
    EXPECT_EQ(vb::FormatThousands(std::numeric_limits<std::int64_t>::min()),
              QStringLiteral("-9,223,372,036,854,775,808"));
}

} // namespace
