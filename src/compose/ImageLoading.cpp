// Loading the image at the head of the show's list, and turning it upright.
#include "app/VbNumbers.h"
#include "app/modMain.h"
#include "compose/FrameImage.h"
#include "compose/JpegScaled.h"
#include "compose/MFreeImage.h"
#include "show/frmSlideShow.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

bool ApplyOrientation(dib::Dib& dib, int orientation) {
    if (!dib) return false;
    auto flipH = [&] { return FreeImage_FlipHorizontal(dib.get()) != 0; };
    auto flipV = [&] { return FreeImage_FlipVertical(dib.get()) != 0; };
    // Positive angles turn counter-clockwise. A mirrored orientation is a flip and a turn;
    // 5 and 7 are told apart by the way the picture must end up, upright.
    auto turn = [&](double angle) {
        dib = MFreeImage::RotateDIB(std::move(dib), angle);
        return dib != nullptr;
    };
    switch (orientation) {
    case 2:
        return flipH();
    case 3:
        return flipH() && flipV();
    case 4:
        return flipV();
    case 5:
        return flipH() && turn(90);
    case 6:
        return turn(270);
    case 7:
        return flipH() && turn(270);
    case 8:
        return turn(90);
    default:
        return true;
    }
}

QSize UprightSize(QSize stored, int orientation) {
    return orientation >= 5 && orientation <= 8 ? stored.transposed() : stored;
}

namespace {

bool TooLarge(QSize size) {
    return static_cast<qint64>(size.width()) * size.height() > kMaxImagePixels;
}

QString TooLargeText(QSize size) {
    return QStringLiteral("LoadIntoDIB Error - the image is too large (%1 x %2)")
        .arg(size.width())
        .arg(size.height());
}

// A JPEG is measured, not decoded: its size comes from its header.
bool LoadJpeg(const QString& path, FrameImage& image, QString& errorText) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > kMaxImageFileBytes) {
        errorText = QStringLiteral("LoadIntoDIB Error - could not get DIB");
        return false;
    }
    QByteArray bytes = file.readAll();
    QSize size;
    if (!jpeg::ReadSize(bytes, size)) return false;
    if (TooLarge(size)) {
        errorText = TooLargeText(size);
        return false;
    }
    image.jpeg = std::move(bytes);
    image.stored = size;
    return true;
}

// Any other picture goes through the imaging library, its size checked before its pixels are
// made wherever the format lets the library read the size alone.
bool LoadOther(const QString& path, FrameImage& image, QString& errorText) {
    const QByteArray name = QFile::encodeName(path);
    const FREE_IMAGE_FORMAT format = FreeImage_GetFIFFromFilename(name.constData());
    if (format != FIF_UNKNOWN && FreeImage_FIFSupportsNoPixels(format)) {
        dib::Dib header(FreeImage_Load(format, name.constData(), FIF_LOAD_NOPIXELS));
        if (header) {
            const QSize size(static_cast<int>(FreeImage_GetWidth(header.get())),
                             static_cast<int>(FreeImage_GetHeight(header.get())));
            if (TooLarge(size)) {
                errorText = TooLargeText(size);
                return false;
            }
        }
    }
    FREE_IMAGE_FORMAT loaded = FIF_UNKNOWN;
    if (!MFreeImage::LoadIntoDIB(path, image.dib, errorText, loaded)) return false;
    image.stored = QSize(static_cast<int>(FreeImage_GetWidth(image.dib.get())),
                         static_cast<int>(FreeImage_GetHeight(image.dib.get())));
    return true;
}

bool IsJpegName(const QString& path) {
    return FreeImage_GetFIFFromFilename(QFile::encodeName(path).constData()) == FIF_JPEG;
}

} // namespace

void frmSlideShow::LoadNextImageIntoDIB(FrameImage& imageDIB, bool& noMask, bool& ok) {
    ok = false;
    imageDIB.Release();
    const QString entry = ShowList.isEmpty() ? QStringLiteral("(emptyshowlist)") : ShowList.text(0);

    if (entry.left(8) == QLatin1String("INTERNAL")) {
        const int index = static_cast<int>(vb::Val(entry.section(':', 1, 1).trimmed()));
        BugLog(QString());
        BugLog(QStringLiteral("LOADING INTERNAL IMAGE  "
                              "--------------------------------------------------------"));
        BugLog(QStringLiteral("  index number >> ") + QString::number(index));
        if (index == 0) {
            BugLog(QStringLiteral("                   The Bubble Logo"));
            noMask = true;
        }
        SetStatus(QStringLiteral("Loading image. "));
        if (ExitShow) return;
        imageDIB.dib.reset(dib::ImageToDib(InternalImage(index)));
        if (!imageDIB.dib) {
            BugLog(QStringLiteral("Error loading internal image into DIB"));
            return;
        }
        imageDIB.stored = QSize(static_cast<int>(FreeImage_GetWidth(imageDIB.dib.get())),
                                static_cast<int>(FreeImage_GetHeight(imageDIB.dib.get())));
        EXIFOrientation = 1;
        imageW = imageDIB.stored.width();
        imageH = imageDIB.stored.height();
        ok = true;
        return;
    }

    SetStatus(QStringLiteral("Loading image ..."));
    BugLog(QString());
    BugLog(QStringLiteral("LOADED IMAGE INTO DIB "
                          "--------------------------------------------------------"));
    BugLog(QStringLiteral("  >> ") + entry);
    if (ExitShow) return;
    LoadingImage = true;
    QCoreApplication::processEvents();
    QString errorText;
    const bool loaded =
        !ExitShow && ((IsJpegName(entry) && LoadJpeg(entry, imageDIB, errorText)) ||
                      (errorText.isEmpty() && LoadOther(entry, imageDIB, errorText)));
    if (loaded) {
        int orientation = 1;
        GetEXIFOrientation(entry, orientation);
        EXIFOrientation = orientation;
        imageW = imageDIB.stored.width();
        imageH = imageDIB.stored.height();
        ok = true;
    } else {
        BugLog(errorText);
    }
    QCoreApplication::processEvents();
    LoadingImage = false;
    BugLog(QString());
}

void frmSlideShow::ApplyEXIFOrientationToDIB(dib::Dib& dib, int orientation, bool& ok) {
    SetStatus(QStringLiteral("Rotating image based on EXIF tag ... "));
    ok = ApplyOrientation(dib, orientation);
}

QImage frmSlideShow::InternalImage(int index) {
    return index == 0 ? QImage(QStringLiteral(":/logo.png")) : QImage();
}

void frmSlideShow::GetEXIFOrientation(const QString& path, int& orientation) {
    orientation = 1;
    if (!EXIFReader) EXIFReader = std::make_unique<clsEXIF>();
    EXIFReader->SetImageFile(path);
    orientation = EXIFReader->GetOrientation();
}
