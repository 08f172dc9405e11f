#pragma once

#include <QString>
#include <QStringList>
#include <array>

// The text and geometry of the show's two caption blocks, free of any window, so that every
// rule can be tried on plain values. The form measures its labels and hands the sizes in.
namespace captions {

// "<Month> <DD>, <YYYY>" of an EXIF date "YYYY:MM:DD HH:MM:SS"; "" for the reader's failure
// words, a year 0000 and anything that leaves only the comma.
QString FormatDate(const QString& exifDate);

// True when the filter is on and the name starts with one of the prefixes, case ignored.
bool DSCFiltered(const QString& fileName, const QStringList& prefixes, bool filterOn);

// The reader answers these words instead of a value when the file gave it nothing.
bool IsExifFailureWord(const QString& text);

// A caption's path is local when it is an absolute path; everything else came from the web.
bool IsWebImage(const QString& captionFullName);

// The three texts of one block.
struct BlockText {
    QString top;
    QString caption;
    QString description;
};

// The first item goes on top, the second below it and every later one on a line of its own
// under the second. Empty items are left out and not counted.
void AddToCaptionBlock(BlockText& block, const QString& text, int& count);

// What one image can say about itself.
struct CaptionItems {
    QString FileName;
    QString FileNameFull;
    QString FolderName;
    QString FolderNameFull;
    QString ExifDate;
    QString Size;
    QString Description;
};

// The frame's data that names the items.
struct ItemSource {
    QString currentImage;
    QString captionFullName;
    QString captionSource;
    bool titleFound = false;
    QString title;
    bool showFileExtension = false;
};

// The name and folder items. Without a title the name loses its last four characters unless
// extensions are shown, since every camera file ends in one.
void NameAndFolderItems(const ItemSource& source, CaptionItems& items);

// The name of the folder a file is in, without the folders above it.
QString ShortFolderName(const QString& path);

// What a filtered camera name turns into: the source, or nothing.
QString FilteredNameReplacement(bool showFolderName, bool webImage, const QString& captionSource);

// Which items one block shows.
struct BlockChoice {
    bool fileName = false;
    bool fileNameFullPath = false;
    bool folderName = false;
    bool folderNameFullPath = false;
    bool exifDate = false;
    bool dimensions = false;
    bool exifDescription = false;
};

// The block's texts, the items in their fixed order: name, folder, date, size; then the
// description on its own.
BlockText BuildBlock(const CaptionItems& items, const BlockChoice& choice);

// A label as measured: whether it has text, and its size when sized to that text.
struct LabelSize {
    bool hasText = false;
    int width = 0;
    int height = 0;
};

// Descriptions wrap at this width unless another line of the block is wider.
constexpr int kDescriptionWrap = 400;

// The width the block's text needs, which is also where the description wraps. The
// description's width is the width of its text on one line.
int ContentWidth(const LabelSize& top, const LabelSize& caption, const LabelSize& description);
inline int BoxWidth(int contentWidth) {
    return contentWidth + 15;
}
// The description's height is its height when wrapped at the content width.
int BoxHeight(const LabelSize& top, const LabelSize& caption, const LabelSize& description);

// Label alignment as the positions use it.
enum class Align { Left = 0, Right = 1, Centre = 2 };

struct BoxPlace {
    int left = 0;
    int top = 0;
    Align align = Align::Centre;
};

// The frame a box is placed in: W the frame's width, H its monitor's height, L and T the
// monitor's top left corner.
struct PlaceArea {
    int width = 0;
    int height = 0;
    int left = 0;
    int top = 0;
};

// Positions 1 to 6: top left, top centre, top right, bottom left, bottom centre, bottom right.
// Any other number centres the box at the top of the whole form.
BoxPlace PlaceBox(int position, int boxW, int boxH, int margin, const PlaceArea& area);

// Where each label stands inside the box's client area; a label without text is hidden.
struct LabelPlace {
    bool visible = false;
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};
struct BlockLayout {
    LabelPlace top;
    LabelPlace caption;
    LabelPlace description;
};
BlockLayout LayoutLabels(const LabelSize& top, const LabelSize& caption,
                         const LabelSize& description, int innerWidth);

} // namespace captions
