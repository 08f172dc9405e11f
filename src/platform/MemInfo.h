#pragma once

#include <QString>

namespace platform {

// Committed memory in bytes, read from the text of /proc/meminfo ("Committed_AS: n kB").
// -1 when the line is missing or malformed.
qint64 ParseCommittedBytes(const QString& meminfoText);
// The same, from the running system.
qint64 CommittedMemoryBytes();

// Gives the pages of freed memory back to the system. A frame decodes and composes buffers of
// tens of megabytes; once some have been freed the C library serves later ones from its heap
// and keeps their pages, so without this a show holds the high-water mark of its busiest frame
// for as long as it runs.
void ReleaseFreedMemory();

} // namespace platform
