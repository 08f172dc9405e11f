#include "compose/Captions.h"

#include "app/Common.h"
#include "app/VbNumbers.h"

#include <QLatin1String>

namespace captions {

namespace {

// English whatever the locale: the captions of a show read the same on every machine.
const std::array<const char*, 12> kMonthNames{"January",   "February", "March",    "April",
                                              "May",       "June",     "July",     "August",
                                              "September", "October",  "November", "December"};

QString MonthName(const QString& month) {
    for (int m = 1; m <= 12; ++m)
        if (month == QStringLiteral("%1").arg(m, 2, 10, QLatin1Char('0')))
            return QLatin1String(kMonthNames[static_cast<std::size_t>(m - 1)]);
    return QString();
}

int Round(double value) {
    return static_cast<int>(vb::RoundHalfEven(value));
}

} // namespace

bool IsExifFailureWord(const QString& text) {
    return text == QLatin1String("notEXIF") || text.startsWith(QLatin1String("file"));
}

QString FormatDate(const QString& exifDate) {
    if (IsExifFailureWord(exifDate)) return QString();
    const QString year = exifDate.left(4);
    const QString month = exifDate.mid(5, 2);
    const QString day = exifDate.mid(8, 2);
    if (year == QLatin1String("0000")) return QString();
    const QString text = MonthName(month) + QLatin1Char(' ') + day + QStringLiteral(", ") + year;
    if (text.trimmed() == QLatin1String(",")) return QString();
    return text;
}

bool DSCFiltered(const QString& fileName, const QStringList& prefixes, bool filterOn) {
    if (!filterOn) return false;
    bool filtered = false;
    for (const QString& prefix : prefixes)
        if (fileName.left(prefix.size()).compare(prefix, Qt::CaseInsensitive) == 0) filtered = true;
    return filtered;
}

bool IsWebImage(const QString& captionFullName) {
    return !captionFullName.startsWith(QLatin1Char('/'));
}

void AddToCaptionBlock(BlockText& block, const QString& text, int& count) {
    if (text.isEmpty()) return;
    ++count;
    if (count == 1)
        block.top = text;
    else if (count == 2)
        block.caption = text;
    else
        block.caption += QLatin1Char('\n') + text;
}

void NameAndFolderItems(const ItemSource& source, CaptionItems& items) {
    if (source.titleFound) {
        items.FileName = source.title;
        items.FileNameFull = source.title;
    } else {
        items.FileName = common::FileNameOf(source.captionFullName);
        items.FileNameFull = source.captionFullName;
        // A name shorter than an extension is left whole rather than cut to nothing.
        if (!source.showFileExtension) {
            if (items.FileName.size() >= 4) items.FileName.chop(4);
            if (items.FileNameFull.size() >= 4) items.FileNameFull.chop(4);
        }
    }
    if (IsWebImage(source.captionFullName)) {
        items.FolderName = source.captionSource;
        items.FolderNameFull = source.captionSource;
    } else {
        items.FolderName = QStringLiteral("in folder ") + source.captionSource;
        items.FolderNameFull = common::FolderOf(source.currentImage);
    }
}

QString ShortFolderName(const QString& path) {
    QString folder = common::FolderOf(path);
    if (!folder.isEmpty()) folder.chop(1);
    return common::FileNameOf(folder);
}

QString FilteredNameReplacement(bool showFolderName, bool webImage, const QString& captionSource) {
    if (!showFolderName) return QString();
    return (webImage ? QStringLiteral("from ") : QStringLiteral("in folder ")) + captionSource;
}

BlockText BuildBlock(const CaptionItems& items, const BlockChoice& choice) {
    BlockText block;
    int count = 0;
    if (choice.fileName)
        AddToCaptionBlock(block, choice.fileNameFullPath ? items.FileNameFull : items.FileName,
                          count);
    if (choice.folderName)
        AddToCaptionBlock(
            block, choice.folderNameFullPath ? items.FolderNameFull : items.FolderName, count);
    if (choice.exifDate) AddToCaptionBlock(block, items.ExifDate, count);
    if (choice.dimensions) AddToCaptionBlock(block, items.Size, count);
    if (choice.exifDescription) block.description = items.Description;
    return block;
}

int ContentWidth(const LabelSize& top, const LabelSize& caption, const LabelSize& description) {
    int width = 0;
    if (top.hasText) width = top.width;
    if (caption.hasText && caption.width > width) width = caption.width;
    if (description.hasText && width <= kDescriptionWrap) {
        if (description.width >= kDescriptionWrap)
            width = kDescriptionWrap;
        else if (description.width > width)
            width = description.width;
    }
    return width;
}

int BoxHeight(const LabelSize& top, const LabelSize& caption, const LabelSize& description) {
    int h = 0;
    if (top.hasText) h += top.height;
    if (caption.hasText) h += caption.height;
    if (description.hasText) h += description.height + 4;
    return h + 2;
}

BoxPlace PlaceBox(int position, int boxW, int boxH, int margin, const PlaceArea& area) {
    const int W = area.width;
    const int H = area.height;
    const int L = area.left;
    const int T = area.top;
    const int centred = Round((W - boxW) / 2.0 + L);
    const int right = W - boxW - margin + L;
    const int bottom = H - boxH - margin + T;
    switch (position) {
    case 1:
        return {L + margin, T + margin, Align::Left};
    case 2:
        return {centred, T + margin, Align::Centre};
    case 3:
        return {right, T + margin, Align::Right};
    case 4:
        return {L + margin, bottom, Align::Left};
    case 5:
        return {centred, bottom, Align::Centre};
    case 6:
        return {right, bottom, Align::Right};
    default:
        return {Round((W - boxW) / 2.0), margin, Align::Centre};
    }
}

BlockLayout LayoutLabels(const LabelSize& top, const LabelSize& caption,
                         const LabelSize& description, int innerWidth) {
    BlockLayout layout;
    int y = 0;
    if (top.hasText) {
        layout.top = {true, 5, y, innerWidth, top.height};
        y += top.height;
    }
    if (caption.hasText) {
        layout.caption = {true, 5, y, innerWidth, caption.height};
        y += caption.height + 2;
    }
    if (description.hasText) layout.description = {true, 5, y + 2, innerWidth, description.height};
    return layout;
}

} // namespace captions
