// The image pool: every list file of the Imagelists folder read into ImageList, with the
// titles and descriptions that Flickr lists and feeds carry, and the decision per list whether
// a rescan is due.
#include "app/Common.h"
#include "app/VbNumbers.h"
#include "app/modMain.h"
#include "lists/ImageEntry.h"
#include "lists/ImageListFile.h"
#include "lists/ListDates.h"
#include "lists/frmScanning.h"
#include "platform/Clock.h"
#include "platform/FileListing.h"
#include "show/frmSlideShow.h"

#include <QFile>
#include <QFileInfo>
#include <QStringConverter>
#include <QTextStream>
#include <algorithm>
#include <cmath>

namespace {

// Stand-in until the web page and Flickr scanners arrive: every web or Flickr rescan reports an
// abort and finds nothing, so that a due list is loaded as its file holds it and keeps its old
// scan date. The signatures are the ones the scanners will have.
void RefreshInteresting(TaggedStringList& list, const QString& perPage, bool& aborted) {
    Q_UNUSED(perPage);
    list.clear();
    aborted = true;
}

void GetPublicUserPhotos(TaggedStringList& list, const QString& userNsid, const QString& perPage,
                         const QString& title, int& count, bool& aborted) {
    Q_UNUSED(userNsid);
    Q_UNUSED(perPage);
    Q_UNUSED(title);
    list.clear();
    count = 0;
    aborted = true;
}

void GetGroupPhotos(TaggedStringList& list, const QString& groupNsid, const QString& perPage,
                    const QString& title, int& count, bool& aborted) {
    Q_UNUSED(groupNsid);
    Q_UNUSED(perPage);
    Q_UNUSED(title);
    list.clear();
    count = 0;
    aborted = true;
}

void RescanURL(const QString& url, bool excludeGif, bool pageImages, bool linkImages,
               TaggedStringList& list, int& count, bool& aborted) {
    Q_UNUSED(url);
    Q_UNUSED(excludeGif);
    Q_UNUSED(pageImages);
    Q_UNUSED(linkImages);
    list.clear();
    count = 0;
    aborted = true;
}

// Stand-in until the web image cache arrives: the check of a list's cache folder against its
// fresh records. Reached only after a successful web rescan, which does not happen yet.
void VetCacheFolder(const TaggedStringList& list, const QString& cacheFolder) {
    Q_UNUSED(list);
    Q_UNUSED(cacheFolder);
}

// "True" and "False" in any case, or a number (0 is false); anything else leaves the value.
void ReadBool(const QString& text, bool& value) {
    const QString t = text.trimmed();
    if (t.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0)
        value = true;
    else if (t.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0)
        value = false;
    else if (vb::IsNumeric(t))
        value = vb::Val(t) != 0.0;
}

// Days since the zero date, the way the list's dates are compared.
double Serial(const QDate& date) {
    return static_cast<double>(ZeroDate().daysTo(date));
}

QDate FromSerial(double serial) {
    // Junk intervals in a file can reach any size; the day count must stay in range.
    return ZeroDate().addDays(static_cast<qint64>(std::floor(std::clamp(serial, -1e7, 1e7))));
}

} // namespace

void frmSlideShow::LoadImageLists() {
    PoolLoaded = true;
    BugLog(QStringLiteral("Loading image lists"));
    SetStatus(QStringLiteral("Loading Image Lists"));

    if (common::FileExists(RemainingListPath[0])) {
        BugLog(QStringLiteral("     found a remaining list"));
        LoadRemainingList(RemainingListPath[0]);
        // The picture that was on the screen when the last show stopped comes first.
        if (common::FileExists(CurrentImage)) {
            ShowList.add(CurrentImage, CurrentImageTag);
            CaptionsList.add(CaptionFullName + QStringLiteral("|") + CaptionSource);
        }
        if (!common::FileExists(CurrentRandomFolder)) CurrentRandomFolder = QStringLiteral("xxxx");
        ResumedFromRemainingList = true;
        return;
    }
    LoadFullImageList();
}

void frmSlideShow::LoadFullImageList() {
    ImageList.clear();
    ImageTitles.clear();
    ImageDescriptions.clear();

    const QString rule(68, QLatin1Char('='));
    BugLog(rule);
    BugLog(QStringLiteral(" Load All Image Lists "));
    BugLog(rule);
    SetStatus(QStringLiteral("Loading Image lists ... "));
    lstImageLists.clear();

    const QString folder = InstallDir + QStringLiteral("/Imagelists");
    if (!common::FileExists(folder)) {
        BugLog(QStringLiteral("** no can find the Imagelists folder ** "));
        return;
    }
    const QStringList names = platform::FileList(folder, QStringLiteral("*.tvl"));
    for (const QString& name : names)
        lstImageLists.add(folder + QLatin1Char('/') + name);

    for (int index = 0; index < lstImageLists.count(); ++index)
        LoadListOfImages(QString::number(index));
}

void frmSlideShow::LoadListOfImages(const QString& index) {
    const int position = static_cast<int>(vb::Val(index));
    const QString file = lstImageLists.text(position);
    QString listName = QFileInfo(file).fileName();
    if (listName.size() > 4) listName.chop(4);

    BugLog(QStringLiteral(" >>>>>>>>>>>>>>>>>>>>>>>>>>>>>>>>>"));
    BugLog(QStringLiteral("     LoadListOfImages ... from ") + file);

    QString title, path, localOrWeb, perPage, userNsid, groupNsid;
    bool noRescan = false, recurse = false, excludeGif = false, pageImages = false,
         linkImages = false;
    double lastScan = 0.0; // the zero date until the file says otherwise
    double nextScan = 0.0;

    QFile listFile(file);
    // Not in text mode: that would drop a carriage return inside a line, and the settings
    // window's reader of the same file keeps it.
    if (!listFile.open(QIODevice::ReadOnly)) {
        BugLog(QStringLiteral("              ( 0 images added )"));
        return;
    }
    QTextStream in(&listFile);
    // Always UTF-8, as the lists are written: a file that happens to start with the bytes of a
    // UTF-16 mark is not to be read as UTF-16.
    in.setEncoding(QStringConverter::Utf8);
    in.setAutoDetectUnicode(false);

    // The header. Reading stops at the line "IMAGES", which may also be the line read as a
    // title or a path; a file that ends before it holds no images for the show.
    QString line;
    bool sawImages = false;
    while (true) {
        if (line == QLatin1String("IMAGES")) {
            sawImages = true;
            break;
        }
        if (in.atEnd()) break;
        line = in.readLine().trimmed();
        const QStringList fields = line.split(QLatin1Char(','));
        const QString& key = fields.first();
        const QString value = fields.value(1).trimmed();

        if (key == QLatin1String("TITLE")) {
            line = in.atEnd() ? QString() : in.readLine().trimmed();
            title = line;
            BugLog(QStringLiteral("         the title is ") + title);
        } else if (key == QLatin1String("PATH")) {
            line = in.atEnd() ? QString() : in.readLine().trimmed();
            path = line;
            BugLog(QStringLiteral("              path is ") + path);
        } else if (key == QLatin1String("COUNT")) {
            BugLog(QStringLiteral("              should have ") + value +
                   QStringLiteral(" images in it"));
        } else if (key == QLatin1String("LOCALORWEB")) {
            localOrWeb = value;
        } else if (key == QLatin1String("LASTSCAN")) {
            lastScan = Serial(ReadListFileDate(value));
            BugLog(QStringLiteral("              last scan date: ") +
                   ListFileDateText(FromSerial(lastScan)));
        } else if (key == QLatin1String("SCANINTERVAL")) {
            const double days = vb::Val(value);
            // Exactly 1000 is still an interval; the forms write 4000 for "never".
            if (days > 1000) {
                noRescan = true;
                BugLog(QStringLiteral("              Rescan is disabled"));
            }
            nextScan = lastScan + days;
            BugLog(QStringLiteral("              interval = ") + value);
            BugLog(QStringLiteral("              next scan date: ") +
                   ListFileDateText(FromSerial(nextScan)));
        } else if (key == QLatin1String("OPTION")) {
            const QStringList pieces = line.split(QStringLiteral("=="));
            const QString name = pieces.first().mid(7);
            const QString optionValue = pieces.value(1).trimmed();
            if (name == QLatin1String("PERPAGE"))
                perPage = QString::number(vb::Val(optionValue));
            else if (name == QLatin1String("GROUP_NSID"))
                groupNsid = optionValue;
            else if (name == QLatin1String("USER_NSID"))
                userNsid = optionValue;
            else if (name == QLatin1String("RECURSE"))
                ReadBool(optionValue, recurse);
            else if (name == QLatin1String("EXCLUDEGIF"))
                ReadBool(optionValue, excludeGif);
            else if (name == QLatin1String("PAGEIMAGES"))
                ReadBool(optionValue, pageImages);
            else if (name == QLatin1String("LINKIMAGES"))
                ReadBool(optionValue, linkImages);
        }
    }

    if (!sawImages) {
        BugLog(QStringLiteral("              no IMAGES line - the list is not read"));
        BugLog(QStringLiteral("              ( 0 images added )"));
        return;
    }

    // A list whose rescan failed lately is left alone for a few passes.
    const bool counted = position >= 0 && position < static_cast<int>(ScanSkip.size());
    const auto skipSlot = static_cast<std::size_t>(counted ? position : 0);
    if (counted && ScanSkip[skipSlot] > 0) {
        --ScanSkip[skipSlot];
        noRescan = true;
    }

    int total = 0;
    bool scanned = false;
    if (nextScan <= Serial(platform::Today()) && !noRescan) {
        BugLog(QStringLiteral("      TIME TO RESCAN "));
        scanned = true;
        lstTempImageList.clear();
        int count = 0;
        bool aborted = false;
        const bool local = localOrWeb == QLatin1String("Local");
        if (local) {
            // The file is let go before the scan; an aborted scan then gives nothing from this
            // list on this pass, and its file stays as it was for the next.
            listFile.close();
            QStringList found;
            frmScanning* scanning = frmScanning::instance();
            scanning->SetOwner(this);
            scanning->RescanFolder(path, recurse, found, count, aborted);
            for (const QString& record : found)
                lstTempImageList.add(record);
        } else if (localOrWeb == QLatin1String("Flickr")) {
            if (path == QLatin1String("Flickr-Interestingness")) {
                RefreshInteresting(lstTempImageList, perPage, aborted);
                count = static_cast<int>(vb::Val(perPage));
            } else if (path == QLatin1String("Flickr-User-Public")) {
                GetPublicUserPhotos(lstTempImageList, userNsid, perPage, title, count, aborted);
            } else if (path == QLatin1String("Flickr-Group-Public")) {
                GetGroupPhotos(lstTempImageList, groupNsid, perPage, title, count, aborted);
            } else {
                aborted = true;
            }
        } else {
            RescanURL(path, excludeGif, pageImages, linkImages, lstTempImageList, count, aborted);
        }

        if (aborted && !local) {
            // The old records are still unread in the open file: the list gives what it had.
            BugLog(QStringLiteral("Scan aborted / no web connection"));
            if (counted) ScanSkip[skipSlot] = 2;
            scanned = false;
        } else if (aborted) {
            BugLog(QStringLiteral("Scan aborted "));
            if (counted) ScanSkip[skipSlot] = 1;
            scanned = false;
        } else {
            if (listFile.isOpen()) listFile.close();
            for (const TaggedStringList::Item& item : lstTempImageList.items()) {
                int added = 0;
                AddToImageListOrOther(item.text, localOrWeb, listName, title, added);
                total += added;
            }
            QStringList records;
            for (const TaggedStringList::Item& item : lstTempImageList.items())
                records << item.text;
            lists::ReWriteImageList(file, records);
            if (!local && VetCache) VetCacheFolder(lstTempImageList, file.chopped(4));
        }
    }

    if (!scanned) {
        BugLog(QStringLiteral("              Loading in images ... "));
        // After a folder scan that closed the file and aborted, the list gives nothing this
        // time and is read again on the next pass.
        if (listFile.isOpen()) {
            while (!in.atEnd()) {
                int added = 0;
                AddToImageListOrOther(in.readLine().trimmed(), localOrWeb, listName, title, added);
                total += added;
            }
            listFile.close();
        }
    }
    BugLog(QStringLiteral("              ( ") + QString::number(total) +
           QStringLiteral(" images added )"));
}

void frmSlideShow::AddToImageListOrOther(const QString& line, const QString& localOrWeb,
                                         const QString& listName, const QString& listTitle,
                                         int& added) {
    added = 0;
    const QStringView tag = QStringView(line).left(6);
    if (tag == QLatin1String("IMAGE>")) {
        const QString text = line.mid(6);
        // The key is the image's position in the pool at the moment it arrives.
        const auto key = static_cast<std::int32_t>(ImageList.count());
        if (localOrWeb == QLatin1String("Local"))
            ImageList.add(text, key);
        else
            ImageList.add(MakeWebEntry(listName, text, listTitle), key);
        added = 1;
    } else if (tag == QLatin1String("TITLE>")) {
        ImageTitles.add(line.mid(6), static_cast<std::int32_t>(ImageList.count() - 1));
    } else if (tag == QLatin1String("DESCR>")) {
        ImageDescriptions.add(line.mid(6), static_cast<std::int32_t>(ImageList.count() - 1));
    }
}

void frmSlideShow::ExtraInfo(std::int32_t key, const TaggedStringList& list, QString& text,
                             bool& found) {
    text.clear();
    found = false;
    for (const TaggedStringList::Item& item : list.items()) {
        if (item.tag != key) continue;
        found = true;
        text = item.text;
        text.replace(QStringLiteral("&amp;quot;"), QStringLiteral("\""));
        text.replace(QStringLiteral("&quot;"), QStringLiteral("\""));
        return;
    }
}

void frmSlideShow::RemoveHTMLFromFlickr(QString& text) {
    BugLog(QStringLiteral("Remove any HTML ... "));
    BugLog(QStringLiteral("before: ") + text);
    static const QString open = QStringLiteral("&lt;");
    static const QString close = QStringLiteral("&gt;");
    QString copy;
    qsizetype from = 0;
    while (from < text.size()) {
        const qsizetype tagStart = text.indexOf(open, from);
        if (tagStart < 0) break;
        const qsizetype tagEnd = text.indexOf(close, tagStart + open.size());
        // A tag that is never closed is left as it stands, with the rest of the text.
        if (tagEnd < 0) break;
        copy += text.mid(from, tagStart - from);
        from = tagEnd + close.size();
    }
    copy += text.mid(from);
    text = copy;
    BugLog(QStringLiteral(" after: ") + text);
}

void frmSlideShow::AtLeastOneValidFileInImageList(bool& result) {
    result = false;
    for (const TaggedStringList::Item& item : ImageList.items()) {
        if (QFileInfo(item.text).isFile()) {
            result = true;
            return;
        }
    }
}
