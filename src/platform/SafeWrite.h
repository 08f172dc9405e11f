#pragma once

#include <QByteArray>
#include <QString>

// Files the program writes appear whole or not at all: written under a temporary name beside
// the file, then renamed over it, so that a stop at any moment leaves the old file.
namespace platform {

// The file's whole new content. False, and the old file untouched, when it cannot be written.
bool WriteFileWhole(const QString& fileName, const QByteArray& data);

// A write cut short by a killed process leaves its temporary file, named after the file with a
// dot and six letters or digits. Those older than this are nobody's work in progress.
inline constexpr int kStaleTemporarySeconds = 60;
// Removes such leftovers of this file; the count removed.
int RemoveStaleTemporaries(const QString& fileName);

} // namespace platform
