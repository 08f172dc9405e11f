#include "TestSupport.h"

namespace {

class Layouts : public ShowOnScreenFixture {
protected:
    void SetUp() override {
        ShowOnScreenFixture::SetUp();
        photo = install.filePath(QStringLiteral("p.jpg"));
        ASSERT_TRUE(Solid({64, 48}, Qt::darkYellow).save(photo, "JPEG"));
    }
    void Queue(int n) {
        show->ShowList.clear();
        show->CaptionsList.clear();
        for (int i = 0; i < n; ++i) {
            show->ShowList.add(photo, i);
            show->CaptionsList.add(QString(), i);
        }
    }
    QString photo;
};

// A pile of four: counts 1 to 4, a new canvas only for the first, and no pile after the fourth.
TEST_F(Layouts, AStackCountsItsImagesAndEndsAtItsSize) {
    show->MaxStackedImages = 4;
    show->AddBorder = false;
    Queue(6);
    for (int frame = 1; frame <= 4; ++frame) {
        show->AssembleCanvas(1);
        ASSERT_TRUE(show->NextImageReady);
        EXPECT_EQ(show->StackCount, frame);
        EXPECT_EQ(show->StackInProgress, frame < 4);
        // The crossfade takes the head away and puts the frame on screen.
        show->NewCrossfade(show->CanvasDIB, 0, 0, 10, 10, 0, 0, 0, 1.0);
    }
}

// Four from one folder: targets and corners from the monitor, each image centred in a corner
// that is then taken; the last corner stays; a lone image is a Normal frame.
TEST_F(Layouts, FourUpTakesTheCornersInTurn) {
    Queue(4);
    show->FourUpCount = 0;
    show->AssembleCanvas(2);
    ASSERT_TRUE(show->NextImageReady);
    const auto set = static_cast<std::size_t>(show->NextMonitorSet);
    EXPECT_EQ(show->FourUpTargetW, qRound(show->MonitorWidth[set] * 0.49));
    EXPECT_EQ(show->FourUpTargetH, qRound(show->MonitorHeight[set] * 0.49));
    EXPECT_EQ(show->FourUpPointsX.size(), 3);
    EXPECT_TRUE(show->FourUpInProgress);
    for (int frame = 2; frame <= 4; ++frame) {
        // The crossfade takes the head away and puts the canvas on screen for the next image.
        show->NewCrossfade(show->CanvasDIB, 0, 0, 10, 10, 0, 0, 0, 1.0);
        show->AssembleCanvas(2);
        ASSERT_TRUE(show->NextImageReady);
        EXPECT_EQ(show->FourUpCount, frame);
    }
    EXPECT_EQ(show->FourUpPointsX.size(), 1);
    EXPECT_FALSE(show->FourUpInProgress);

    Queue(1);
    show->FourUpCount = 0;
    show->AssembleCanvas(2);
    EXPECT_EQ(show->Layout, 0);
}

TEST_F(Layouts, FourUpCornersFollowTheNumberOfImages) {
    show->NextMonitorSet = 0;
    show->MonitorWidth[0] = 1000;
    show->MonitorHeight[0] = 800;
    struct Row {
        int entries;
        QStringList xs, ys;
    };
    const Row rows[] = {
        {1, {"0"}, {"0"}},
        {2, {"5", "505"}, {"4", "4"}},
        {3, {"5", "505", "5", "505"}, {"4", "4", "404", "404"}},
    };
    for (const Row& r : rows) {
        Queue(r.entries);
        show->ReloadFourUpPoints();
        QStringList xs, ys;
        for (const QString& x : show->FourUpPointsX)
            xs << QString::number(qRound(x.toDouble()));
        for (const QString& y : show->FourUpPointsY)
            ys << QString::number(qRound(y.toDouble()));
        EXPECT_EQ(xs, r.xs) << r.entries;
        EXPECT_EQ(ys, r.ys) << r.entries;
    }
}

// The layout of each frame is drawn against the cumulative bands of the settings.
TEST_F(Layouts, TheLayoutDrawFollowsTheBands) {
    show->LayoutRange = {50.0f, 80.0f, 100.0f};
    show->MaxStackedImages = 1;
    for (const auto& [draw, layout] : {std::pair{0.50, 0}, {0.51, 1}, {0.80, 1}, {0.81, 2}}) {
        Queue(4);
        show->StackInProgress = false;
        show->FourUpInProgress = false;
        platform::ClearRandomFeed();
        platform::FeedRandom({draw, 0.0, 0.0, 0.0, 0.0, 0.0});
        show->PrepNextFrame();
        EXPECT_EQ(show->Layout, layout) << draw;
    }
}

} // namespace
