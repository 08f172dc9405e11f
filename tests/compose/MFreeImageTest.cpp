#include "compose/MFreeImage.h"
#include "app/modMain.h"
#include "compose/FrameImage.h"
#include "compose/JpegScaled.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>

using dib::Dib;

namespace {

Dib Make(int w, int h, int bpp) {
    return Dib(
        FreeImage_Allocate(w, h, bpp, FI_RGBA_RED_MASK, FI_RGBA_GREEN_MASK, FI_RGBA_BLUE_MASK));
}

// A 32-bit picture of one colour, filled a pixel at a time by the library itself.
Dib Filled(int w, int h, RGBQUAD colour) {
    Dib d = Make(w, h, 32);
    for (unsigned x = 0; x < static_cast<unsigned>(w); ++x)
        for (unsigned y = 0; y < static_cast<unsigned>(h); ++y)
            FreeImage_SetPixelColor(d.get(), x, y, &colour);
    return d;
}

QSize SizeOf(const Dib& d) {
    return {static_cast<int>(FreeImage_GetWidth(d.get())),
            static_cast<int>(FreeImage_GetHeight(d.get()))};
}

// Mean absolute difference per channel of two images of one size, 0 to 255.
double MeanDifference(const QImage& a, const QImage& b) {
    const QImage x = a.convertToFormat(QImage::Format_RGB32);
    const QImage y = b.convertToFormat(QImage::Format_RGB32);
    if (x.size() != y.size()) return 255;
    double sum = 0;
    for (int row = 0; row < x.height(); ++row) {
        const auto* p = reinterpret_cast<const QRgb*>(x.constScanLine(row));
        const auto* q = reinterpret_cast<const QRgb*>(y.constScanLine(row));
        for (int col = 0; col < x.width(); ++col)
            sum += std::abs(qRed(p[col]) - qRed(q[col])) +
                   std::abs(qGreen(p[col]) - qGreen(q[col])) +
                   std::abs(qBlue(p[col]) - qBlue(q[col]));
    }
    return sum / (3.0 * x.width() * x.height());
}

QString Samples() {
    return QStringLiteral(TESSAVIEW_SOURCE_DIR "/../shared/realworld/exif-samples/jpg");
}

} // namespace

// The row the eye sees at the top must stay at the top both ways, whatever the depth.
TEST(DibPictures, RoundTripsKeepTheTopRowOnTop) {
    for (int bpp : {8, 24, 32}) {
        SCOPED_TRACE(bpp);
        Dib d(bpp == 8 ? FreeImage_Allocate(3, 2, 8) : Make(3, 2, bpp).release());
        if (bpp == 8) {
            RGBQUAD* palette = FreeImage_GetPalette(d.get());
            for (int i = 0; i < 256; ++i)
                palette[i] =
                    RGBQUAD{static_cast<BYTE>(i), static_cast<BYTE>(i), static_cast<BYTE>(i), 0};
        }
        // Scan line 1 is the top of a two-row bitmap.
        for (unsigned x = 0; x < 3; ++x) {
            if (bpp == 8) {
                BYTE white = 255;
                FreeImage_SetPixelIndex(d.get(), x, 1, &white);
            } else {
                RGBQUAD white{255, 255, 255, 255};
                FreeImage_SetPixelColor(d.get(), x, 1, &white);
            }
        }
        const QImage picture = dib::DibToImage(d.get());
        ASSERT_EQ(picture.size(), QSize(3, 2));
        EXPECT_EQ(qRed(picture.pixel(0, 0)), 255);
        EXPECT_EQ(qRed(picture.pixel(0, 1)), 0);
        Dib back(dib::ImageToDib(picture));
        const QImage again = dib::DibToImage(back.get());
        EXPECT_EQ(again, picture);
    }
}

// The fill gives the pixels one library call a pixel would, column 0 and scan line 0 left alone.
TEST(DibFill, SameBytesAsAPixelByPixelFill) {
    for (auto [w, h, bpp] : {std::tuple{5, 4, 24}, std::tuple{5, 4, 32}, std::tuple{1, 3, 24},
                             std::tuple{7, 1, 32}, std::tuple{33, 9, 24}}) {
        SCOPED_TRACE(testing::Message() << w << "x" << h << "x" << bpp);
        Dib fast = Make(w, h, bpp), slow = Make(w, h, bpp);
        ASSERT_TRUE(MFreeImage::FillDIBWithColour(fast.get(), 0x3366CC));
        RGBQUAD quad{0x33, 0x66, 0xCC, 255}; // blue, green, red: red is the low byte of the colour
        for (unsigned x = 1; x <= static_cast<unsigned>(w); ++x)
            for (unsigned y = 1; y <= static_cast<unsigned>(h); ++y)
                FreeImage_SetPixelColor(slow.get(), x, y, &quad);
        for (int y = 0; y < h; ++y)
            EXPECT_EQ(std::memcmp(FreeImage_GetScanLine(fast.get(), y),
                                  FreeImage_GetScanLine(slow.get(), y),
                                  static_cast<std::size_t>(w * bpp / 8)),
                      0)
                << "scan line " << y;
    }
}

TEST(DibPaste, ClipsAtTheEdgesAndRefusesNegativeOffsets) {
    Dib canvas = Make(20, 10, 24);
    Dib sub = Filled(6, 4, RGBQUAD{0, 0, 255, 255});
    QString text;
    EXPECT_FALSE(MFreeImage::PasteDIBWithAlpha(sub.get(), canvas, -1, 2, text));
    EXPECT_EQ(text, QStringLiteral("One of the pasting offsets is negative.  Px / Py = -1 / 2"));
    EXPECT_EQ(dib::DibToImage(canvas.get()).pixel(0, 2), qRgb(0, 0, 0));

    // Overhanging the right edge by 2 and the bottom by 1: the rest is pasted.
    ASSERT_TRUE(MFreeImage::PasteDIBWithAlpha(sub.get(), canvas, 16, 7, text));
    EXPECT_EQ(text, QStringLiteral("(alpha paste ok)"));
    const QImage seen = dib::DibToImage(canvas.get());
    // The blend through an alpha of 255 may round the last bit away.
    EXPECT_GE(qRed(seen.pixel(16, 7)), 254);
    EXPECT_GE(qRed(seen.pixel(19, 9)), 254);
    EXPECT_EQ(seen.pixel(15, 7), qRgb(0, 0, 0));
    EXPECT_EQ(seen.pixel(16, 6), qRgb(0, 0, 0));
}

TEST(DibBorder, TwentyPixelsOnEverySide) {
    Dib image = Filled(10, 6, RGBQUAD{0, 255, 0, 255});
    ASSERT_TRUE(MFreeImage::AddBorderToDIB(image, 0xFFFFFF));
    const QImage seen = dib::DibToImage(image.get());
    ASSERT_EQ(seen.size(), QSize(50, 46));
    EXPECT_EQ(seen.pixel(19, 20), qRgb(255, 255, 255));
    EXPECT_EQ(seen.pixel(20, 20), qRgb(0, 255, 0));
    EXPECT_EQ(seen.pixel(29, 25), qRgb(0, 255, 0));
    EXPECT_EQ(seen.pixel(30, 25), qRgb(255, 255, 255));
    EXPECT_EQ(seen.pixel(25, 26), qRgb(255, 255, 255));
}

TEST(DibRescale, SizesFromFactorsPixelsAndOneSide) {
    struct Row {
        MFreeImage::Extent w, h;
        bool percent;
        QSize expected;
    };
    for (const Row& r : {Row{200, 50, false, QSize(200, 50)}, Row{0.5, 0.25, false, QSize(50, 20)},
                         Row{50.0, 50.0, true, QSize(50, 40)}, Row{0, 40, false, QSize(50, 40)},
                         Row{25, 0, false, QSize(25, 20)}, Row{0, 0, false, QSize(100, 80)}}) {
        Dib scaled = MFreeImage::RescaleDIB(Make(100, 80, 24), r.w, r.h, r.percent, FILTER_BICUBIC);
        ASSERT_TRUE(scaled);
        EXPECT_EQ(SizeOf(scaled), r.expected);
    }
}

// Every orientation the cameras store comes out as the upright picture.
TEST(Orientation, EveryTagComesOutUpright) {
    const QDir folder(Samples() + QStringLiteral("/orientation"));
    if (!folder.exists())
        GTEST_SKIP() << "no sample photographs at " << folder.path().toStdString();
    for (const char* shape : {"landscape", "portrait"}) {
        auto load = [&](int tag) {
            const QByteArray name =
                QFile::encodeName(folder.filePath(QStringLiteral("%1_%2.jpg").arg(shape).arg(tag)));
            return Dib(FreeImage_Load(FIF_JPEG, name.constData(), 0));
        };
        const QImage upright = dib::DibToImage(load(1).get());
        for (int tag = 2; tag <= 8; ++tag) {
            SCOPED_TRACE(testing::Message() << shape << " " << tag);
            Dib turned = load(tag);
            EXPECT_EQ(UprightSize(SizeOf(turned), tag), upright.size());
            ASSERT_TRUE(ApplyOrientation(turned, tag));
            const double right = MeanDifference(dib::DibToImage(turned.get()), upright);
            // Any wrong turn or flip of the same picture is far further off than the camera's
            // own recompression.
            for (int other = 1; other <= 8; ++other) {
                if (other == tag ||
                    UprightSize(QSize(1, 2), other) != UprightSize(QSize(1, 2), tag))
                    continue;
                Dib wrong = load(tag);
                ApplyOrientation(wrong, other);
                EXPECT_LT(right * 2, MeanDifference(dib::DibToImage(wrong.get()), upright))
                    << "turned as " << other;
            }
        }
    }
}

TEST(JpegDecode, ScalesByEighthsToCoverTheTarget) {
    QImage photo(800, 600, QImage::Format_RGB32);
    for (int y = 0; y < 600; ++y)
        for (int x = 0; x < 800; ++x)
            photo.setPixel(x, y, qRgb(x % 256, y % 256, (x + y) % 256));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    ASSERT_TRUE(photo.save(&buffer, "JPEG", 95));
    QSize size;
    ASSERT_TRUE(jpeg::ReadSize(bytes, size));
    EXPECT_EQ(size, QSize(800, 600));
    // The least size asked for, and the size decoded.
    for (const auto& [minimum, expected] : {std::pair{QSize(100, 75), QSize(100, 75)},
                                            {QSize(101, 75), QSize(200, 150)},
                                            {QSize(500, 200), QSize(500, 375)},
                                            {QSize(800, 600), QSize(800, 600)},
                                            {QSize(900, 10), QSize(800, 600)}}) {
        Dib d = jpeg::DecodeAtLeast(bytes, minimum);
        ASSERT_TRUE(d);
        EXPECT_EQ(SizeOf(d), expected);
    }
    // Upright, opaque and close to what was saved.
    Dib full = jpeg::DecodeAtLeast(bytes, QSize(800, 600));
    const QImage seen = dib::DibToImage(full.get());
    EXPECT_EQ(qAlpha(seen.pixel(5, 5)), 255);
    EXPECT_LT(MeanDifference(seen, photo), 4.0);

    // A photo cut short is broken, not half a picture; junk is not a JPEG at all.
    EXPECT_FALSE(jpeg::DecodeAtLeast(bytes.left(bytes.size() / 2), QSize(1, 1)));
    EXPECT_FALSE(jpeg::ReadSize(QByteArray("not a picture at all"), size));
}

TEST(JpegDecode, ResampleKeepsTheRowsTheRightWayUp) {
    Dib d = Make(40, 20, 32);
    RGBQUAD white{255, 255, 255, 255}, black{0, 0, 0, 255};
    for (unsigned x = 0; x < 40; ++x)
        for (unsigned y = 0; y < 20; ++y)
            FreeImage_SetPixelColor(d.get(), x, y, y >= 10 ? &white : &black);
    Dib half = dib::Resample(std::move(d), QSize(20, 10), true);
    const QImage seen = dib::DibToImage(half.get());
    ASSERT_EQ(seen.size(), QSize(20, 10));
    EXPECT_EQ(seen.pixel(10, 1), qRgb(255, 255, 255));
    EXPECT_EQ(seen.pixel(10, 8), qRgb(0, 0, 0));
}
