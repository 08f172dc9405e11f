#pragma once

// The generations the crash writer saves, shared with the tests that kill it: generation g of
// every file is known in full, so that a file read after a kill can be recognised as a whole
// generation g, or found torn.
#include "config/frmConfig.h"
#include "show/frmSlideShow.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace crashwriter {

// The preferences head carries the time of writing; both sides hold the clock here.
inline const QDateTime kMoment(QDate(2026, 11, 22), QTime(12, 0, 0));

// --- TView_Prefs.txt ---
inline QString KeywordOf(int g) {
    return QStringLiteral("gen%1").arg(g);
}
inline QString PlaylistOf(int g) {
    return QStringLiteral("/music/list-%1.m3u").arg(g);
}
// The file's length changes from one generation to the next.
inline int PrefixCountOf(int g) {
    return 2 + g % 40;
}
inline void ApplyPrefsGeneration(frmConfig& config, int g) {
    config.txtImageInterval->setText(QString::number(g));
    config.txtKeyword->setText(KeywordOf(g));
    config.txtMusicPlaylist->setText(PlaylistOf(g));
    config.lstDSCFilter->clear();
    for (int i = 0; i < PrefixCountOf(g); ++i)
        config.lstDSCFilter->addItem(QStringLiteral("P%1-%2").arg(g).arg(i));
}

// --- remain.lst, remain-t.lst, remain-d.lst ---
inline int ImageCountOf(int g) {
    return 2000 + (g % 7) * 100;
}
inline int SideCountOf(int g) {
    return 50 + g % 5;
}
inline QString ImageOf(int g, int i) {
    return QStringLiteral("/pics/g%1/img%2.jpg").arg(g).arg(i);
}
inline QString CurrentOf(int g) {
    return QStringLiteral("/pics/g%1/now.jpg").arg(g);
}
inline QString TitleOf(int g, int i) {
    return QStringLiteral("title %1-%2").arg(g).arg(i);
}
inline QString DescriptionOf(int g, int i) {
    return QStringLiteral("description %1-%2").arg(g).arg(i);
}
inline void FillPoolGeneration(frmSlideShow& show, int g) {
    show.ImageList.clear();
    show.ImageTitles.clear();
    show.ImageDescriptions.clear();
    for (int i = 0; i < ImageCountOf(g); ++i)
        show.ImageList.add(ImageOf(g, i), i);
    for (int i = 0; i < SideCountOf(g); ++i) {
        show.ImageTitles.add(TitleOf(g, i), i);
        show.ImageDescriptions.add(DescriptionOf(g, i), i);
    }
    show.CurrentImage = CurrentOf(g);
    show.CaptionFullName = CurrentOf(g);
    show.CaptionSource = QStringLiteral("now %1").arg(g);
    show.CurrentImageTag = g;
    show.CurrentRandomFolder = QStringLiteral("/pics/g%1/").arg(g);
    show.PoolLoaded = true;
}

// --- an image list rewritten after a rescan ---
inline QString ListFileOf(const QString& installDir) {
    return installDir + QStringLiteral("/Imagelists/Rescanned_1.tvl");
}
inline int RecordCountOf(int g) {
    return 500 + (g % 9) * 50;
}
inline QString RecordOf(int g, int i) {
    return QStringLiteral("IMAGE>/pics/g%1/r%2.jpg").arg(g).arg(i);
}
inline QStringList RecordsOf(int g) {
    QStringList records;
    for (int i = 0; i < RecordCountOf(g); ++i)
        records << RecordOf(g, i);
    return records;
}

// --- MarkedImages.txt: generation g has marked images 1 to g ---
inline QString MarkedOf(int g) {
    return QStringLiteral("/pics/marked/%1 ä.jpg").arg(g);
}

// --- the settings store ---
inline QString StepTimeOf(int g) {
    return QString::number(g);
}
inline QString InstallDirOf(int g) {
    return QStringLiteral("/opt/tessaview-%1/end").arg(g);
}

} // namespace crashwriter
