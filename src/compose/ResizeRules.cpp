#include "compose/ResizeRules.h"

#include "app/VbNumbers.h"
#include "platform/Random.h"
#include "prefs/PrefsTable.h"

namespace resize {
namespace {

int Round(double value) {
    return static_cast<int>(vb::RoundHalfEven(value));
}

QString SizeText(int w, int h) {
    return QStringLiteral("%1 x %2").arg(w).arg(h);
}

// A real as a log line shows it: up to fifteen digits, no trailing zeros.
QString RealText(double value) {
    return QString::number(value, 'g', 15);
}

} // namespace

SizeResult NewDimensions(const SizeRequest& r) {
    SizeResult out;
    out.log << QStringLiteral("Calculating Resized Dimensions :") << QString();

    const bool fit = r.forceFit || !r.scrollPanos;
    int w = r.width;
    const int h = r.height;
    int tw = r.targetW;
    const int th = r.targetH;
    const int origW = w;
    const int origH = h;
    out.log << QStringLiteral("   input image W:H = ") + SizeText(w, h)
            << QStringLiteral(" resize targets = ") + SizeText(tw, th);
    out.sizeText = SizeText(w, h);

    if (!r.ignoreAR && r.widescreenFactor != 0.0) {
        // The squeeze is horizontal only: a widescreen stretches what it shows sideways.
        tw = Round(tw / r.widescreenFactor);
        w = Round(w / r.widescreenFactor);
        out.log << QStringLiteral("  targets w xAR = ") + SizeText(tw, th);
    } else {
        out.log << QStringLiteral(" (ignoring xAR)");
    }

    int newW = w;
    int newH = h;
    // An image without area cannot be measured; it is passed on as it is.
    const bool measurable = w > 0 && h > 0;
    const double ar = measurable ? static_cast<double>(w) / h : 0.0;

    if (!measurable || (w <= tw && h <= th)) {
        // Nothing is ever enlarged.
    } else if (w - tw > h - th) {
        if (fit) {
            if (w > tw) {
                newW = tw;
                newH = Round(tw / ar);
            }
            if (newH > th) {
                newH = th;
                newW = Round(th * ar);
            }
        } else {
            if (h > th) {
                newH = th;
                newW = Round(th * ar);
            }
            // A slight overhang is not worth scrolling for.
            if (newW - tw < tw * 0.15 && newW > tw) {
                newW = tw;
                newH = Round(tw / ar);
            }
        }
        out.log << QStringLiteral(" (H)   new size = ") + SizeText(newW, newH);
    } else if (ar > 1.0) {
        newH = th;
        newW = Round(th * ar);
        // Without fit the width may overhang by any amount here: no 15 % rule.
        if (newW > tw && fit) {
            newW = tw;
            newH = Round(tw / ar);
        }
        out.log << QStringLiteral(" (VH)  new size = ") + SizeText(newW, newH)
                << QStringLiteral("   (no other checks done for these type)");
    } else if (!fit && r.scrollPanos && (!r.forceVertical || ar <= 0.74)) {
        if (w > tw) {
            newW = tw;
            newH = Round(tw / ar);
        }
        if (newH - th < th * 0.15 && newH > th) {
            newH = th;
            newW = Round(th * ar);
        }
    } else {
        out.log << QStringLiteral("Forcing vertical image to fit because:")
                << QStringLiteral("   forcefit = ") + prefs::BoolText(fit)
                << QStringLiteral("   scrollpanos = ") + prefs::BoolText(r.scrollPanos)
                << QStringLiteral("  forcevert = ") + prefs::BoolText(r.forceVertical) +
                       QStringLiteral(" & AR = ") + RealText(ar);
        if (h > th) {
            newH = th;
            newW = Round(th * ar);
        }
        if (newW > tw) {
            newW = tw;
            newH = Round(tw / ar);
        }
    }

    // Against the monitor's true width, so that with the squeeze on even a frame-filling
    // image keeps its background and shadow.
    out.imageFillsScreen = newW >= r.monitorW && newH >= r.monitorH;
    out.needResize = newW != origW || newH != origH;
    out.newW = newW;
    out.newH = newH;
    return out;
}

PanoResult NextDIBIsAnHPano(int w, int h, int screenW, int screenH, double widescreenFactor) {
    PanoResult out;
    out.height = h;
    // Whole-number division by the rounded factor, which is 1 for both factors in use: the
    // width is deliberately not squeezed in this test.
    const int divisor = static_cast<int>(vb::RoundHalfEven(widescreenFactor));
    int w2 = divisor > 0 ? w / divisor : w;
    if (w2 <= screenW || w2 - screenW <= h - screenH || h <= 0) return out;
    const double ar = static_cast<double>(w2) / h;
    if (h > screenH) {
        out.height = screenH;
        w2 = Round(out.height * ar);
    }
    if (screenW * 0.15 <= w2 - screenW) {
        out.isPano = true;
        out.log << QStringLiteral("This image is a horizontal pano");
    }
    return out;
}

PanoResult NextDIBIsAVPano(int w, int h, int screenW, int screenH) {
    Q_UNUSED(screenW);
    PanoResult out;
    out.height = h;
    if (h <= screenH || h <= 0) return out;
    // Stricter than the 0.74 at which NewDimensions lets a portrait scroll: this test decides
    // whether a stack stops, and that should take a really tall image.
    if (static_cast<double>(w) / h >= 0.6) return out;
    if (screenH * 0.15 <= h - screenH) {
        out.isPano = true;
        out.log << QStringLiteral("This image is a vertical pano");
    }
    return out;
}

Offsets GetOffsetsIfSmaller(int imageW, int imageH, int canvasW, int canvasH, bool useBand,
                            int bandTop, int bandHeight) {
    Offsets out;
    out.log << QStringLiteral("Get Offsets if smaller :");
    if (canvasW > imageW) {
        out.x = static_cast<int>(vb::Int((canvasW - imageW) * platform::Rnd()));
        out.log << QStringLiteral("   width is smaller than screen");
    }
    if (useBand) {
        // Spanning monitors of different heights: only the band they all show is safe.
        if (bandHeight > imageH) {
            out.y = static_cast<int>(vb::Int((bandHeight - imageH) * platform::Rnd())) + bandTop;
            out.log << QStringLiteral("   height is smaller than minheight of screen(s)");
        } else {
            out.y = bandTop;
        }
    } else if (canvasH > imageH) {
        out.y = static_cast<int>(vb::Int((canvasH - imageH) * platform::Rnd()));
        out.log << QStringLiteral("   height is smaller than screen");
    }
    out.log << QStringLiteral("   offsets are %1,%2").arg(out.x).arg(out.y);
    return out;
}

} // namespace resize
