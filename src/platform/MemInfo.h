#pragma once

#include <QString>

namespace platform {

// Committed memory in bytes, read from the text of /proc/meminfo ("Committed_AS: n kB").
// -1 when the line is missing or malformed.
qint64 ParseCommittedBytes(const QString& meminfoText);
// The same, from the running system.
qint64 CommittedMemoryBytes();

} // namespace platform
