#pragma once

#include <QString>
#include <QStringList>

// How big an image ends up on its frame, whether it counts as a panorama, and where a smaller
// image lands. No window is needed: the show's methods feed these and write their log lines.
namespace resize {

struct SizeRequest {
    int width = 0; // the image as loaded and turned
    int height = 0;
    int targetW = 0;
    int targetH = 0;
    bool ignoreAR = false;
    bool forceFit = false;
    bool scrollPanos = true;
    bool forceVertical = false;
    double widescreenFactor = 1.0;
    // The true size of the monitor slot; never squeezed, see ImageFillsScreen.
    int monitorW = 0;
    int monitorH = 0;
};

struct SizeResult {
    int newW = 0;
    int newH = 0;
    bool needResize = false;
    bool imageFillsScreen = false;
    // "<w> x <h>" of the image before any squeeze or resize, for the caption.
    QString sizeText;
    QStringList log;
};

// Never enlarges. A small overhang is shrunk away; an overhang of 15 % of the target or more
// stays and scrolls, unless fitting is forced or scrolling is off.
SizeResult NewDimensions(const SizeRequest& request);

struct PanoResult {
    bool isPano = false;
    // The caller's height, clamped to the screen when the image is taller.
    int height = 0;
    QStringList log;
};

PanoResult NextDIBIsAnHPano(int w, int h, int screenW, int screenH, double widescreenFactor);
PanoResult NextDIBIsAVPano(int w, int h, int screenW, int screenH);

struct Offsets {
    int x = 0;
    int y = 0;
    QStringList log;
};

// A random free place on the canvas, one draw of platform::Rnd per axis that has room. With
// useBand the vertical place is kept inside the band all monitors share.
Offsets GetOffsetsIfSmaller(int imageW, int imageH, int canvasW, int canvasH, bool useBand,
                            int bandTop, int bandHeight);

} // namespace resize
