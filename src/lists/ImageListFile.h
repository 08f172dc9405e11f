#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <array>
#include <functional>
#include <optional>

// The image list file (".tvl"): one list of photographs with a small header. The configuration
// window keeps each list as a row of its list view; these functions hold the file's rules so
// that they can be used and tested without a window.
namespace lists {

inline const QString kListBanner = QStringLiteral("Imagelist for Ferrin's Tessaview");
// Thirty hyphens whatever the banner's length; readers take it for an unknown key.
inline const QString kListUnderline = QString(30, QLatin1Char('-'));
inline const QString kListExtension = QStringLiteral(".tvl");
inline const QString kImagesMarker = QStringLiteral("IMAGES");

// A list's header as the row of the list view holds it: every value is text, and each option
// slot is the whole "name==value" text (empty when the slot is unused after a load).
struct ImageListRow {
    QString title;                  // row text
    QString count;                  // sub-item 1
    QString path;                   // sub-item 2
    QString type;                   // sub-item 3: "Local", "Web" or "Flickr..."
    QString fileName;               // sub-item 4
    QString lastScan;               // sub-item 5
    QString scanInterval;           // sub-item 6
    std::array<QString, 5> options; // sub-items 7 to 11
};

// What the configuration reader makes of a file.
struct LoadedImageList {
    ImageListRow row;
    QStringList images;
    // The "IMAGES" marker was met; without it the list simply has no images.
    bool sawImagesMarker = false;
    // The file ended where a value line was due (after "TITLE" or "PATH") or a key lacked its
    // value: reading stopped there, and what was read so far stands.
    bool failed = false;
};

// The lines of a text file, read with CR LF or LF line ends; a final line end adds no line.
// False when the file cannot be read.
bool ReadTextLines(const QString& fileName, QStringList& lines);
// Writes the lines, each ended by CR LF, under a temporary name that then replaces the file.
bool WriteTextLines(const QString& fileName, const QStringList& lines);

// The number of photograph records: lines starting "IMAG". Titles and descriptions of a
// Flickr list do not count, so a list of triples counts its photographs.
int CountImageRecords(const QStringList& images);

// The whole file as the configuration window writes it, header values as given.
QStringList ImageListLines(const ImageListRow& row, const QStringList& images);

// The configuration window's reading of a file's lines (banner included): keys in any order,
// unknown keys ignored, only the option slots it knows filled. fileName goes to the row.
LoadedImageList ParseImageList(const QStringList& lines, const QString& fileName);
// The same reading of a file, a line at a time. Nothing when the file cannot be read or holds
// no line at all.
std::optional<LoadedImageList> ReadImageList(const QString& fileName);

// The show's rewrite after a rescan: the header of the file is kept up to its "IMAGES" line
// (40 lines at most), lines starting "COUNT" and "LASTSCAN" are replaced, and the records
// follow. Empty when the old file has no "IMAGES" line.
QStringList ReWrittenImageListLines(const QStringList& oldLines, const QStringList& records,
                                    const QDate& today);
// Rewrites the file in place. False, and the file untouched, when it cannot be read, has no
// "IMAGES" line or cannot be written.
bool ReWriteImageList(const QString& fileName, const QStringList& records);

// The small icon of a row: "folder", "web" or "flickr". The reader knows "Local" and "Web" and
// takes anything else for Flickr; a new list is Flickr only when its type starts so.
QString IconKeyForLoadedType(const QString& type);
QString IconKeyForNewType(const QString& type);

// The first ten characters of a web or Flickr source, lower-cased and stripped of the
// characters that cannot or should not stand in a file name.
QString WebListBaseName(const QString& sourceText);
// InstallDir + "/Imagelists/" + base + "_" + n + ".tvl" for the first n from 1 that is free:
// no such file on disk and not taken by the list view. listName gets base + "_" + n.
QString FreeImageListFileName(const QString& installDir, const QString& base,
                              const std::function<bool(const QString&)>& inFolderList,
                              QString* listName = nullptr);

} // namespace lists
