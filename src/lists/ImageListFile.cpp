#include "lists/ImageListFile.h"

#include "lists/ListDates.h"

#include "app/Common.h"
#include "platform/Clock.h"
#include "platform/SafeWrite.h"
#include "show/frmSlideShow.h"

#include <QFile>
#include <QLocale>
#include <QStringDecoder>

namespace lists {

namespace {

// Only the first 40 header lines survive a rewrite; the show's header never comes near that.
constexpr int kMaxHeaderLines = 40;

// The option slot (0-based) a name read from a file belongs to, or -1 for a name the
// configuration window does not keep. "none" is among those: unused slots come back empty.
int SlotOfOption(const QString& name) {
    if (name == QLatin1String("PERPAGE") || name == QLatin1String("RECURSE") ||
        name == QLatin1String("EXCLUDEGIF"))
        return 0;
    if (name == QLatin1String("GROUP_NSID") || name == QLatin1String("USER_NSID") ||
        name == QLatin1String("PAGEIMAGES"))
        return 1;
    if (name == QLatin1String("LINKIMAGES")) return 2;
    return -1;
}

// Hands each line of the file to take, with CR LF or LF line ends; a final line end adds no
// line. False when the file cannot be read.
template <class Take> bool ForEachTextLine(const QString& fileName, Take take) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) return false;
    // Decoded a piece at a time: the decoder keeps a character cut at a piece's end for the
    // next, so the lines are what decoding the whole file at once would give, without holding
    // the file three times over (its bytes, its text and its lines) while they are made.
    QStringDecoder decode(QStringDecoder::Utf8);
    QString pending;
    QByteArray piece(64 * 1024, Qt::Uninitialized);
    auto give = [&take](QStringView line) {
        if (line.endsWith(QLatin1Char('\r'))) line.chop(1);
        take(line.toString());
    };
    for (qint64 got; (got = file.read(piece.data(), piece.size())) > 0;) {
        pending += decode(QByteArrayView(piece.constData(), got));
        qsizetype start = 0;
        for (qsizetype end; (end = pending.indexOf(QLatin1Char('\n'), start)) >= 0; start = end + 1)
            give(QStringView(pending).sliced(start, end - start));
        pending.remove(0, start);
    }
    // A last line without its line end still counts.
    if (!pending.isEmpty()) give(pending);
    return true;
}

// The configuration window's reading of a list, a line at a time, so that only what the list
// keeps is held: a damaged file of millions of lines before any "IMAGES" costs nothing.
class ImageListReader {
public:
    explicit ImageListReader(const QString& fileName) { list_.row.fileName = fileName; }

    void take(QString&& raw) {
        switch (state_) {
        case State::Banner: // never looked at
            state_ = State::Header;
            return;
        case State::Value: // a title or path has a line of its own, so that it may hold commas
            *value_ = std::move(raw).trimmed();
            state_ = State::Header;
            return;
        case State::Images:
            list_.images << std::move(raw).trimmed();
            return;
        case State::Stopped:
            return;
        case State::Header:
            // An empty line is no key: passed over without the cost of splitting it.
            if (!raw.isEmpty()) header(raw.trimmed());
        }
    }

    // The list read; a file that ended where a title's or a path's value was due failed.
    LoadedImageList finish() {
        if (state_ == State::Value) list_.failed = true;
        return std::move(list_);
    }

private:
    enum class State { Banner, Header, Value, Images, Stopped };

    void header(const QString& line) {
        const QStringList fields = line.split(QLatin1Char(','));
        const QString& key = fields[0];
        if (key == QLatin1String("TITLE") || key == QLatin1String("PATH")) {
            value_ = key == QLatin1String("TITLE") ? &list_.row.title : &list_.row.path;
            state_ = State::Value;
        } else if (key == QLatin1String("COUNT") || key == QLatin1String("LASTSCAN") ||
                   key == QLatin1String("SCANINTERVAL") || key == QLatin1String("LOCALORWEB")) {
            // A key without its value stops the reading there; what was read so far stands.
            if (fields.size() < 2) {
                list_.failed = true;
                state_ = State::Stopped;
                return;
            }
            const QString value = fields[1].trimmed();
            if (key == QLatin1String("COUNT"))
                list_.row.count = value;
            else if (key == QLatin1String("LASTSCAN"))
                list_.row.lastScan = value;
            else if (key == QLatin1String("SCANINTERVAL"))
                list_.row.scanInterval = value;
            else
                list_.row.type = value;
        } else if (key == QLatin1String("OPTION")) {
            const QString name = line.split(QStringLiteral("==")).first().mid(7);
            const int slot = SlotOfOption(name);
            // Trimmed like every value read: a stray carriage return before a second comma would
            // otherwise come back changed once the window writes the list again.
            if (slot >= 0)
                list_.row.options[static_cast<std::size_t>(slot)] = fields.value(1).trimmed();
        } else if (key == kImagesMarker) {
            // Every line after it is a record, to the end of the file.
            list_.sawImagesMarker = true;
            state_ = State::Images;
        }
    }

    LoadedImageList list_;
    State state_ = State::Banner;
    QString* value_ = nullptr;
};

} // namespace

bool ReadTextLines(const QString& fileName, QStringList& lines) {
    lines.clear();
    return ForEachTextLine(fileName, [&lines](QString&& line) { lines.append(std::move(line)); });
}

bool WriteTextLines(const QString& fileName, const QStringList& lines) {
    QByteArray bytes;
    for (const QString& line : lines) {
        bytes += line.toUtf8();
        bytes += "\r\n";
    }
    return platform::WriteFileWhole(fileName, bytes);
}

int CountImageRecords(const QStringList& images) {
    int count = 0;
    for (const QString& line : images)
        if (line.left(4) == QLatin1String("IMAG")) ++count;
    return count;
}

QStringList ImageListLines(const ImageListRow& row, const QStringList& images) {
    QStringList lines{kListBanner,
                      kListUnderline,
                      QStringLiteral("TITLE"),
                      row.title,
                      QStringLiteral("PATH"),
                      row.path,
                      QStringLiteral("COUNT,") + row.count,
                      QStringLiteral("LOCALORWEB,") + row.type,
                      QStringLiteral("LASTSCAN,") + row.lastScan,
                      QStringLiteral("SCANINTERVAL,") + row.scanInterval};
    for (const QString& option : row.options)
        lines << QStringLiteral("OPTION,") + option;
    lines << kImagesMarker;
    lines << images;
    return lines;
}

LoadedImageList ParseImageList(const QStringList& lines, const QString& fileName) {
    ImageListReader reader(fileName);
    for (const QString& line : lines)
        reader.take(QString(line));
    return reader.finish();
}

std::optional<LoadedImageList> ReadImageList(const QString& fileName) {
    ImageListReader reader(fileName);
    bool any = false;
    const bool read = ForEachTextLine(fileName, [&](QString&& line) {
        any = true;
        reader.take(std::move(line));
    });
    if (!read || !any) return std::nullopt;
    return reader.finish();
}

QStringList ReWrittenImageListLines(const QStringList& oldLines, const QStringList& records,
                                    const QDate& today) {
    QStringList header;
    bool marker = false;
    for (const QString& raw : oldLines) {
        const QString line = raw.trimmed();
        if (header.size() < kMaxHeaderLines) header << line;
        // The raw line is tested, so a title or a path reading "IMAGES" ends the header there.
        if (line == kImagesMarker) {
            marker = true;
            break;
        }
    }
    if (!marker) return {};
    for (QString& line : header) {
        // A title or path that merely starts with one of these words is replaced as well. Lists
        // already on disk were rewritten so, and a changed test would read them differently.
        if (line.left(5) == QLatin1String("COUNT"))
            line = QStringLiteral("COUNT,") + QString::number(records.size());
        else if (line.left(8) == QLatin1String("LASTSCAN"))
            line = QStringLiteral("LASTSCAN,") + ListFileDateText(today);
    }
    return header + records;
}

bool ReWriteImageList(const QString& fileName, const QStringList& records) {
    QStringList oldLines;
    if (!ReadTextLines(fileName, oldLines)) return false;
    const QStringList lines = ReWrittenImageListLines(oldLines, records, platform::Today());
    if (lines.isEmpty() || !WriteTextLines(fileName, lines)) return false;
    BugLog(QStringLiteral("Re-Wrote >> ") + fileName);
    return true;
}

QString IconKeyForLoadedType(const QString& type) {
    if (type == QLatin1String("Local")) return QStringLiteral("folder");
    if (type == QLatin1String("Web")) return QStringLiteral("web");
    return QStringLiteral("flickr");
}

QString IconKeyForNewType(const QString& type) {
    if (type == QLatin1String("Local")) return QStringLiteral("folder");
    if (type.left(6) == QLatin1String("Flickr")) return QStringLiteral("flickr");
    return QStringLiteral("web");
}

QString WebListBaseName(const QString& sourceText) {
    QString name = sourceText.toLower();
    for (const char* unwanted : {"http://", "ftp://", ".", "/", "\\", "%", "~", "@", "#", "$", "*"})
        name.remove(QLatin1String(unwanted));
    return name.left(10);
}

QString FreeImageListFileName(const QString& installDir, const QString& base,
                              const std::function<bool(const QString&)>& inFolderList,
                              QString* listName) {
    for (int n = 1;; ++n) {
        const QString numbered = base + QLatin1Char('_') + QString::number(n);
        const QString candidate =
            installDir + QStringLiteral("/Imagelists/") + numbered + kListExtension;
        if (!common::FileExists(candidate) && !(inFolderList && inFolderList(candidate))) {
            if (listName) *listName = numbered;
            return candidate;
        }
    }
}

} // namespace lists
