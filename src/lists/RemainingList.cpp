// The remaining list: what a show had not shown yet when it stopped, so that the next show
// goes on from there instead of starting the lists again.
#include "app/Common.h"
#include "app/VbNumbers.h"
#include "platform/SafeWrite.h"
#include "show/frmSlideShow.h"

#include <QFile>
#include <QStringConverter>
#include <QTextStream>

namespace {

void AddLine(QString& out, const QString& text) {
    out += text;
    out += QLatin1String("\r\n");
}

void AddKeyed(QString& out, const TaggedStringList& list, const QString& leaveOut = QString(),
              bool leaving = false) {
    for (const TaggedStringList::Item& item : list.items()) {
        if (leaving && item.text == leaveOut) continue;
        out += QString::number(item.tag);
        out += QLatin1String("||");
        out += item.text;
        out += QLatin1String("\r\n");
    }
}

// The file appears whole or not at all: a show stopped mid-write leaves the last good copy.
void WriteWhole(const QString& fileName, const QString& text) {
    platform::WriteFileWhole(fileName, text.toUtf8());
}

// A number as the print statement writes it: a blank for the sign of a positive number, and
// a blank behind.
QString PrintedNumber(std::int32_t value) {
    return (value >= 0 ? QStringLiteral(" ") : QString()) + QString::number(value) +
           QStringLiteral(" ");
}

// Hands each line of the file to take, with its number from 0. Line ends are CR LF or LF; a
// carriage return inside a line stays, and the text is always UTF-8 as written, whatever its
// first bytes look like. One line at a time: a pool of hundreds of thousands of images is
// held once, as the show's list, and not a second time as the file's lines.
template <class Take> void ForEachLine(const QString& fileName, Take take) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) return;
    QTextStream in(&file);
    in.setEncoding(QStringConverter::Utf8);
    in.setAutoDetectUnicode(false);
    QString line;
    for (int n = 0; in.readLineInto(&line); ++n)
        take(n, line);
}

// A line of "key||text"; the first "||" splits, empty lines are passed. True when it was added.
bool ReadKeyed(const QString& raw, TaggedStringList& target) {
    const QString line = raw.trimmed();
    if (line.isEmpty()) return false;
    const auto bar = line.indexOf(QLatin1String("||"));
    if (bar < 0) {
        // Not a line this program writes: no key, and the text cut as by the split. The cut
        // takes one character, never half of one (a pair of surrogates is one character).
        const bool pair = line.size() > 1 && line[0].isHighSurrogate() && line[1].isLowSurrogate();
        target.add(line.mid(pair ? 2 : 1), 0);
    } else {
        target.add(line.mid(bar + 2), vb::CLng(vb::Val(line.left(bar))).value_or(0));
    }
    return true;
}

void ReadKeyedFile(const QString& fileName, TaggedStringList& target) {
    ForEachLine(fileName, [&target](int, const QString& line) { ReadKeyed(line, target); });
}

} // namespace

void frmSlideShow::RemainingListExists(bool& result) {
    // The show looks for the file itself when it loads the lists.
    result = false;
}

void frmSlideShow::SaveRemainingList() {
    SetStatus(QStringLiteral("Saving Remaining List..."));
    BugLog(QStringLiteral("Saving Remaining List(s)..."));
    if (RemainingListPath[0].isEmpty()) return;
    // A show stopped before its pool was read has nothing to say about what is left: the
    // saved pool of the last show stays for the next one.
    if (!PoolLoaded) return;

    QString out;
    out.reserve((ShowList.count() + RandomFolderFileList.count() + ImageList.count()) * 64 + 512);
    AddLine(out, QStringLiteral("CURRENTIMAGEPATH"));
    AddLine(out, CurrentImage);
    AddLine(out, CaptionFullName);
    AddLine(out, CaptionSource);
    AddLine(out, PrintedNumber(CurrentImageTag));
    AddLine(out, QStringLiteral("CURRENTRANDOMFOLDER"));
    AddLine(out, CurrentRandomFolder);
    AddLine(out, QStringLiteral("REMAININGIMAGES"));
    // The picture on the screen is written above; its copies in the queue go with it.
    AddKeyed(out, ShowList, CurrentImage, true);
    AddKeyed(out, RandomFolderFileList);
    AddKeyed(out, ImageList);
    WriteWhole(RemainingListPath[0], out);

    // With no titles or descriptions the older files stay as they are.
    if (!ImageTitles.isEmpty()) {
        QString titles;
        AddKeyed(titles, ImageTitles);
        WriteWhole(RemainingListPath[1], titles);
    }
    if (!ImageDescriptions.isEmpty()) {
        QString descriptions;
        AddKeyed(descriptions, ImageDescriptions);
        WriteWhole(RemainingListPath[2], descriptions);
    }
}

void frmSlideShow::LoadRemainingList(const QString& fileName) {
    BugLog(QStringLiteral("     LoadRemainingList ... from ") + fileName);
    // A short file leaves what it does not hold empty. The key lines (0, 5 and 7 counting from
    // 0) are passed over unread.
    CurrentImage.clear();
    CaptionFullName.clear();
    CaptionSource.clear();
    CurrentRandomFolder.clear();
    QString currentTag;
    int n = 0;
    ForEachLine(fileName, [&](int number, const QString& line) {
        switch (number) {
        case 1:
            CurrentImage = line.trimmed();
            break;
        case 2:
            CaptionFullName = line.trimmed();
            break;
        case 3:
            CaptionSource = line.trimmed();
            break;
        case 4:
            currentTag = line.trimmed();
            break;
        case 6:
            CurrentRandomFolder = line.trimmed();
            break;
        default:
            if (number >= 8 && ReadKeyed(line, ImageList)) ++n;
        }
    });
    CurrentImageTag = vb::CLng(vb::Val(currentTag)).value_or(0);
    BugLog(QStringLiteral("     ( ") + QString::number(n) + QStringLiteral(" images )"));

    if (common::FileExists(RemainingListPath[1])) ReadKeyedFile(RemainingListPath[1], ImageTitles);
    if (common::FileExists(RemainingListPath[2]))
        ReadKeyedFile(RemainingListPath[2], ImageDescriptions);
}
