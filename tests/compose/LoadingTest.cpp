#include "TestSupport.h"

#include "compose/FrameImage.h"

#include <QBuffer>

namespace {

class Loading : public ShowFixture {
protected:
    void SetUp() override {
        ShowFixture::SetUp();
        show->OpenDebugLog();
    }
    QString Write(const QString& name, const QByteArray& bytes) {
        return Written(install.filePath(name), bytes);
    }
    static QByteArray Jpeg(QSize size) {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        Solid(size, Qt::darkCyan).save(&buffer, "JPEG", 90);
        return bytes;
    }
    // The head of the list composed as a Normal frame: whether a frame came of it, and what the
    // log said.
    bool Compose(const QString& entry, QStringList* log = nullptr) {
        show->ShowList.clear();
        show->CaptionsList.clear();
        show->ShowList.add(entry, 0);
        show->CaptionsList.add(QString(), 0);
        show->NextImageReady = false;
        show->lstDebug->clear();
        show->AssembleCanvas(0);
        if (log) *log = LogLines(show);
        return show->NextImageReady;
    }
};

// A picture that cannot be shown costs that picture only: no frame, a line in the log, and the
// show's memory never asked for what a lying header claims.
TEST_F(Loading, BadFilesArePassedOverWithTheirLogLines) {
    const QByteArray good = Jpeg(QSize(64, 48));
    QByteArray huge = Jpeg(QSize(16, 16));
    // The frame header (SOF0) holds height and width after its length and precision.
    const auto sof = huge.indexOf(QByteArray("\xFF\xC0", 2));
    ASSERT_GT(sof, 0);
    for (int i : {5, 7}) {
        huge[sof + i] = static_cast<char>(0xC3);
        huge[sof + i + 1] = static_cast<char>(0x50); // 50000
    }
    // Its header reads, but without a quantisation table no line of it decodes.
    QByteArray untabled = good;
    const auto dqt = untabled.indexOf(QByteArray("\xFF\xDB", 2));
    ASSERT_GT(dqt, 0);
    untabled[dqt + 1] = static_cast<char>(0xFE); // a comment now
    const std::pair<QString, const char*> rows[] = {
        {Write(QStringLiteral("untabled.jpg"), untabled), "LoadIntoDIB Error - could not get DIB"},
        {Write(QStringLiteral("cut.jpg"), good.left(good.size() / 2)),
         "LoadIntoDIB Error - could not get DIB"},
        {Write(QStringLiteral("words.jpg"), "this is a letter, not a photograph"),
         "LoadIntoDIB Error - could not get DIB"},
        {Write(QStringLiteral("picture.xyz"), good),
         "LoadIntoDIB Error - don't know the file type ?"},
        {install.filePath(QStringLiteral("gone.jpg")), "LoadIntoDIB Error - could not get DIB"},
        {Write(QStringLiteral("huge.jpg"), huge),
         "LoadIntoDIB Error - the image is too large (50000 x 50000)"},
    };
    for (const auto& [path, line] : rows) {
        SCOPED_TRACE(path.toStdString());
        QStringList log;
        EXPECT_FALSE(Compose(path, &log));
        EXPECT_TRUE(log.contains(QString::fromLatin1(line))) << log.join('\n').toStdString();
    }
    EXPECT_TRUE(Compose(Write(QStringLiteral("good.jpg"), good)));
}

// A run of unreadable entries ends on the next good one; when there is none, on the logo.
TEST_F(Loading, PrepNextFrameWalksPastBrokenEntries) {
    const QString good = Write(QStringLiteral("good.jpg"), Jpeg(QSize(40, 30)));
    for (int i = 0; i < 200; ++i) {
        show->ShowList.add(install.filePath(QStringLiteral("missing%1.jpg").arg(i)), i);
        show->CaptionsList.add(QString(), i);
    }
    show->ShowList.add(good, 999);
    show->CaptionsList.add(QString(), 999);
    show->PrepNextFrame();
    ASSERT_TRUE(show->NextImageReady);
    EXPECT_EQ(show->ShowList.text(0), good);

    show->ShowList.clear();
    show->CaptionsList.clear();
    show->ImageList.clear();
    show->ShowList.add(install.filePath(QStringLiteral("missing.jpg")), 1);
    show->CaptionsList.add(QString(), 1);
    show->PrepNextFrame();
    ASSERT_TRUE(show->NextImageReady);
    EXPECT_EQ(show->ShowList.text(0), QStringLiteral("INTERNAL:0"));
}

// A photo larger than its monitor is fitted as the rules say, turned upright first.
TEST_F(Loading, ALargeSidewaysJpegComesUprightAndFitted) {
    QByteArray bytes = Jpeg(QSize(1600, 1200));
    // The smallest EXIF block that says "turn 90 degrees clockwise to view" (orientation 6).
    const QByteArray exif(
        "\xFF\xE1\x00\x22"
        "Exif\x00\x00"
        "II\x2A\x00\x08\x00\x00\x00"
        "\x01\x00\x12\x01\x03\x00\x01\x00\x00\x00\x06\x00\x00\x00\x00\x00\x00\x00",
        36);
    bytes.insert(2, exif);
    const QString path = Write(QStringLiteral("sideways.jpg"), bytes);
    ASSERT_TRUE(Compose(path));
    EXPECT_EQ(show->EXIFOrientation, 6);
    // Upright it is 1200 x 1600, and it is sized as a portrait: narrowed to the monitor's width
    // and, taller than the monitor, left to scroll.
    const int monitorW = show->MonitorWidth[static_cast<std::size_t>(show->NextMonitorSet)];
    EXPECT_EQ(show->imageW, std::min(1200, monitorW));
    EXPECT_EQ(show->imageH, (show->imageW * 4 + 1) / 3);
    EXPECT_EQ(show->ImageSizeText[static_cast<std::size_t>(show->NextFrameSlot)],
              QStringLiteral("1200 x 1600"));
}

} // namespace
