#include "TestSupport.h"
#include "compose/clsEXIF.h"

#include "app/DebugLog.h"

#include <QDirIterator>
#include <cstdint>
#include <map>
#include <optional>
#include <tuple>
#include <vector>

namespace {

// One directory entry to write. Wide types take their numbers from `numbers` (a rational takes
// two), the one-byte types their bytes from `bytes`. `components` and `offset` lie about the
// count and the value's place when set.
struct Field {
    long tag = 0;
    int format = 0;
    std::vector<std::int64_t> numbers;
    QByteArray bytes;
    std::optional<std::uint32_t> components;
    std::optional<std::uint32_t> offset;
};

Field N(long tag, int format, std::vector<std::int64_t> numbers) {
    return {tag, format, std::move(numbers), {}, {}, {}};
}
Field B(long tag, int format, QByteArray bytes) {
    return {tag, format, {}, std::move(bytes), {}, {}};
}
Field Lying(Field field, std::optional<std::uint32_t> components,
            std::optional<std::uint32_t> offset) {
    field.components = components;
    field.offset = offset;
    return field;
}
// ASCII with its closing zero.
Field A(long tag, const char* text) {
    return B(tag, 2, QByteArray(text, static_cast<qsizetype>(qstrlen(text)) + 1));
}

constexpr int kTiffStart = 12; // after the JPEG start, the APP1 header and "Exif\0\0"

struct BlockWriter {
    bool intel;

    QByteArray Number(std::uint64_t value, int width) const {
        QByteArray out(width, '\0');
        for (int i = 0; i < width; ++i)
            out[intel ? i : width - 1 - i] = static_cast<char>((value >> (8 * i)) & 0xFF);
        return out;
    }

    // A JPEG start, the signature, the TIFF header, IFD0 (with an ExifOffset when `exif` has
    // entries), the Exif directory, then the values too long for their entries.
    QByteArray File(std::vector<Field> ifd0, const std::vector<Field>& exif = {}) const {
        const auto directorySize = [](std::size_t n) { return 6 + 12 * static_cast<int>(n); };
        if (!exif.empty()) ifd0.push_back(N(34665, 4, {8 + directorySize(ifd0.size() + 1)}));
        const int exifStart = 8 + directorySize(ifd0.size());
        int dataStart = exifStart + (exif.empty() ? 0 : directorySize(exif.size()));
        QByteArray data;
        QByteArray tiff = QByteArray(intel ? "II" : "MM") + Number(42, 2) + Number(8, 4);
        const std::vector<Field>* const directories[] = {&ifd0, &exif};
        for (const std::vector<Field>* directory : directories) {
            if (directory->empty()) continue;
            tiff += Number(directory->size(), 2);
            for (const Field& field : *directory) {
                const bool rational = field.format == 5 || field.format == 10;
                const int width = rational || field.format == 4 || field.format == 9 ? 4
                                  : field.format == 3 || field.format == 8           ? 2
                                                                                     : 1;
                QByteArray value = field.bytes;
                for (std::int64_t number : field.numbers)
                    value += Number(static_cast<std::uint64_t>(number), width);
                const auto count = field.components.value_or(static_cast<std::uint32_t>(
                    width == 1 ? value.size() : field.numbers.size() / (rational ? 2 : 1)));
                tiff += Number(static_cast<std::uint64_t>(field.tag), 2) +
                        Number(static_cast<std::uint64_t>(field.format), 2) + Number(count, 4);
                if (field.offset) {
                    tiff += Number(*field.offset, 4);
                } else if (value.size() <= 4) {
                    tiff += value.leftJustified(4, '\0');
                } else {
                    tiff += Number(static_cast<std::uint64_t>(dataStart + data.size()), 4);
                    data += value;
                }
            }
            tiff += Number(0, 4);
        }
        return QByteArray::fromHex("ffd8ffe10000 457869660000") + tiff + data;
    }
};

QString Shown(const clsEXIF& exif, long tag) {
    QString text;
    QVariant value;
    exif.MetaInfo(tag, text, value);
    return text;
}

class ExifFiles : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(dir.isValid()); }
    QString Write(const QByteArray& bytes, const QString& name = QStringLiteral("p.jpg")) {
        return Written(dir.filePath(name), bytes);
    }
    QString IniPath() const { return dir.filePath(QStringLiteral("exif.ini")); }
    // A reader with this folder's exif.ini, given the file.
    clsEXIF Read(const QByteArray& bytes) {
        clsEXIF exif(IniPath());
        exif.SetImageFile(Write(bytes));
        return exif;
    }
    QTemporaryDir dir;
};

struct Decoded {
    Field field;
    const char* text;
};

// Every decoding rule once, in both byte orders.
// clang-format off
const std::vector<Decoded> kDecodings = {
    {N(274, 3, {6}), "6"}, {A(271, "Canon"), "Canon"},
    {A(272, "EOS 40D with a long model name"), "EOS 40D with a long model name"},
    {N(282, 5, {72, 1}), "72.0"}, {N(33434, 5, {10, 1250}), "125"},
    {N(33437, 5, {56, 10}), "5.6"}, {N(37378, 5, {5, 1}), "5.7"},
    {N(37386, 5, {1234, 100}), "12.3"}, {N(296, 5, {300, 7}), "300/7"},
    {N(318, 5, {313, 1000, 329, 1000}), "0.313/0.329"}, {N(37377, 10, {7, 1}), "128"},
    {N(37380, 10, {-2, 3}), "-0.7"}, {N(37379, 10, {-5, 10}), "-5/10"},
    {N(50000, 9, {-5}), "-5"}, {N(50001, 8, {-2}), "-2"}, {B(50002, 6, "\xFE"), "-2"},
    {N(40962, 4, {4294967295}), "4294967295"},
    {B(36864, 7, "0220"), "2.20"}, {B(40960, 7, "0100"), "1.00"},
    {B(37121, 7, QByteArray("\x01\x02\x03\x00", 4)), "YCbCr"}, {B(41728, 7, "\x03"), "3"},
    {B(37500, 7, QByteArray::fromHex("616201ff80 6364001f 657e")), "abcde~"},
    {B(37510, 7, QByteArray("ASCII\x00\x00\x00Hi", 10)), "ASCIIHi"},
};
// clang-format on

TEST_F(ExifFiles, EveryDecodingRuleGivesTheSameTextInBothByteOrders) {
    for (const bool intel : {true, false}) {
        std::vector<Field> fields;
        for (const Decoded& row : kDecodings)
            fields.push_back(row.field);
        const clsEXIF exif = Read(BlockWriter{intel}.File(fields));
        ASSERT_EQ(exif.ReadStatus(), 0);
        EXPECT_EQ(exif.IntelByteAlignment(), intel);
        for (const Decoded& row : kDecodings)
            EXPECT_EQ(Shown(exif, row.field.tag), QString::fromUtf8(row.text))
                << "intel " << intel << " tag " << row.field.tag;
        // Numbers are kept whole, even those beyond 32-bit signed integers.
        QString text;
        QVariant value;
        exif.MetaInfo(40962, text, value);
        EXPECT_EQ(value.toDouble(), 4294967295.0);
    }
}

TEST_F(ExifFiles, TheWalkGoesIntoTheExifDirectoryAndStopsAtTheDateTaken) {
    const clsEXIF exif = Read(BlockWriter{false}.File(
        {A(270, "Harbour at dusk"), N(282, 5, {180, 1}), N(283, 5, {96, 1})},
        {A(36867, "2001:02:03 04:05:06"), A(37520, "42")}));
    EXPECT_EQ(exif.GetOrigDate(), QStringLiteral("2001:02:03 04:05:06"));
    EXPECT_EQ(exif.GetDescription(), QStringLiteral("Harbour at dusk"));
    EXPECT_EQ(exif.GetDimensionsAsString(), QStringLiteral("180.0 x 96.0"));
    EXPECT_EQ(exif.GetOrientation(), 1);
    EXPECT_EQ(Shown(exif, 37520), QStringLiteral("Tag 37520 not found."));
    EXPECT_EQ(exif.ListInfo(), QStringLiteral("ImageDescription: Harbour at dusk\r\n"
                                              "XResolution: 180.0\r\nYResolution: 96.0\r\n"
                                              "ExifOffset: 62\r\n"
                                              "DateTimeOriginal: 2001:02:03 04:05:06\r\n"));
    EXPECT_EQ(clsEXIF::GetTagName(41730), QStringLiteral("CFAPattern"));
    EXPECT_EQ(clsEXIF::GetTagName(50000), QStringLiteral("Tag #50000"));
}

TEST_F(ExifFiles, ExifIniRewritesValuesByTagName) {
    const std::vector<std::tuple<const char*, Field, const char*>> rows = {
        {"[Flash]\n1=Fired\n", N(37385, 3, {1}), "Fired"},
        {"[flash]\r\n 1 = Fired \r\n", N(37385, 3, {1}), "Fired"},
        {"[Flash]\n1=Fired\n", N(37385, 3, {0}), "0"},
        {"[FNumber]\nFormat=f/@X\n", N(33437, 5, {56, 10}), "f/5.6"},
        {"[Flash]\n1=Fired\nFormat=Flash: @X\n", N(37385, 3, {1}), "Flash: Fired"},
        {"[Orientation]\n6=Rotate right\n", N(274, 3, {6}), "Rotate right"},
    };
    for (const auto& [ini, field, text] : rows) {
        Write(ini, QStringLiteral("exif.ini"));
        const clsEXIF exif = Read(BlockWriter{true}.File({field}));
        EXPECT_EQ(Shown(exif, field.tag), QString::fromLatin1(text)) << ini;
        // Words make the orientation 0: nothing to turn.
        if (field.tag == 274) {
            EXPECT_EQ(exif.GetOrientation(), 0) << ini;
        }
    }
}

TEST_F(ExifFiles, FilesWithoutABlockSayWhyInEveryAnswerAndInTheLog) {
    struct Row {
        const char* name;
        std::optional<QByteArray> bytes; // none: the file does not exist
        long status;
        const char* word;
        const char* list;
    };
    const std::vector<Row> rows = {
        {"missing", std::nullopt, 2, "file-open-problem", "Could not open the file."},
        {"empty", QByteArray(), 2, "file-open-problem", "Could not open the file."},
        {"no signature", QByteArray::fromHex("ffd8ffe0") + QByteArray(" JFIF Exif\0x", 12), 1,
         "notEXIF", "File is not in EXIF format."},
        {"signature beyond 4096 bytes", QByteArray(4096, 'x') + BlockWriter{true}.File({}), 1,
         "notEXIF", "File is not in EXIF format."},
    };
    const QString log = dir.filePath(QStringLiteral("log.txt"));
    DebugLog::instance().Open(log);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        clsEXIF exif(IniPath());
        exif.SetImageFile(row.bytes ? Write(*row.bytes, QString::fromLatin1(row.name))
                                    : dir.filePath(QStringLiteral("absent.jpg")));
        EXPECT_EQ(exif.ReadStatus(), row.status);
        for (const QString& answer :
             {exif.GetOrigDate(), exif.GetDescription(), exif.GetDimensionsAsString()})
            EXPECT_EQ(answer, QLatin1String(row.word));
        EXPECT_EQ(exif.ListInfo(), QLatin1String(row.list));
        EXPECT_EQ(exif.GetOrientation(), 1);
        QString text = QStringLiteral("kept");
        QVariant value;
        exif.MetaInfo(274, text, value);
        EXPECT_EQ(text, QStringLiteral("kept"));
    }
    DebugLog::instance().SetOff();
    QFile file(log);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray written = file.readAll();
    EXPECT_EQ(written.count("@@@@ clsEXIF error : MetaInfo File is not in EXIF format \r\n"), 2);
    EXPECT_EQ(written.count("@@@@ clsEXIF error : MetaInfo - error parsing the file \r\n"), 2);
}

// Offsets and counts from the file are not to be trusted: each of these must read what can
// be read, and nothing outside the buffer (the sanitizer build checks the second half).
TEST_F(ExifFiles, HostileBlocksGiveShortOrEmptyValues) {
    const BlockWriter w{true};
    const Field orientation = N(274, 3, {3});
    // A description 20 bytes long whose first 6 bytes are the last of the 4096-byte window.
    QByteArray pastWindow = w.File({Lying(B(270, 2, {}), 20, 4090 - kTiffStart)});
    pastWindow += QByteArray(6000, 'z');
    pastWindow.replace(4090, 20, "ABCDEFGHIJKLMNOPQRST");
    // clang-format off
    const std::vector<std::tuple<const char*, QByteArray, std::map<long, const char*>>> rows = {
        {"entry count 65535",
         w.File({orientation}).replace(kTiffStart + 8, 2, w.Number(65535, 2)), {{274, "3"}}},
        {"IFD0 past the window",
         w.File({orientation}).replace(kTiffStart + 4, 4, w.Number(0xFFFFFFF0, 4)),
         {{274, "Tag 274 not found."}}},
        {"ExifOffset past the window", w.File({orientation, N(34665, 4, {5000000})}),
         {{274, "3"}, {34665, "5000000"}}},
        {"directory cut in an entry", w.File({orientation, orientation}).chopped(10), {{274, "3"}}},
        {"value cut by the end of the file",
         w.File({B(270, 2, "0123456789abcdefghij")}).chopped(10), {{270, "0123456789"}}},
        {"value cut by the 4096-byte window", pastWindow, {{270, "ABCDEF"}}},
        {"value starting past the window", w.File({Lying(B(270, 2, {}), 20, 0xFFFFFFFF)}),
         {{270, ""}}},
        {"huge component counts", w.File({Lying(N(282, 5, {72, 1}), 0xFFFFFFFF, {}),
                                          Lying(N(318, 5, {1, 2, 3, 4}), 0xFFFFFFFF, {})}),
         {{282, "72.0"}, {318, "0.500/0.750"}}},
        {"formats 0 and 200", w.File({B(274, 0, "\x06"), B(50001, 200, "\x06")}),
         {{274, "0"}, {50001, "0"}}},
        {"zero denominators",
         w.File({N(33434, 5, {1, 0}), N(33437, 5, {5, 0}), N(37379, 10, {5, 0}),
                 N(318, 5, {1, 0, 1, 0}), N(37377, 10, {-1, 0})}),
         {{33434, ""}, {33437, ""}, {37379, "5/0"}, {318, "/"}, {37377, ""}}},
        {"an exposure of 0 seconds", w.File({N(33434, 5, {0, 1})}), {{33434, ""}}},
        {"signature at the very end", QByteArray::fromHex("ffd8 45786966 0000"),
         {{274, "Tag 274 not found."}}},
    };
    // clang-format on
    for (const auto& [name, bytes, texts] : rows) {
        const clsEXIF exif = Read(bytes);
        EXPECT_EQ(exif.ReadStatus(), 0) << name;
        for (const auto& [tag, text] : texts)
            EXPECT_EQ(Shown(exif, tag), QString::fromLatin1(text)) << name << ", tag " << tag;
        exif.ListInfo();
    }
}

TEST(ExifIniPlace, ExifIniSitsInTheInstallFolder) {
    const QString saved = InstallDir;
    for (const char* folder : {"/opt/tv", "/opt/tv/"}) {
        InstallDir = QString::fromLatin1(folder);
        EXPECT_EQ(clsEXIF().IniFile(), QStringLiteral("/opt/tv/exif.ini"));
    }
    InstallDir = saved;
}

// Files as cameras and programs wrote them.
class ExifSamples : public ::testing::Test {
protected:
    void SetUp() override {
        if (!QDir(root).exists())
            GTEST_SKIP() << "The real-world samples are not there: " << root.toStdString();
    }
    clsEXIF Read(const QString& name) const {
        clsEXIF exif(QStringLiteral("/nonexistent/exif.ini"));
        exif.SetImageFile(root + QLatin1Char('/') + name);
        return exif;
    }
    const QString root =
        QStringLiteral(TESSAVIEW_SOURCE_DIR "/../shared/realworld/exif-samples/jpg");
};

TEST_F(ExifSamples, EveryFileReadsWithoutHarm) {
    int read = 0;
    QDirIterator files(root, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        SCOPED_TRACE(path.toStdString());
        const clsEXIF exif = Read(QDir(root).relativeFilePath(path));
        EXPECT_GE(exif.ReadStatus(), 0);
        EXPECT_LE(exif.ReadStatus(), 2);
        exif.ListInfo();
        exif.GetDimensionsAsString();
        if (exif.ReadStatus() == 0) ++read;
    }
    EXPECT_GT(read, 50);
}

TEST_F(ExifSamples, OrientationsDatesAndDescriptionsAreWhatTheCamerasStored) {
    for (const char* shape : {"landscape", "portrait"})
        for (int n = 1; n <= 8; ++n) {
            const QString name = QStringLiteral("orientation/%1_%2.jpg").arg(shape).arg(n);
            EXPECT_EQ(Read(name).GetOrientation(), n) << name.toStdString();
        }
    // clang-format off
    const std::vector<std::pair<const char*, const char*>> dates = {
        {"Canon_40D.jpg", "2008:05:30 15:56:01"}, {"Nikon_D70.jpg", "2008:03:15 09:52:01"},
        {"Fujifilm_FinePix_E500.jpg", "2006:08:17 09:24:48"},
        {"exif-org/kodak-dc240.jpg", "1999:05:25 21:00:09"}, {"xmp/no_exif.jpg", "notEXIF"}};
    // clang-format on
    for (const auto& [name, date] : dates)
        EXPECT_EQ(Read(QString::fromLatin1(name)).GetOrigDate(), QLatin1String(date)) << name;
    const QString description = Read(QStringLiteral("long_description.jpg")).GetDescription();
    EXPECT_TRUE(description.startsWith("Operation Mountain Viper put the"));
    EXPECT_TRUE(description.endsWith("(U.S. Army photo by Staff Sgt. Kyle Davis) (Released)"));
}

} // namespace
