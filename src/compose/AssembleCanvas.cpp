// The next frame, composed off screen while the present one is on it: the image is loaded,
// sized, treated and pasted onto its canvas, in one fixed order.
#include "app/VbNumbers.h"
#include "app/modMain.h"
#include "compose/JpegScaled.h"
#include "compose/MFreeImage.h"
#include "config/ColourButton.h"
#include "platform/Random.h"
#include "show/frmSlideShow.h"

#include <QPixmap>

namespace {

QSize SizeOf(const dib::Dib& d) {
    return d ? QSize(static_cast<int>(FreeImage_GetWidth(d.get())),
                     static_cast<int>(FreeImage_GetHeight(d.get())))
             : QSize();
}

int Round(double value) {
    return static_cast<int>(vb::RoundHalfEven(value));
}

// Int(Rnd * 100) against a percentage, with the two log endings of every such draw.
bool DrawUnder(int percent, const QString& question) {
    const int r = static_cast<int>(vb::Int(platform::Rnd() * 100));
    BugLog(QStringLiteral("There is a %1 that we will %2 ...  ").arg(percent).arg(question));
    const bool yes = r <= percent;
    BugLog(QString::number(r) +
           (yes ? QStringLiteral(" ... and we will") : QStringLiteral(" ... and we won't")));
    return yes;
}

} // namespace

void frmSlideShow::ResizeDIBImage(FrameImage& image, int targetW, int targetH, bool ignoreAR,
                                  bool forceFit, bool& ok) {
    ok = false;
    bool turned = false;
    // A waiting JPEG is turned once it is decoded, small; its size is turned now, so that
    // every rule sees the picture as it will stand.
    if (!image.Waiting()) ApplyEXIFOrientationToDIB(image.dib, EXIFOrientation, turned);
    SetStatus(QStringLiteral("Resizing..."));
    const QSize upright =
        image.Waiting() ? UprightSize(image.stored, EXIFOrientation) : SizeOf(image.dib);
    if (upright.isEmpty()) return;
    int newW = 0, newH = 0;
    bool needResize = false;
    NewDimensions(upright, targetW, targetH, ignoreAR, forceFit, EXIFOrientation, newW, newH,
                  needResize);
    if (ExitShow) return;

    if (image.Waiting()) {
        const QSize wanted = needResize ? QSize(newW, newH) : upright;
        bool refused = false;
        dib::Dib decoded =
            jpeg::DecodeAtLeast(image.jpeg, UprightSize(wanted, EXIFOrientation), &refused);
        if (!decoded && refused) {
            // What the fast decoder will not take (CMYK, say) the imaging library still may:
            // whole, as any other picture.
            FIMEMORY* memory = FreeImage_OpenMemory(reinterpret_cast<BYTE*>(image.jpeg.data()),
                                                    static_cast<DWORD>(image.jpeg.size()));
            decoded.reset(FreeImage_LoadFromMemory(FIF_JPEG, memory, 0));
            FreeImage_CloseMemory(memory);
        }
        image.jpeg.clear();
        if (!decoded) {
            BugLog(QStringLiteral("LoadIntoDIB Error - could not get DIB"));
            return;
        }
        ApplyEXIFOrientationToDIB(decoded, EXIFOrientation, turned);
        if (!decoded) return;
        // A JPEG has no transparency to keep.
        image.dib = SizeOf(decoded) == wanted ? std::move(decoded)
                                              : dib::Resample(std::move(decoded), wanted, true);
        if (!image.dib) {
            BugLog(QStringLiteral("Resize error - no DIB returned from rescalebypixel"));
            return;
        }
    } else if (needResize) {
        image.dib = MFreeImage::RescaleDIBByPixel(std::move(image.dib), newW, newH, FILTER_BICUBIC);
        if (!image.dib) {
            BugLog(QStringLiteral("Resize error - no DIB returned from rescalebypixel"));
            return;
        }
    }
    if (FreeImage_GetBPP(image.dib.get()) != 32) {
        if (needResize) BugLog(QStringLiteral("Converting to 32bits ..."));
        dib::Dib wide(FreeImage_ConvertTo32Bits(image.dib.get()));
        if (!wide) {
            BugLog(QStringLiteral("Resize error - no dib returned when converting to 32 bits"));
            return;
        }
        image.dib = std::move(wide);
    }
    if (needResize)
        SetStatus2(lblBootStatus2->text() +
                   QStringLiteral(" ... resized to (%1x%2)").arg(newW).arg(newH));
    ok = true;
}

void frmSlideShow::GoingToAddBorder(bool& yes) {
    yes = AddBorder && Layout == 1 &&
          DrawUnder(BorderPercent, QStringLiteral("add a border for this stack"));
}

void frmSlideShow::UseBlackAndWhiteForThisImage(bool& yes) {
    yes = UseBlackAndWhite && DrawUnder(BWPercent, QStringLiteral("convert this image to B&W"));
}

void frmSlideShow::ReloadFourUpPoints() {
    FourUpPointsX.clear();
    FourUpPointsY.clear();
    const auto set = static_cast<std::size_t>(NextMonitorSet);
    const double W = MonitorWidth[set], H = MonitorHeight[set];
    const double s = static_cast<double>(FourUpScale);
    const double g = (1 - s - s) / 4;
    const double f = 3 * g + s;
    auto point = [this](double x, double y) {
        FourUpPointsX << QString::number(x, 'g', 15);
        FourUpPointsY << QString::number(y, 'g', 15);
    };
    const int entries = ShowList.count();
    if (entries == 1) {
        point(0, 0);
        return;
    }
    point(W * g, H * g);
    point(W * f, H * g);
    if (entries == 2) return;
    point(W * g, H * f);
    point(W * f, H * f);
}

void frmSlideShow::SetFourUpImagePositions() {
    if (FourUpCount != 1) return;
    ReloadFourUpPoints();
    const auto set = static_cast<std::size_t>(NextMonitorSet);
    FourUpTargetW = Round(MonitorWidth[set] * static_cast<double>(FourUpScale));
    // Two images share the screen side by side at its full height.
    FourUpTargetH = ShowList.count() == 2
                        ? MonitorHeight[set]
                        : Round(MonitorHeight[set] * static_cast<double>(FourUpScale));
}

void frmSlideShow::AssembleCanvas(int layout) {
    static const char* const names[] = {"LAYOUT = Normal", "LAYOUT = Image Stack",
                                        "LAYOUT = Four Up"};
    Layout = static_cast<std::int16_t>(layout);
    NoMaskThisImage = false;
    BugLog(layout >= 0 && layout <= 2 ? QString::fromLatin1(names[layout])
                                      : QStringLiteral("LAYOUT = %1").arg(layout));
    FrameImage imageDIB;
    dib::Dib alphaDIB;
    dib::Dib shadowDIB;

    if (ShowList.isEmpty()) {
        if (Layout == 2) {
            ChooseNextImage(4, true, true, true);
            FourUpCount = 0;
        } else {
            ChooseNextImage(1, RandomImages, RandomFolders, false);
        }
    }
    if (ShowList.isEmpty() || ExitShow) return;
    SetStatus2(ShowList.text(0));

    bool newCanvas = true;
    if (Layout == 1) {
        if (!StackInProgress) StackCount = 0;
        ++StackCount;
        if (StackCount > MaxStackedImages) {
            StackCount = 1;
            BugLog(QStringLiteral("Time for new canvas !"));
            newCanvas = true;
        } else {
            newCanvas = StackCount == 1;
        }
        BugLog(
            QStringLiteral("Stacked image number %1 of %2").arg(StackCount).arg(MaxStackedImages));
        if (newCanvas) GoingToAddBorder(BorderThisStack);
    } else if (Layout == 2) {
        ++FourUpCount;
        if (FourUpCount < 5) {
            newCanvas = FourUpCount == 1;
            // A lone image is shown on its own, at full size.
            if (FourUpCount == 1 && ShowList.count() == 1) Layout = 0;
        } else {
            FourUpCount = 1;
            BugLog(QStringLiteral("Time for new Canvas !"));
            newCanvas = true;
        }
        BugLog(QStringLiteral("Four Up image number %1").arg(FourUpCount));
    }
    if (ExitShow) return;

    bool ok = false;
    LoadNextImageIntoDIB(imageDIB, NoMaskThisImage, ok);
    if (!ok || ExitShow) return;
    SetStatus2(lblBootStatus2->text() + QStringLiteral(" ... (%1x%2)").arg(imageW).arg(imageH));

    if (Layout == 1 && StopStackIfPano) {
        const auto set = static_cast<std::size_t>(qBound(0, static_cast<int>(NextMonitorSet), 4));
        int h = imageH;
        bool pano = false;
        NextDIBIsAnHPano(imageW, h, MonitorWidth[set], MonitorHeight[set], pano);
        if (!pano) {
            h = imageH;
            NextDIBIsAVPano(imageW, h, MonitorWidth[set], MonitorHeight[set], pano);
        }
        if (pano) {
            StackInProgress = false;
            StackCount = 0;
            Layout = 0;
            newCanvas = true;
        }
    }

    int height = imageH;
    SetMonitorAndLimits(imageW, height);
    if (ExitShow) return;
    const auto set = static_cast<std::size_t>(NextMonitorSet);
    int targetW = FrameWidth, targetH = FrameHeight;
    bool forceFit = false;
    if (Layout == 1) {
        targetW = Round(FrameWidth * static_cast<double>(StackScale));
        targetH = Round(FrameHeight * static_cast<double>(StackScale));
        forceFit = true;
    } else if (Layout == 2) {
        SetFourUpImagePositions();
        targetW = FourUpTargetW;
        targetH = FourUpTargetH;
        forceFit = true;
    }

    ResizeDIBImage(imageDIB, targetW, targetH, false, forceFit, ok);
    if (!ok || ExitShow) return;
    imageW = static_cast<int>(FreeImage_GetWidth(imageDIB.dib.get()));
    imageH = static_cast<int>(FreeImage_GetHeight(imageDIB.dib.get()));
    BugLog(QStringLiteral("The DIB is now %1 x %2").arg(imageW).arg(imageH));

    bool blackAndWhite = false;
    UseBlackAndWhiteForThisImage(blackAndWhite);
    if (blackAndWhite) {
        SetStatus(QStringLiteral("Converting to black and white "));
        // Contrast or not, the picture gets the same lift: the setting's two values were never
        // passed on, and the look people know is this one.
        if (!MFreeImage::ConvertDIBToBlackAndWhite(imageDIB.dib, 30.0, 20.0)) {
            BugLog(QStringLiteral("ERROR - changing picture to B&W "));
            return;
        }
    }
    if (ExitShow) return;

    if (BorderThisStack && Layout == 1) {
        SetStatus(QStringLiteral("Adding border "));
        if (MFreeImage::AddBorderToDIB(imageDIB.dib, ValueFromColour(BorderColour))) {
            BugLog(QStringLiteral("Added Border to the image"));
            NoMaskThisImage = true;
        } else {
            BugLog(QStringLiteral("Error adding the border"));
        }
    }

    bool masked = false;
    UseAMask(alphaDIB, imageW, imageH, masked);
    bool noMaskShape = true;
    if (masked) {
        noMaskShape = false;
        if (FreeImage_SetChannel(imageDIB.dib.get(), alphaDIB.get(), FICC_ALPHA))
            ImageFillsScreen = false;
        else
            BugLog(QStringLiteral("ERROR adding alphaDIB to alpha channel of imageDIB"));
    }
    if (!UseShadows || ImageFillsScreen) {
        BugLog(QStringLiteral("(no shadow)"));
    } else {
        SetStatus(QStringLiteral("Making Shadow ... "));
        QString errorText;
        shadowDIB = MakeShadowDIB(imageDIB.dib.get(), ShadowDistance, noMaskShape, errorText,
                                  lblBootStatus);
        BugLog(shadowDIB ? QStringLiteral("Shadow DIB created successfully")
                         : QStringLiteral("ERROR making shadow DIB : ") + errorText);
    }
    alphaDIB.reset();
    if (ExitShow) return;

    if (newCanvas) {
        const int canvasW = std::max(imageW, MonitorWidth[set]);
        const int canvasH = std::max(imageH, MonitorHeight[set]);
        BugLog(QStringLiteral("The canvas DIB is %1 x %2").arg(canvasW).arg(canvasH));
        CanvasDIB.reset(FreeImage_Allocate(canvasW, canvasH, 24));
        BugLog(QStringLiteral("Canvas DIB created"));
        // An image that covers the screen hides the canvas whole: nothing to paint under it.
        if (!ImageFillsScreen) {
            bool painted = false;
            if (UseBackgroundImage) ApplyBackgroundToDIB(CanvasDIB, painted);
            if (!painted &&
                !MFreeImage::FillDIBWithColour(CanvasDIB.get(), ValueFromColour(BackgroundColour)))
                BugLog(QStringLiteral("Filldibwithcolour ERROR"));
        }
    } else {
        // The stack and the four go on from what the screen shows now.
        CanvasDIB.reset(dib::ImageToDib(thePhoto->pixmap().toImage()));
        if (CanvasDIB) CanvasDIB.reset(FreeImage_ConvertTo24Bits(CanvasDIB.get()));
        BugLog(QStringLiteral("Loaded Canvas from current image"));
    }
    if (!CanvasDIB || ExitShow) return;

    int Px = 0, Py = 0;
    if (Layout == 2) {
        const int i = static_cast<int>(vb::Int(FourUpPointsX.count() * platform::Rnd()));
        Px = Round((FourUpTargetW - imageW) / 2.0 + Round(vb::Val(FourUpPointsX.value(i))));
        Py = Round((FourUpTargetH - imageH) / 2.0 + Round(vb::Val(FourUpPointsY.value(i))));
        BugLog(QStringLiteral("Four Up Positioning :"));
        BugLog(QStringLiteral("  %1,%2").arg(Px).arg(Py));
        BugLog(QStringLiteral("  %1x%2 (resize targets)").arg(FourUpTargetW).arg(FourUpTargetH));
        // The last point stays, so that a fifth image would still have a place.
        if (FourUpPointsX.count() >= 2) {
            FourUpPointsX.removeAt(i);
            FourUpPointsY.removeAt(i);
        }
    } else {
        GetOffsetsIfSmaller(imageW, imageH, static_cast<int>(FreeImage_GetWidth(CanvasDIB.get())),
                            static_cast<int>(FreeImage_GetHeight(CanvasDIB.get())), Px, Py);
    }

    QString errorText;
    if (shadowDIB) {
        if (MFreeImage::PasteDIBWithAlpha(shadowDIB.get(), CanvasDIB, Px, Py, errorText)) {
            BugLog(QStringLiteral("Shadow pasted onto canvas OK"));
            shadowDIB.reset();
        } else {
            BugLog(QStringLiteral("ERROR pasting shadow : ") + errorText);
        }
    }
    if (MFreeImage::PasteDIBWithAlpha(imageDIB.dib.get(), CanvasDIB, Px, Py, errorText)) {
        imageDIB.Release();
        BugLog(QStringLiteral("Image Pasted onto CanvasDIB %1 x %2").arg(imageW).arg(imageH));
        NextImageReady = true;
    } else {
        BugLog(QStringLiteral("ImageDIB Alpha Paste error : ") + errorText);
    }

    if (Layout == 1) {
        StackInProgress = StackCount < MaxStackedImages;
    } else if (Layout == 2) {
        // The head of the list goes with the crossfade, after this.
        FourUpInProgress = ShowList.count() >= 2;
    } else {
        StackInProgress = false;
        FourUpInProgress = false;
    }
}
