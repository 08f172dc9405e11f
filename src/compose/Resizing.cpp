// Sizes and places of the image on its frame: the form's side of the size rules.
#include "app/modMain.h"
#include "compose/ResizeRules.h"
#include "show/frmSlideShow.h"

namespace {
void LogAll(const QStringList& lines) {
    for (const QString& line : lines)
        BugLog(line);
}
} // namespace

void frmSlideShow::NewDimensions(QSize size, int targetW, int targetH, bool ignoreAR, bool forceFit,
                                 int orientation, int& newW, int& newH, bool& needResize) {
    // The image has been turned by its EXIF orientation before it gets here.
    Q_UNUSED(orientation);
    needResize = false;
    if (ExitShow) return;

    resize::SizeRequest request;
    request.width = size.width();
    request.height = size.height();
    request.targetW = targetW;
    request.targetH = targetH;
    request.ignoreAR = ignoreAR;
    request.forceFit = forceFit;
    request.scrollPanos = ScrollPanos;
    request.forceVertical = ForceVertical;
    request.widescreenFactor = static_cast<double>(ActiveWidescreenFactor);
    const auto set = static_cast<std::size_t>(qBound(0, static_cast<int>(NextMonitorSet), 4));
    request.monitorW = MonitorWidth[set];
    request.monitorH = MonitorHeight[set];

    const resize::SizeResult result = resize::NewDimensions(request);
    LogAll(result.log);
    // The frame being built sits in NextFrameSlot, which the crossfade turns into
    // CurrentFrameSlot, where the caption reads it.
    ImageSizeText[static_cast<std::size_t>(NextFrameSlot & 1)] = result.sizeText;
    ImageFillsScreen = result.imageFillsScreen;
    newW = result.newW;
    newH = result.newH;
    needResize = result.needResize;
}

void frmSlideShow::NextDIBIsAnHPano(int w, int& h, int screenW, int screenH, bool& isPano) {
    const resize::PanoResult result = resize::NextDIBIsAnHPano(
        w, h, screenW, screenH, static_cast<double>(ActiveWidescreenFactor));
    LogAll(result.log);
    h = result.height;
    isPano = result.isPano;
}

void frmSlideShow::NextDIBIsAVPano(int w, int& h, int screenW, int screenH, bool& isPano) {
    const resize::PanoResult result = resize::NextDIBIsAVPano(w, h, screenW, screenH);
    LogAll(result.log);
    h = result.height;
    isPano = result.isPano;
}

void frmSlideShow::GetOffsetsIfSmaller(int width, int height, int canvasW, int canvasH, int& Px,
                                       int& Py) {
    const resize::Offsets result = resize::GetOffsetsIfSmaller(
        width, height, canvasW, canvasH, NextMonitorSet == 0 && MultiMonUseMinHeight, MinHeightTop,
        MinHeight);
    LogAll(result.log);
    Px = result.x;
    Py = result.y;
}
