// What it costs to make a frame of a large camera photo for a 4K monitor, next to the plain
// imaging-library path (full decode, bicubic rescale, 32-bit conversion) and to a reference of
// a scaled decode with a smooth resampler. Prints median times, their ratios, the peak memory
// each path takes above what the process held before it, and how close our frame is to the
// plain path's (PSNR). --quick uses a small photo and a small screen.
#include "BenchSupport.h"
#include "app/Resources.h"
#include "app/modMain.h"
#include "compose/DibImage.h"
#include "compose/JpegScaled.h"
#include "config/frmConfig.h"
#include "platform/Random.h"
#include "show/frmSlideShow.h"

#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <functional>
#include <malloc.h>
#include <vector>

namespace {

struct Setup {
    QSize photo, screen;
    int runs;
};

// Peak resident memory since the last reset, in bytes; the reset makes each path's peak its own.
qint64 StatusBytes(const char* key) {
    QFile f(QStringLiteral("/proc/self/status"));
    if (!f.open(QIODevice::ReadOnly)) return -1;
    for (const QByteArray& line : f.readAll().split('\n'))
        if (line.startsWith(key))
            return line.mid(static_cast<int>(std::strlen(key)))
                       .trimmed()
                       .split(' ')[0]
                       .toLongLong() *
                   1024;
    return -1;
}
void ResetPeak() {
    QFile f(QStringLiteral("/proc/self/clear_refs"));
    if (f.open(QIODevice::WriteOnly)) f.write("5");
}

struct Measure {
    double medianMs = 0;
    qint64 peakBytes = 0;
};

// The paths take turns run after run, so that a slow spell of the machine falls on all of them
// alike; each path's peak is taken above what the process held just before it ran.
std::vector<Measure> RunInTurns(int runs, const std::vector<std::function<void()>>& paths) {
    std::vector<std::vector<double>> times(paths.size());
    std::vector<Measure> measures(paths.size());
    for (int i = 0; i < runs; ++i) {
        for (std::size_t p = 0; p < paths.size(); ++p) {
            const qint64 before = StatusBytes("VmRSS:");
            ResetPeak();
            QElapsedTimer clock;
            clock.start();
            paths[p]();
            times[p].push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
            measures[p].peakBytes = std::max(measures[p].peakBytes, StatusBytes("VmHWM:") - before);
        }
    }
    for (std::size_t p = 0; p < paths.size(); ++p) {
        std::sort(times[p].begin(), times[p].end());
        measures[p].medianMs = times[p][times[p].size() / 2];
    }
    return measures;
}

// A photograph-like picture: soft shapes and colour, with fine grain, so that it compresses
// like a camera's JPEG rather than like a flat drawing.
QByteArray MakePhoto(QSize size) {
    QImage image(size, QImage::Format_RGB32);
    QPainter p(&image);
    QLinearGradient sky(0, 0, 0, size.height());
    sky.setColorAt(0, QColor(70, 120, 190));
    sky.setColorAt(1, QColor(230, 200, 150));
    p.fillRect(image.rect(), sky);
    QRandomGenerator random(7);
    p.setPen(Qt::NoPen);
    for (int i = 0; i < 300; ++i) {
        const int w = random.bounded(size.width() / 20, size.width() / 4);
        QRadialGradient g(QPointF(random.bounded(size.width()), random.bounded(size.height())), w);
        g.setColorAt(0, QColor::fromHsv(random.bounded(360), 120 + random.bounded(120),
                                        90 + random.bounded(160)));
        g.setColorAt(1, Qt::transparent);
        p.setBrush(g);
        p.drawEllipse(g.center(), w, w * 2 / 3);
    }
    p.end();
    for (int y = 0; y < size.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const int n = static_cast<int>(random.bounded(17)) - 8;
            const QRgb c = row[x];
            row[x] = qRgb(std::clamp(qRed(c) + n, 0, 255), std::clamp(qGreen(c) + n, 0, 255),
                          std::clamp(qBlue(c) + n, 0, 255));
        }
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPEG", 90);
    return bytes;
}

double Psnr(const QImage& a, const QImage& b) {
    if (a.size() != b.size() || a.isNull()) return 0;
    const QImage x = a.convertToFormat(QImage::Format_RGB32),
                 y = b.convertToFormat(QImage::Format_RGB32);
    double sum = 0;
    for (int row = 0; row < x.height(); ++row) {
        const auto* p = reinterpret_cast<const QRgb*>(x.constScanLine(row));
        const auto* q = reinterpret_cast<const QRgb*>(y.constScanLine(row));
        for (int col = 0; col < x.width(); ++col) {
            const int dr = qRed(p[col]) - qRed(q[col]), dg = qGreen(p[col]) - qGreen(q[col]),
                      db = qBlue(p[col]) - qBlue(q[col]);
            sum += dr * dr + dg * dg + db * db;
        }
    }
    const double mse = sum / (3.0 * x.width() * x.height());
    return mse == 0 ? 99 : 10 * std::log10(255.0 * 255.0 / mse);
}

} // namespace

int main(int argc, char** argv) {
    const std::optional<bool> mode = QuickMode(argc, argv);
    if (!mode) return 2;
    const bool quick = *mode;
    const Setup setup = quick ? Setup{QSize(1200, 800), QSize(640, 360), 3}
                              : Setup{QSize(6000, 4000), QSize(3840, 2160), 9};
    QTemporaryDir dir;
    // One screen of the size the frame is made for.
    UseOffscreenScreen(dir, setup.screen);
    // Large blocks always straight from the system and back to it when freed: without this the
    // allocator keeps freed frames for the next one, and a path's peak would hide in them.
    mallopt(M_MMAP_THRESHOLD, 1 << 20);
    QApplication app(argc, argv);
    InitResources();
    FreeImage_Initialise();

    const QString photo = dir.filePath(QStringLiteral("photo.jpg"));
    {
        QFile f(photo);
        f.open(QIODevice::WriteOnly);
        f.write(MakePhoto(setup.photo));
    }
    const QSize fitted = setup.photo.scaled(setup.screen, Qt::KeepAspectRatio);
    Checks checks;

    // The plain path: the whole photo decoded, rescaled bicubic, made 32 bits deep.
    QImage plainFrame;
    auto plainPath = [&] {
        dib::Dib full(FreeImage_Load(FIF_JPEG, QFile::encodeName(photo).constData(), 0));
        dib::Dib scaled(
            FreeImage_Rescale(full.get(), fitted.width(), fitted.height(), FILTER_BICUBIC));
        full.reset();
        dib::Dib wide(FreeImage_ConvertTo32Bits(scaled.get()));
        plainFrame = dib::DibToImage(wide.get());
    };

    // The reference: a decode at the smallest scale covering the screen, then a smooth resample.
    QImage referenceFrame;
    auto referencePath = [&] {
        QFile f(photo);
        f.open(QIODevice::ReadOnly);
        dib::Dib small = jpeg::DecodeAtLeast(f.readAll(), fitted);
        const QImage in(
            FreeImage_GetBits(small.get()), static_cast<int>(FreeImage_GetWidth(small.get())),
            static_cast<int>(FreeImage_GetHeight(small.get())),
            static_cast<qsizetype>(FreeImage_GetPitch(small.get())), QImage::Format_RGB32);
        referenceFrame = in.scaled(fitted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };

    // Ours: the show's own canvas for that photo on that monitor.
    InstallDir = dir.path();
    frmConfig::instance()->Initialize();
    frmSlideShow* show = frmSlideShow::instance();
    show->Initialize();
    show->UseImageMask = false;
    show->UseShadows = false;
    QImage ourFrame;
    bool ready = true;
    auto ourPath = [&] {
        show->ShowList.clear();
        show->CaptionsList.clear();
        show->ShowList.add(photo, 0);
        show->CaptionsList.add(QStringLiteral("photo"), 0);
        show->NextImageReady = false;
        platform::FeedRandom({0.0, 0.0});
        show->AssembleCanvas(0);
        ready = ready && show->NextImageReady && show->CanvasDIB;
        show->CanvasDIB.reset();
    };
    const std::vector<Measure> m = RunInTurns(setup.runs, {plainPath, referencePath, ourPath});
    const Measure& plain = m[0];
    const Measure& reference = m[1];
    const Measure& ours = m[2];
    // The frame itself, outside the timing: the photo where the canvas has it.
    show->ShowList.add(photo, 0);
    show->CaptionsList.add(QStringLiteral("photo"), 0);
    platform::FeedRandom({0.0, 0.0});
    show->AssembleCanvas(0);
    const QImage canvas = dib::DibToImage(show->CanvasDIB.get());
    ourFrame = canvas.copy(QRect(QPoint(0, 0), fitted));

    const double psnr = Psnr(ourFrame, plainFrame);
    std::printf("Frame of a %dx%d JPEG for a %dx%d monitor (median of %d runs):\n",
                setup.photo.width(), setup.photo.height(), setup.screen.width(),
                setup.screen.height(), setup.runs);
    std::printf("  plain imaging-library path   %8.1f ms   peak %6.1f MB\n", plain.medianMs,
                plain.peakBytes / 1e6);
    std::printf("  scaled decode + resample     %8.1f ms   peak %6.1f MB\n", reference.medianMs,
                reference.peakBytes / 1e6);
    std::printf("  the show's canvas            %8.1f ms   peak %6.1f MB\n", ours.medianMs,
                ours.peakBytes / 1e6);
    std::printf("  ours / reference %.2f, ours / plain %.2f, PSNR against plain %.1f dB\n",
                ours.medianMs / reference.medianMs, ours.medianMs / plain.medianMs, psnr);

    checks.expect(ready, "the show made a canvas each time");
    checks.expect(canvas.size() == setup.screen, "the canvas has the monitor's size");
    checks.expect(plainFrame.size() == fitted && referenceFrame.size() == fitted,
                  "every path made a frame of the fitted size");
    checks.expect(plain.medianMs > 0 && reference.medianMs > 0 && ours.medianMs > 0,
                  "every path took time");
    checks.expect(psnr >= 38.0, "our frame looks like the plain path's (PSNR >= 38 dB)");
    if (!quick) {
        checks.expect(ours.medianMs <= 1.3 * reference.medianMs,
                      "the show's canvas within 1.3 times the reference");
        checks.expect(ours.peakBytes <= 100'000'000, "at most 100 MB of peak memory");
    }
    frmSlideShow::unload();
    frmConfig::unload();
    return checks.ok() ? 0 : 1;
}
