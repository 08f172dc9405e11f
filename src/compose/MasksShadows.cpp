// The three effects a frame may get by chance: a mask that shapes the photograph, a soft shadow
// under it, and a picture tiled behind it.
#include "app/Common.h"
#include "app/VbNumbers.h"
#include "app/modMain.h"
#include "compose/MFreeImage.h"
#include "compose/ShadowBlur.h"
#include "compose/TileBackground.h"
#include "platform/Random.h"
#include "show/frmSlideShow.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPixmap>

namespace {

// Int(Rnd * 100) + 1: 1 to 100, so that a percentage of 100 always holds and 0 never does.
int PercentDraw() {
    return static_cast<int>(vb::Int(platform::Rnd() * 100)) + 1;
}

int RandomIndex(qsizetype count) {
    return static_cast<int>(vb::Int(static_cast<double>(count) * platform::Rnd()));
}

} // namespace

void frmSlideShow::UseAMask(dib::Dib& alphaDIB, int width, int height, bool& ok) {
    ok = false;
    SetStatus(QStringLiteral("Creating Mask ..."));

    if (NoValidImages) {
        // Only the logo is left to show: it wears its own mask, at its own size, every time.
        alphaDIB.reset(imgFloatingLogoMask
                           ? dib::ImageToDib(imgFloatingLogoMask->pixmap().toImage())
                           : nullptr);
        if (!alphaDIB) {
            BugLog(QStringLiteral("UseAMask error : converting floating logo mask to DIB"));
            return;
        }
        alphaDIB.reset(FreeImage_ConvertTo8Bits(alphaDIB.get()));
        if (!alphaDIB) {
            BugLog(QStringLiteral("UseAMask error : converting floating logo mask to 8 bits"));
            return;
        }
        ok = true;
        return;
    }

    bool masking = false;
    if (!NoMaskThisImage && UseImageMask) {
        BugLog(QStringLiteral("      We could apply an image mask ... (%1 % chance we will)")
                   .arg(MaskPercent));
        const int r = PercentDraw();
        masking = r <= MaskPercent;
        BugLog((masking ? QStringLiteral("      ... and we will .. ")
                        : QStringLiteral("      ... but we won't ! .. ")) +
               QString::number(r));
    }
    if (!masking) {
        BugLog(QStringLiteral("      Not using an image mask this time..  Not creating alpha DIB"));
        return;
    }

    BugLog(QStringLiteral("Using Image Mask"));
    if (ExitShow) return;
    if (RandomImageMask) {
        ++MaskUseCount;
        BugLog(QStringLiteral("Occurances for this image mask = %1").arg(MaskUseCount));
        if (MaskUseCount < RandomMaskFrames && MaskChosen) {
            BugLog(QStringLiteral("   (using same image mask) ") + ImageMaskPath);
        } else {
            MaskUseCount = 0;
            BugLog(QStringLiteral(" ... time to pick a new image mask"));
            const int i = RandomIndex(lstMasks.size());
            ImageMaskPath = lstMasks.value(i);
            BugLog(QStringLiteral("Loading random mask %1>").arg(i) + ImageMaskPath);
        }
    } else {
        BugLog(QStringLiteral("Using specific image mask ... ") + ImageMaskPath);
    }
    if (ExitShow) return;

    // Read afresh for every masked image, even when it is the same file as last time.
    MaskChosen = true;
    QString errorText;
    FREE_IMAGE_FORMAT format = FIF_UNKNOWN;
    if (!MFreeImage::LoadIntoDIB(ImageMaskPath, alphaDIB, errorText, format)) {
        BugLog(QStringLiteral("UseAMask Error (loadingfile) : ") + errorText);
        alphaDIB.reset();
    }
    alphaDIB.reset(alphaDIB ? FreeImage_ConvertTo8Bits(alphaDIB.get()) : nullptr);
    if (!alphaDIB) BugLog(QStringLiteral("UseAMask error : could not convert to 8 bits"));
    // Stretched to the photograph whatever its shape: the mask follows the picture.
    alphaDIB = MFreeImage::RescaleDIBByPixel(std::move(alphaDIB), width, height, FILTER_BICUBIC);
    if (!alphaDIB) {
        BugLog(QStringLiteral("UseAMask error : resizing alphadib to match %1 x %2")
                   .arg(width)
                   .arg(height));
        return;
    }
    ok = true;
}

void frmSlideShow::BlurShadow(FIBITMAP* dib, int radius, int testDistance, int strengthPercent,
                              bool noMaskShape, QLabel* statusLabel) {
    // A key pressed during a long shadow must still stop the show: let events in every few
    // milliseconds, and say how far the shadow has come.
    QElapsedTimer sinceYield;
    sinceYield.start();
    auto say = [statusLabel](int percent) {
        if (!statusLabel) return;
        statusLabel->setText(QStringLiteral("Creating Shadow ... %1 %").arg(percent));
        if (statusLabel->isVisible()) statusLabel->repaint();
    };
    const shadow::Progress progress = [&](int percent) {
        if (sinceYield.elapsed() >= 8) {
            say(percent);
            QCoreApplication::processEvents();
            sinceYield.restart();
        }
        return !ExitShow;
    };
    if (shadow::BlurShadow(dib, radius, testDistance, strengthPercent, noMaskShape, progress))
        say(100);
}

dib::Dib frmSlideShow::MakeShadowDIB(FIBITMAP* imageDIB, std::int32_t& distance, bool noMaskShape,
                                     QString& errorText, QLabel* statusLabel) {
    return shadow::MakeShadowDIB(imageDIB, distance, noMaskShape, errorText,
                                 [this, statusLabel](FIBITMAP* dib, int radius, int testDistance,
                                                     int strengthPercent, bool plain) {
                                     BlurShadow(dib, radius, testDistance, strengthPercent, plain,
                                                statusLabel);
                                 });
}

void frmSlideShow::ApplyBackgroundToDIB(dib::Dib& canvas, bool& ok) {
    ok = false;
    SetStatus(QStringLiteral("Adding Background Image"));
    if (PercentDraw() > BackgroundPercent) return;

    const QString imagePath = ShowList.isEmpty() ? QStringLiteral("xxxx") : ShowList.text(0);
    bool found = false;
    ThereIsALocalBackgroundImage(imagePath, LocalBackgroundPath, found);

    QString file;
    if (found && UseLocalBackground) {
        file = LocalBackgroundPath;
    } else if (RandomBGImage) {
        file = lstBackgroundImages.value(RandomIndex(lstBackgroundImages.size()));
        BugLog(QStringLiteral("Loading backgroud : ") + file);
    } else {
        file = BackgroundImagePath;
        if (!common::FileExists(file)) {
            BugLog(QStringLiteral(
                "Can't find the background image (path below) turning off background image."));
            BugLog(QStringLiteral("   ") + file);
            UseBackgroundImage = false;
        }
    }

    QString errorText;
    if (MFreeImage::TileBackground(file, canvas, errorText))
        ok = true;
    else
        BugLog(QStringLiteral("Applybackground tile error :") + errorText);
}

void frmSlideShow::ThereIsALocalBackgroundImage(const QString& imagePath, QString& backgroundPath,
                                                bool& found) {
    backgroundPath = QStringLiteral("(none)");
    found = false;
    const QString folder = common::FolderOf(imagePath);
    // A folder that is not there leaves the listing of the last one that was.
    if (common::FileExists(folder)) {
        fileboxLocalBackground.Pattern = QStringLiteral(
            "background*.JPG;background*.BMP;background*.GIF;background*.TIF;background*.TIFF;"
            "background*.JPEG;background*.PNG");
        fileboxLocalBackground.Path = folder;
        fileboxLocalBackground.Refresh();
    }
    const int count = fileboxLocalBackground.ListCount();
    if (count < 1) {
        BugLog(QStringLiteral("(no local background image)"));
        return;
    }
    const int i = RandomIndex(count);
    const QString candidate = folder + fileboxLocalBackground.List(i);
    if (common::FileExists(candidate)) {
        found = true;
        backgroundPath = candidate;
        BugLog(QStringLiteral("%1 local background images.  We are choosing number %2")
                   .arg(count)
                   .arg(i));
    }
}
