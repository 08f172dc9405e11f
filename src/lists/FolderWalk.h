#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <string_view>

// The walk of a folder scan: a folder tree in, one "IMAGE>" record per image file out, folder
// by folder, breadth first. No window here: the scanning window shows progress and offers the
// abort through the hooks.
namespace lists {

// The scan's fixed pattern, as the file listing takes it.
inline constexpr char kScanPattern[] = "*.JPG;*.BMP;*.GIF;*.TIF;*.TIFF;*.JPEG;*.PNG";

// Inside one folder the abort hook is asked after this many entries, so that a folder of tens
// of thousands of files still answers an abort at once.
inline constexpr int kEntriesBetweenAbortChecks = 256;

struct FolderWalkHooks {
    // Told of each folder as its reading begins, with the number of lines in the list so far.
    // Once per folder, never per file; the window decides how often it repaints.
    std::function<void(const QString& folder, qsizetype count)> progress;
    // Asked after each folder and every kEntriesBetweenAbortChecks entries inside one; true
    // ends the walk. The folder being read when it says so gives no records, so that the list
    // always holds whole folders.
    std::function<bool()> abortRequested;
};

struct FolderWalkResult {
    qsizetype count = 0;           // lines in the list at the end, aborted or not
    bool aborted = false;          // the abort hook ended the walk
    qsizetype foldersRead = 0;     // folders listed, each once
    qsizetype foldersPassedBy = 0; // gone, unreadable, or already read by another path
};

// Appends "IMAGE>" + folder + "/" + name for each image file of folder (and with recurse, of
// every folder below it, breadth first), each folder's files sorted as the file listing sorts
// them. Links are followed as the listing follows them, but a folder (device and inode) is
// read only once, so a link loop ends. A folder that cannot be read is passed over quietly.
FolderWalkResult WalkImageFolders(const QString& folder, bool recurse, QStringList& list,
                                  const FolderWalkHooks& hooks = {});

// The folder as the listing names it: without trailing separators, except the root, which
// keeps its own, so that a record there holds a doubled separator.
QString ListingPath(const QString& folder);

// True when a file name ends with one of the scan's extensions, ignoring case. Only ASCII can
// match an ASCII extension, and no letter of them has a case partner outside ASCII, so a byte
// test gives the listing's answer for any name, even one that is not valid UTF-8.
bool IsScanImageName(std::string_view name);

} // namespace lists
