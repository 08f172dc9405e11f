#include "TestSupport.h"

#include "compose/DibImage.h"
#include "platform/Keys.h"

#include <QKeyEvent>

namespace {

using namespace platform;

class ShowCommands : public ShowOnScreenFixture {
protected:
    void FadeTo(QColor colour) {
        dib::Dib frame(dib::ImageToDib(Solid({show->FormWidth, show->FormHeight}, colour)));
        show->NewCrossfade(frame, 0, 0, show->FormWidth, show->FormHeight, 0, 0, 0, 1.0);
    }
    QRgb ScreenCentre() {
        return show->grab().toImage().pixel(show->width() / 2, show->height() / 2);
    }
};

// Going back shows the screens before the present one, newest first; the fade puts the present
// frame back. Left, keypad 4 and Page Up are the same key, and none of them works in a fade.
TEST_F(ShowCommands, GoingBackShowsTheEarlierScreensInTurn) {
    const QColor colours[] = {Qt::red, Qt::green, Qt::blue, Qt::yellow};
    for (const QColor& c : colours)
        FadeTo(c);
    ASSERT_EQ(ScreenCentre(), QColor(Qt::yellow).rgb());
    show->Crossfading = true;
    show->KeyTrap(vk::Left);
    EXPECT_EQ(show->PrevCanvasPosition, -1);
    show->Crossfading = false;
    const int keys[] = {vk::Left, vk::Numpad4, vk::PageUp};
    for (int i = 0; i < 3; ++i) {
        show->KeyTrap(keys[i]);
        EXPECT_EQ(show->PrevCanvasPosition, i);
        EXPECT_EQ(ScreenCentre(), colours[2 - i].rgb()) << "back " << i + 1;
        EXPECT_FALSE(show->picJumpingBack[1]->isVisible());
    }
    // The position equal to the count is let through: the oldest slot, here the black screen
    // before the first frame. Past it nothing more happens; the next fade brings the present.
    show->KeyTrap(vk::Left);
    EXPECT_EQ(ScreenCentre(), QColor(Qt::black).rgb());
    show->KeyTrap(vk::Left);
    EXPECT_EQ(show->PrevCanvasPosition, 4);
    EXPECT_EQ(ScreenCentre(), QColor(Qt::black).rgb());
    FadeTo(Qt::cyan);
    EXPECT_EQ(show->PrevCanvasPosition, -1);
    EXPECT_EQ(ScreenCentre(), QColor(Qt::cyan).rgb());
}

// The keys that act without ending the show, each undone by a second press where it toggles.
TEST_F(ShowCommands, CommandKeysToggleWhatTheySay) {
    show->ExitOnKey = true;
    show->ShowCaptions = true;
    show->KeyTrap(vk::C);
    EXPECT_FALSE(show->ShowCaptions);
    show->KeyTrap(vk::F1);
    EXPECT_TRUE(show->picCommands->isVisible());
    EXPECT_TRUE(show->lblCommands2->text().contains(QStringLiteral("Show / hide this info box.")));
    show->KeyTrap(vk::F1);
    EXPECT_FALSE(show->picCommands->isVisible());
    show->KeyTrap(vk::Space);
    EXPECT_TRUE(show->Paused);
    EXPECT_TRUE(show->picPaused[1]->isVisible());
    show->KeyTrap(vk::Space);
    EXPECT_FALSE(show->Paused);
    EXPECT_FALSE(show->picPaused[1]->isVisible());
    // Unknown code 255 with the right arrow held is the right arrow: a jump, not an exit.
    QKeyEvent right(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier);
    NoteKeyEvent(right);
    show->NextImageReady = false;
    show->KeyTrap(vk::Unknown);
    EXPECT_TRUE(show->JumpPending);
    EXPECT_FALSE(ExitShow);
    QKeyEvent up(QEvent::KeyRelease, Qt::Key_Right, Qt::NoModifier);
    NoteKeyEvent(up);
    show->KeyTrap(vk::D); // the log is off: an ordinary key
    EXPECT_TRUE(ExitShow);
}

// A right arrow during a fade is remembered: the jump is made once the next frame is ready;
// a second one meanwhile does nothing.
TEST_F(ShowCommands, AJumpAskedDuringAFadeWaitsForTheFrame) {
    show->Crossfading = true;
    show->NextImageReady = false;
    show->KeyTrap(vk::Right);
    EXPECT_TRUE(show->JumpRequested);
    EXPECT_TRUE(show->JumpPending);
    EXPECT_TRUE(show->picJumpingForward[1]->isVisible());
    EXPECT_FALSE(show->MainTimer->Enabled());
    show->KeyTrap(vk::PageDown);
    EXPECT_TRUE(show->JumpPending);
}

// The mark appends the photo on the screen, keeping what the file held, trimmed, with no test
// for duplicates; the file is never left half written.
TEST_F(ShowCommands, MarkAppendsTheCurrentImage) {
    const QString file = install.filePath(QStringLiteral("MarkedImages.txt"));
    PutFile(file, "  /photos/one.jpg  \r\n/photos/two.jpg\n");
    show->CurrentImage = QStringLiteral("/photos/trip/ä b.jpg");
    show->KeyTrap(vk::M);
    show->KeyTrap(vk::M);
    QFile f(file);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(f.readAll()),
              QStringLiteral("/photos/one.jpg\r\n/photos/two.jpg\r\n/photos/trip/ä b.jpg\r\n"
                             "/photos/trip/ä b.jpg\r\n"));
    EXPECT_FALSE(ExitShow);
}

} // namespace
