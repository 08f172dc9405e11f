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

QStringList ReadLines(const QString& fileName) {
    QStringList lines;
    QFile file(fileName);
    // Line ends are CR LF or LF; a carriage return inside a line stays, and the text is always
    // UTF-8 as written, whatever its first bytes look like.
    if (!file.open(QIODevice::ReadOnly)) return lines;
    QTextStream in(&file);
    in.setEncoding(QStringConverter::Utf8);
    in.setAutoDetectUnicode(false);
    while (!in.atEnd())
        lines.append(in.readLine());
    return lines;
}

// Lines of "key||text" from the given line on; the first "||" splits, empty lines are passed.
int ReadKeyed(const QStringList& lines, int from, TaggedStringList& target) {
    int n = 0;
    for (int i = from; i < lines.size(); ++i) {
        const QString line = lines[i].trimmed();
        if (line.isEmpty()) continue;
        const auto bar = line.indexOf(QLatin1String("||"));
        if (bar < 0) {
            // Not a line this program writes: no key, and the text cut as by the split. The cut
            // takes one character, never half of one (a pair of surrogates is one character).
            const bool pair =
                line.size() > 1 && line[0].isHighSurrogate() && line[1].isLowSurrogate();
            target.add(line.mid(pair ? 2 : 1), 0);
        } else {
            target.add(line.mid(bar + 2), vb::CLng(vb::Val(line.left(bar))).value_or(0));
        }
        ++n;
    }
    return n;
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
    const QStringList lines = ReadLines(fileName);
    // The key lines 1, 6 and 8 are passed over unread.
    CurrentImage = lines.value(1).trimmed();
    CaptionFullName = lines.value(2).trimmed();
    CaptionSource = lines.value(3).trimmed();
    CurrentImageTag = vb::CLng(vb::Val(lines.value(4).trimmed())).value_or(0);
    CurrentRandomFolder = lines.value(6).trimmed();
    const int n = ReadKeyed(lines, 8, ImageList);
    BugLog(QStringLiteral("     ( ") + QString::number(n) + QStringLiteral(" images )"));

    if (common::FileExists(RemainingListPath[1]))
        ReadKeyed(ReadLines(RemainingListPath[1]), 0, ImageTitles);
    if (common::FileExists(RemainingListPath[2]))
        ReadKeyed(ReadLines(RemainingListPath[2]), 0, ImageDescriptions);
}
