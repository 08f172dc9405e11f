// The caption blocks laid over each frame once its crossfade is done. What the blocks say and
// where they go is worked out in compose/Captions; here the labels are filled, measured and
// placed.
#include "compose/Captions.h"
#include "compose/PictureBox.h"
#include "config/frmConfig.h"
#include "lists/ImageEntry.h"
#include "show/frmSlideShow.h"

#include <QFontDatabase>
#include <algorithm>
#include <utility>

namespace {

void SetCaptionStyle(QLabel* label, const ShowPrefs& prefs) {
    QFont font = label->font();
    font.setPointSizeF(
        static_cast<double>(prefs.CaptionFontSize > 0 ? prefs.CaptionFontSize : 1.0f));
    font.setBold(prefs.CaptionFontBold);
    font.setItalic(prefs.CaptionFontItalic);
    label->setFont(font);
    QPalette pal = label->palette();
    pal.setColor(QPalette::WindowText, prefs.CaptionForeColor);
    label->setPalette(pal);
    label->setAutoFillBackground(false);
}

captions::LabelSize Measure(QLabel* label) {
    captions::LabelSize size;
    size.hasText = !label->text().isEmpty();
    label->setContentsMargins(0, 0, 0, 0);
    if (!size.hasText) return size;
    const QSize hint = label->sizeHint();
    size.width = hint.width();
    size.height = hint.height();
    return size;
}

// A wrapping label's size hint is a guess at a pleasant shape; the width rule wants the text's
// width on one line.
captions::LabelSize MeasureUnwrapped(QLabel* label) {
    const bool wraps = label->wordWrap();
    label->setWordWrap(false);
    captions::LabelSize size = Measure(label);
    label->setWordWrap(wraps);
    return size;
}

Qt::Alignment AlignmentOf(captions::Align align) {
    switch (align) {
    case captions::Align::Left:
        return Qt::AlignLeft | Qt::AlignTop;
    case captions::Align::Right:
        return Qt::AlignRight | Qt::AlignTop;
    case captions::Align::Centre:
        break;
    }
    return Qt::AlignHCenter | Qt::AlignTop;
}

} // namespace

void frmSlideShow::UpdateCaption() {
    // Pictures of the old boxes drawn by a travelling photo give way to the boxes themselves.
    thePhoto->clearOverlays();
    const bool internal = IsInternalEntry(CurrentImage);
    const bool web = captions::IsWebImage(CaptionFullName);
    // A local photo's caption line carries its file name as its source; the folder items name
    // the folder it is in.
    const QString folderSource = web ? CaptionSource : captions::ShortFolderName(CurrentImage);
    captions::CaptionItems items;
    if (!internal) {
        captions::ItemSource source;
        source.currentImage = CurrentImage;
        source.captionFullName = CaptionFullName;
        source.captionSource = folderSource;
        source.showFileExtension = ShowFileExtension;
        ExtraInfo(CurrentImageTag, ImageTitles, source.title, source.titleFound);
        captions::NameAndFolderItems(source, items);

        if (!EXIFReader) EXIFReader = std::make_unique<clsEXIF>();
        EXIFReader->SetImageFile(CurrentImage);
        FormatDate(EXIFReader->GetOrigDate(), items.ExifDate);

        bool found = false;
        ExtraInfo(CurrentImageTag, ImageDescriptions, items.Description, found);
        if (!found) {
            items.Description = EXIFReader->GetDescription();
            // The reader's words for a file without EXIF data are no description.
            if (captions::IsExifFailureWord(items.Description)) items.Description.clear();
        }
        items.Size = ImageSizeText[static_cast<std::size_t>(CurrentFrameSlot & 1)];
    }

    bool filtered = false;
    DSCFiltered(items.FileName, filtered);
    if (filtered) {
        BugLog(QStringLiteral("     DSCfiltered"));
        BugLog(DSCShowFolderName ? QStringLiteral("     showing foldername")
                                 : QStringLiteral("     showing blank"));
        items.FileName = captions::FilteredNameReplacement(DSCShowFolderName, web, folderSource);
        items.FileNameFull = items.FileName;
    }

    BugLog(QStringLiteral("=============================================="));
    BugLog(QStringLiteral("    FileName : ") + items.FileName);
    BugLog(QStringLiteral(" FileName (full): ") + items.FileNameFull);
    BugLog(QStringLiteral("  Foldername : ") + items.FolderName);
    BugLog(QStringLiteral(" Foldername (full) : ") + items.FolderNameFull);
    BugLog(QStringLiteral("   EXIF Date : ") + items.ExifDate);
    BugLog(QStringLiteral("  Size of image : ") + items.Size);
    BugLog(QStringLiteral("    Description : ") + items.Description);

    if (!ShowCaptions || internal) {
        for (QLabel* box : CaptionBox)
            box->hide();
        BugLog(QString());
        return;
    }

    BugLog(QStringLiteral("    Captions are on."));
    for (std::size_t i = 0; i < 2; ++i) {
        SetFontName(static_cast<int>(i), CaptionFontName);
        for (QLabel* label : {lblTopCaption[i], lblCaption[i], lblDescription[i]})
            SetCaptionStyle(label, *this);
        lblDescription[i]->setWordWrap(true);
        QPalette pal = CaptionBox[i]->palette();
        pal.setColor(QPalette::Window, CaptionBackColor);
        // A floating box's border line is drawn in the text colour.
        pal.setColor(QPalette::WindowText, CaptionForeColor);
        CaptionBox[i]->setPalette(pal);

        lblTopCaption[i]->clear();
        lblCaption[i]->clear();
        lblDescription[i]->clear();
        BugLog(QStringLiteral("    Caption %1 :").arg(i));

        captions::BlockChoice choice;
        choice.fileName = CapFileName[i];
        choice.fileNameFullPath = CapFileNameFullPath[i];
        choice.folderName = CapFolderName[i];
        choice.folderNameFullPath = CapFolderNameFullPath[i];
        choice.exifDate = CapEXIFDate[i];
        choice.dimensions = CapDimensions[i];
        choice.exifDescription = CapEXIFDescription[i];
        const captions::BlockText block = captions::BuildBlock(items, choice);
        lblTopCaption[i]->setText(block.top);
        lblCaption[i]->setText(block.caption);
        lblDescription[i]->setText(block.description);
        BugLog(QStringLiteral("     final caption > ") + lblCaption[i]->text());
    }
    PositionCaptionBoxes(NextMonitorSet);
}

void frmSlideShow::AddToCaptionBlock(int block, const QString& text, int& count) {
    if (block < 0 || block > 1) return;
    const auto i = static_cast<std::size_t>(block);
    captions::BlockText texts{lblTopCaption[i]->text(), lblCaption[i]->text(), QString()};
    captions::AddToCaptionBlock(texts, text, count);
    lblTopCaption[i]->setText(texts.top);
    lblCaption[i]->setText(texts.caption);
}

void frmSlideShow::DSCFiltered(const QString& fileName, bool& filtered) {
    QStringList prefixes;
    if (DSCFilterON) {
        const QListWidget* list = frmConfig::instance()->lstDSCFilter;
        for (int row = 0; list && row < list->count(); ++row)
            prefixes << list->item(row)->text();
    }
    filtered = captions::DSCFiltered(fileName, prefixes, DSCFilterON);
}

void frmSlideShow::FormatDate(const QString& exifDate, QString& text) {
    text = captions::FormatDate(exifDate);
    BugLog(QStringLiteral(" - formatdate: ") + exifDate + QStringLiteral(" => ") + text);
}

void frmSlideShow::GetTitleOrFilename(const QString& entry, std::int32_t tag, QString& title) {
    title.clear();
    if (IsInternalEntry(entry)) return;
    bool found = false;
    ExtraInfo(tag, ImageTitles, title, found);
    if (!found)
        title = entry;
    else if (title.trimmed().isEmpty())
        title = QStringLiteral("(blank title)");
}

void frmSlideShow::SetFontName(int block, const QString& fontName) {
    if (block < 0 || block > 1 || !QFontDatabase::hasFamily(fontName)) return;
    QLabel* label = lblCaption[static_cast<std::size_t>(block)];
    QFont font = label->font();
    font.setFamily(fontName);
    label->setFont(font);
}

void frmSlideShow::PositionCaptionBoxes(int monitor) {
    const QRect screen = monitors::MonitorRect(*this, monitor);
    const captions::PlaceArea area{FrameWidth, screen.height(), screen.left(), screen.top()};
    for (std::size_t i = 0; i < 2; ++i) {
        QLabel* box = CaptionBox[i];
        const captions::LabelSize top = Measure(lblTopCaption[i]);
        const captions::LabelSize caption = Measure(lblCaption[i]);
        captions::LabelSize description = MeasureUnwrapped(lblDescription[i]);
        if (!top.hasText && !caption.hasText && !description.hasText) {
            box->hide();
            continue;
        }

        int margin = 0;
        if (FloatingCaptions) {
            box->setFrameStyle(QFrame::Box | QFrame::Plain);
            box->setLineWidth(1);
            margin = 10;
        } else {
            box->setFrameStyle(QFrame::NoFrame);
        }

        const int width = captions::ContentWidth(top, caption, description);
        if (description.hasText) {
            description.width = width;
            const int wrapped = lblDescription[i]->heightForWidth(width);
            if (wrapped > 0) description.height = wrapped;
        }
        const int boxW = captions::BoxWidth(width);
        const int boxH = captions::BoxHeight(top, caption, description);
        const captions::BoxPlace place =
            captions::PlaceBox(CaptionPosition[i], boxW, boxH, margin, area);

        // Labels stand in the client area, inside the border. Each spans the box as laid out,
        // but its text keeps to the measured width: the description then wraps exactly where
        // its height was taken, and right-aligned text is not cut off by the box's edge.
        const int border = box->frameWidth();
        const int inner = boxW - 2 * border;
        const captions::BlockLayout layout =
            captions::LayoutLabels(top, caption, description, inner);
        const std::array<std::pair<QLabel*, captions::LabelPlace>, 3> labels{
            {{lblTopCaption[i], layout.top},
             {lblCaption[i], layout.caption},
             {lblDescription[i], layout.description}}};
        for (const auto& [label, at] : labels) {
            label->setAlignment(AlignmentOf(place.align));
            label->setContentsMargins(0, 0, std::max(0, at.width - width), 0);
            label->setGeometry(border + at.left, border + at.top, at.width, at.height);
            label->setVisible(at.visible);
        }

        box->hide();
        box->setGeometry(place.left, place.top, boxW, boxH);
        box->show();
        // Above the photographs, below the status and debug panels.
        box->stackUnder(picBootStatus);
    }
}
