#include "TestSupport.h"

#include "app/VbNumbers.h"
#include "compose/ShadowBlur.h"
#include "compose/TileBackground.h"

#include <QRandomGenerator>
#include <vector>

namespace {

using Grid = std::vector<std::vector<int>>; // rows from the top, as a picture is read

// An 8-bit bitmap from rows written top first; FreeImage keeps the bottom row first.
dib::Dib Grey(const Grid& rows) {
    const int H = static_cast<int>(rows.size()), W = static_cast<int>(rows[0].size());
    dib::Dib d(FreeImage_Allocate(W, H, 8));
    for (int r = 0; r < H; ++r)
        for (int c = 0; c < W; ++c)
            FreeImage_GetScanLine(d.get(), H - 1 - r)[c] =
                static_cast<BYTE>(rows[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)]);
    return d;
}

Grid Read(FIBITMAP* d) {
    const int W = static_cast<int>(FreeImage_GetWidth(d)),
              H = static_cast<int>(FreeImage_GetHeight(d));
    Grid rows(static_cast<std::size_t>(H), std::vector<int>(static_cast<std::size_t>(W)));
    for (int r = 0; r < H; ++r)
        for (int c = 0; c < W; ++c)
            rows[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)] =
                FreeImage_GetScanLine(d, H - 1 - r)[c];
    return rows;
}

// A 5 x 5 grid from its 3 x 3 blocks of 2 x 2, the top row and right column cut to one.
Grid Blocks(const Grid& blocks) {
    Grid g(5, std::vector<int>(5));
    for (std::size_t r = 0; r < 5; ++r)
        for (std::size_t c = 0; c < 5; ++c)
            g[r][c] = blocks[(r + 1) / 2][c / 2];
    return g;
}

// The running sum as designed, rounded at every step, is the sum of the rounded weights: the
// fast blur stands on this.
TEST(ShadowBlur, TheRoundedRunningSumIsTheSumOfRoundedWeights) {
    const auto& weights = shadow::CubicWeights();
    for (double sum : {0.0, 1.0, 254.0, 255.0, 73695.0}) // even and odd sums alike
        for (int p = 0; p < 256; ++p)
            ASSERT_EQ(vb::RoundHalfEven(static_cast<double>(p) * p * p / 65025.0 + sum),
                      sum + weights[static_cast<std::size_t>(p)])
                << p << " after " << sum;
}

// A 5 x 5 picture, radius 1, worked by hand. The weights: 255 -> 255, 128 -> 32 (32.25),
// 200 -> 123 (123.03). Pixels are visited at odd x and y counted from 1 at the bottom left, and
// each answer fills its 2 x 2 block, cut at the edges:
//   (1,1) window x 1-2, y 1-2 holds 255: 255 div 4 = 63
//   (3,1) x 2-4, y 1-2 holds 255: 255 div 6 = 42        (1,3) x 1-2, y 2-4 holds 255: 42
//   (3,3) x 2-4, y 2-4 holds 255 and 128: 287 div 9 = 31
//   (5,5) x 4-5, y 4-5 holds 200: 123 div 4 = 30; only (5,5) itself is inside the picture
// With testDistance 1 the block of (1,3) is hidden: (2,2), one right and one down, reads 255.
TEST(ShadowBlur, MaskPlanByHand) {
    const Grid in = {{0, 0, 0, 0, 200}, //
                     {0, 0, 0, 0, 0},
                     {0, 0, 128, 0, 0},
                     {0, 255, 0, 0, 0},
                     {0, 0, 0, 0, 0}};
    struct Row {
        int testDistance, strength;
        Grid out;
    };
    const Row rows[] = {{10, 100, Blocks({{0, 0, 30}, {42, 31, 0}, {63, 42, 0}})},
                        {1, 100, Blocks({{0, 0, 30}, {0, 31, 0}, {63, 42, 0}})},
                        {10, 50, Blocks({{0, 0, 15}, {21, 15, 0}, {31, 21, 0}})}};
    for (const Row& r : rows)
        for (auto blur : {&shadow::BlurShadowReference, &shadow::BlurShadow}) {
            dib::Dib d = Grey(in);
            ASSERT_TRUE(blur(d.get(), 1, r.testDistance, r.strength, false, {}));
            EXPECT_EQ(Read(d.get()), r.out) << r.testDistance << " " << r.strength;
        }
}

// The plain rectangle works out only the bottom two rows and the right three columns (x from
// W - 2 = 3); the rest is 0 whatever the picture holds there. Whole windows of 255 average 255.
TEST(ShadowBlur, RectanglePlanWorksOnlyTheStrips) {
    dib::Dib d = Grey(Grid(5, std::vector<int>(5, 255)));
    ASSERT_TRUE(shadow::BlurShadow(d.get(), 1, 10, 100, true, {}));
    EXPECT_EQ(Read(d.get()), Blocks({{0, 255, 255}, {0, 255, 255}, {255, 255, 255}}));
}

// The fast blur answers as the designed loop does, pixel for pixel: noise, a pasted opaque
// rectangle (254 inside, as the shadow's own paste leaves it) and an oval with a soft edge; both
// plans; windows clipped at every edge, radii larger than the picture, odd sizes.
TEST(ShadowBlur, FastBlurEqualsTheDesignedLoop) {
    QRandomGenerator random(42);
    auto shaped = [&random](int W, int H, int kind) {
        Grid g(static_cast<std::size_t>(H), std::vector<int>(static_cast<std::size_t>(W)));
        for (int r = 0; r < H; ++r)
            for (int c = 0; c < W; ++c) {
                const double dx = (c - W / 2.0) / (W / 2.5), dy = (r - H / 2.0) / (H / 2.5);
                const double e = dx * dx + dy * dy;
                const int v = kind == 0   ? static_cast<int>(random.bounded(256))
                              : kind == 1 ? (r >= 2 && c >= 2 && r < H - 3 && c < W - 3 ? 254 : 0)
                                          : std::clamp(static_cast<int>((1.3 - e) * 400), 0, 255);
                g[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)] = v;
            }
        return g;
    };
    const QSize sizes[] = {{1, 1}, {2, 3}, {7, 5}, {31, 17}, {64, 33}};
    for (const QSize& size : sizes)
        for (int kind = 0; kind < 3; ++kind) {
            const Grid in = shaped(size.width(), size.height(), kind);
            for (int radius : {0, 1, 2, 5, 8, 40})
                for (bool plain : {false, true})
                    for (int strength : {100, 70}) {
                        dib::Dib a = Grey(in), b = Grey(in);
                        ASSERT_TRUE(shadow::BlurShadowReference(a.get(), radius, radius, strength,
                                                                plain, {}));
                        ASSERT_TRUE(
                            shadow::BlurShadow(b.get(), radius, radius, strength, plain, {}));
                        ASSERT_EQ(Read(a.get()), Read(b.get()))
                            << size.width() << "x" << size.height() << " kind " << kind << " r "
                            << radius << (plain ? " plain" : " mask") << " " << strength;
                    }
        }
}

// The shadow is larger than the photograph by the distance on each side, black, and lies to
// its lower right; a distance of 0 becomes 1 in the setting, over a bitmap of the photo's size.
TEST(ShadowBlur, ShadowSizeAndPlace) {
    const dib::Dib photo(dib::ImageToDib(Solid({40, 30}, {200, 150, 100}, QImage::Format_ARGB32)));
    struct Row {
        int distance, raisedTo, w, h;
    };
    for (const Row& r : {Row{5, 5, 50, 40}, Row{0, 1, 40, 30}}) {
        for (bool plain : {true, false}) {
            std::int32_t distance = r.distance;
            QString errorText;
            dib::Dib s = shadow::MakeShadowDIB(photo.get(), distance, plain, errorText);
            ASSERT_TRUE(s) << errorText.toStdString();
            EXPECT_EQ(distance, r.raisedTo);
            const QImage shade = dib::DibToImage(s.get());
            ASSERT_EQ(shade.size(), QSize(r.w, r.h));
            // The darkness is beyond the photo's right and bottom edges, nothing at its top left.
            double mass = 0, mx = 0, my = 0;
            for (int y = 0; y < shade.height(); ++y)
                for (int x = 0; x < shade.width(); ++x) {
                    const QRgb p = shade.pixel(x, y);
                    EXPECT_EQ(qRed(p) | qGreen(p) | qBlue(p), 0);
                    mass += qAlpha(p);
                    mx += qAlpha(p) * x;
                    my += qAlpha(p) * y;
                }
            ASSERT_GT(mass, 0);
            EXPECT_GT(mx / mass, 20.0) << r.distance;
            EXPECT_GT(my / mass, 15.0) << r.distance;
            EXPECT_EQ(qAlpha(shade.pixel(0, 0)), 0);
            EXPECT_GT(qAlpha(shade.pixel(std::min(r.w - 1, 40), 25)), 0) << "right of the photo";
            EXPECT_GT(qAlpha(shade.pixel(20, std::min(r.h - 1, 30))), 0) << "below the photo";
        }
    }
}

// The shadow's own paste of the alpha gives what the library's channel and paste calls give,
// over a target that already holds something, and refuses what the library refuses.
TEST(ShadowBlur, AlphaPasteMatchesTheLibrary) {
    QRandomGenerator random(7);
    QImage image(13, 7, QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgba(1, 2, 3, static_cast<int>(random.bounded(256))));
    const dib::Dib photo(dib::ImageToDib(image));
    const dib::Dib alpha(FreeImage_GetChannel(photo.get(), FICC_ALPHA));
    Grid background(12, std::vector<int>(20));
    for (auto& row : background)
        for (int& v : row)
            v = static_cast<int>(random.bounded(256));
    for (const QPoint at :
         {QPoint(0, 0), QPoint(3, 2), QPoint(7, 5), QPoint(8, 5), QPoint(-1, 0)}) {
        dib::Dib ours = Grey(background), theirs = Grey(background);
        const bool fits = shadow::PasteAlphaChannel(ours.get(), photo.get(), at.x(), at.y());
        EXPECT_EQ(fits, FreeImage_Paste(theirs.get(), alpha.get(), at.x(), at.y(), 255) == TRUE)
            << at.x() << "," << at.y();
        EXPECT_EQ(Read(ours.get()), Read(theirs.get())) << at.x() << "," << at.y();
    }
}

// Pieces cover the canvas from the origin; the far column and row are cut to what is left, and
// a canvas a whole number of tiles wide ends with pieces of nothing.
TEST(Tiling, PiecesAreCutAtTheCanvasEdges) {
    using P = MFreeImage::TilePiece;
    // clang-format off
    EXPECT_EQ(MFreeImage::TilePlan(100, 80, 250, 100),
              (std::vector<P>{{0, 0, 100, 80}, {0, 80, 100, 20}, {100, 0, 100, 80},
                              {100, 80, 100, 20}, {200, 0, 50, 80}, {200, 80, 50, 20}}));
    EXPECT_EQ(MFreeImage::TilePlan(100, 80, 200, 80),
              (std::vector<P>{{0, 0, 100, 80}, {0, 80, 100, 0}, {100, 0, 100, 80},
                              {100, 80, 100, 0}, {200, 0, 0, 80}, {200, 80, 0, 0}}));
    // clang-format on
}

class MasksShadows : public ShowFixture {
protected:
    void SetUp() override {
        ShowFixture::SetUp();
        show->OpenDebugLog();
    }
    // A picture of one colour with a mark in its top left corner, saved under the install folder.
    QString Picture(const QString& name, QSize size, QColor colour) {
        QImage image = Solid(size, colour, QImage::Format_RGB888);
        image.setPixelColor(0, 0, Qt::white);
        const QString path = install.filePath(name);
        EXPECT_TRUE(QDir().mkpath(QFileInfo(path).path()) && image.save(path));
        return path;
    }
    static QColor At(const dib::Dib& canvas, int x, int y) {
        return dib::DibToImage(canvas.get()).pixelColor(x, y);
    }
};

// The canvas is tiled from its top left; a piece cut at the edge shows the tile's own corner
// of that size, and a canvas a whole number of tiles wide still counts as tiled.
TEST_F(MasksShadows, TileBackgroundCoversTheCanvas) {
    const QString tile = Picture(QStringLiteral("t.png"), QSize(10, 8), QColor(0, 0, 200));
    for (const QSize canvas : {QSize(25, 20), QSize(20, 16)}) {
        dib::Dib d(FreeImage_Allocate(canvas.width(), canvas.height(), 24));
        QString errorText = QStringLiteral("(before)");
        ASSERT_TRUE(MFreeImage::TileBackground(tile, d, errorText));
        // The mark of each tile's corner at every multiple of the tile, blue everywhere else.
        EXPECT_GT(At(d, 10, 8).red(), 200);
        EXPECT_GT(At(d, canvas.width() - 1, canvas.height() - 1).blue(), 190);
        EXPECT_LT(At(d, canvas.width() - 1, canvas.height() - 1).red(), 10);
        EXPECT_EQ(errorText, canvas == QSize(20, 16)
                                 ? QStringLiteral("Tilebackground : Pasting error onto 20,16")
                                 : QString());
    }
    // A grey picture is brought to the canvas's depth rather than left unpasted.
    const QString grey = install.filePath(QStringLiteral("grey.png"));
    ASSERT_TRUE(Solid({6, 6}, QColor(90, 90, 90), QImage::Format_Grayscale8).save(grey));
    dib::Dib d(FreeImage_Allocate(5, 5, 24));
    QString errorText;
    ASSERT_TRUE(MFreeImage::TileBackground(grey, d, errorText));
    EXPECT_NEAR(At(d, 2, 2).green(), 90, 2);
    EXPECT_FALSE(
        MFreeImage::TileBackground(install.filePath(QStringLiteral("gone.png")), d, errorText));
}

// The draws of a mask: 1 to 100 against the percentage, then the pick from the Masks folder,
// which serves RandomMaskFrames images from the first pick on. Masks are stretched to the image.
TEST_F(MasksShadows, MaskDrawsFollowThePercentAndTheFrames) {
    Picture(QStringLiteral("Masks/a.jpg"), QSize(30, 30), Qt::white);
    Picture(QStringLiteral("Masks/b.jpg"), QSize(30, 30), Qt::gray);
    show->lstMasks.clear();
    show->LoadListOfImageMasks();
    ASSERT_EQ(show->lstMasks.size(), 2);
    show->UseImageMask = true;
    show->RandomImageMask = true;
    show->RandomMaskFrames = 3;
    struct Row {
        int percent;
        std::vector<double> draws;
        bool masked;
        const char* mask; // file name of ImageMaskPath after the call
    };
    const Row rows[] = {
        {0, {0.0}, false, ""},              // 1 > 0: never
        {100, {0.999, 0.0}, true, "a.jpg"}, // 100 <= 100: always; first pick
        {100, {0.5}, true, "a.jpg"},        // second use
        {100, {0.5}, true, "a.jpg"},        // third use
        {100, {0.5, 0.99}, true, "b.jpg"},  // a new pick
        {50, {0.5}, false, ""},             // 51 > 50
    };
    int i = 0;
    for (const Row& r : rows) {
        show->MaskPercent = r.percent;
        platform::ClearRandomFeed();
        platform::FeedRandom(r.draws);
        dib::Dib alpha;
        bool ok = false;
        show->UseAMask(alpha, 64, 24, ok);
        EXPECT_EQ(ok, r.masked) << i;
        EXPECT_EQ(platform::FedRandomLeft(), 0u) << i;
        if (r.masked) {
            ASSERT_TRUE(alpha) << i;
            EXPECT_EQ(FreeImage_GetBPP(alpha.get()), 8u);
            EXPECT_EQ(FreeImage_GetWidth(alpha.get()), 64u);
            EXPECT_EQ(FreeImage_GetHeight(alpha.get()), 24u);
            EXPECT_EQ(QFileInfo(show->ImageMaskPath).fileName(), QString::fromLatin1(r.mask)) << i;
        }
        ++i;
    }
    // With only the logo to show, the logo's own mask at its own size, and nothing drawn.
    show->NoValidImages = true;
    platform::ClearRandomFeed();
    dib::Dib alpha;
    bool ok = false;
    show->UseAMask(alpha, 64, 24, ok);
    ASSERT_TRUE(ok);
    EXPECT_EQ(FreeImage_GetWidth(alpha.get()), 695u);
    EXPECT_EQ(FreeImage_GetBPP(alpha.get()), 8u);
}

// A background for this canvas or not, and which: a file named background* beside the photo
// wins over the chosen one; a chosen file that has gone turns backgrounds off for the show.
TEST_F(MasksShadows, BackgroundChoice) {
    const QString photo = Picture(QStringLiteral("album/p.png"), QSize(8, 8), Qt::yellow);
    Picture(QStringLiteral("album/background1.png"), QSize(6, 6), QColor(0, 180, 0));
    const QString chosen = Picture(QStringLiteral("chosen.png"), QSize(6, 6), QColor(180, 0, 0));
    const QString lonely = Picture(QStringLiteral("alone/p.png"), QSize(8, 8), Qt::yellow);
    show->UseBackgroundImage = true;
    show->RandomBGImage = false;
    struct Row {
        QString photo, backgroundPath;
        int percent;
        bool useLocal;
        std::vector<double> draws;
        bool painted, stillOn;
        QColor colour;
    };
    const Row rows[] = {
        {photo, chosen, 0, true, {0.0}, false, true, {}},                        // never
        {photo, chosen, 100, true, {0.999, 0.0}, true, true, QColor(0, 180, 0)}, // local wins
        {photo, chosen, 100, false, {0.0, 0.0}, true, true, QColor(180, 0, 0)},  // local off
        {lonely, chosen, 100, true, {0.0}, true, true, QColor(180, 0, 0)},       // none there
        {lonely, chosen + QStringLiteral(".gone"), 100, true, {0.0}, false, false, {}},
    };
    for (const Row& r : rows) {
        show->ShowList.clear();
        show->ShowList.add(r.photo, 0);
        show->BackgroundImagePath = r.backgroundPath;
        show->BackgroundPercent = static_cast<std::int16_t>(r.percent);
        show->UseLocalBackground = r.useLocal;
        platform::ClearRandomFeed();
        platform::FeedRandom(r.draws);
        dib::Dib canvas(FreeImage_Allocate(20, 20, 24));
        bool ok = false;
        show->ApplyBackgroundToDIB(canvas, ok);
        EXPECT_EQ(ok, r.painted) << r.photo.toStdString();
        EXPECT_EQ(platform::FedRandomLeft(), 0u);
        EXPECT_EQ(show->UseBackgroundImage, r.stillOn);
        if (r.painted) {
            const QColor c = At(canvas, 13, 13);
            EXPECT_NEAR(c.red(), r.colour.red(), 2);
            EXPECT_NEAR(c.green(), r.colour.green(), 2);
        }
    }
    EXPECT_TRUE(LogLines(show).contains(QStringLiteral(
        "Can't find the background image (path below) turning off background image.")));
}

// A frame as the user sees it: a photograph of the demo shaped by a demo mask, its shadow to
// the lower right, on a tiled demo background. TESSAVIEW_FRAME_PNG names a file to look at.
TEST_F(MasksShadows, AComposedFrameHasItsShapeShadowAndBackground) {
    const QString demo = QStringLiteral(TESSAVIEW_SOURCE_DIR "/demo/");
    show->UseImageMask = true;
    show->MaskPercent = 100;
    show->RandomImageMask = false;
    show->ImageMaskPath = demo + QStringLiteral("Masks/Oval.jpg");
    show->UseShadows = true;
    show->UseBackgroundImage = true;
    show->BackgroundPercent = 100;
    show->RandomBGImage = false;
    show->BackgroundImagePath = demo + QStringLiteral("Backgrounds/Wood.jpg");
    show->UseBlackAndWhite = false;
    show->AddBorder = false;
    show->MaxStackedImages = 1;
    show->ShowList.add(demo + QStringLiteral("Pictures/Sail.jpg"), 0);
    show->CaptionsList.add(QString(), 0);
    // The mask's chance, then the background's.
    platform::FeedRandom({0.0, 0.0});
    show->AssembleCanvas(1);
    ASSERT_TRUE(show->NextImageReady);
    EXPECT_EQ(platform::FedRandomLeft(), 0u);
    const QImage frame = dib::DibToImage(show->CanvasDIB.get());
    if (qEnvironmentVariableIsSet("TESSAVIEW_FRAME_PNG"))
        frame.save(qEnvironmentVariable("TESSAVIEW_FRAME_PNG"));
    EXPECT_TRUE(LogLines(show).contains(QStringLiteral("Shadow pasted onto canvas OK")));
    // Wood at the canvas's corner, sea in the middle of the photograph.
    const QColor corner = frame.pixelColor(2, 2);
    const QColor middle = frame.pixelColor(frame.width() / 2, frame.height() * 7 / 10);
    EXPECT_GT(corner.red(), corner.blue() + 40);
    EXPECT_GT(middle.blue(), middle.red() + 40);
}

} // namespace
