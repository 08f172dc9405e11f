#pragma once

#include <QHash>
#include <QString>

// Profile files in the Windows style: "[section]" lines, then "key=value" lines. Section and
// key names match whatever their case; names and values lose the blanks around them. Lines
// starting with ";" are comments, and lines without "=" outside a section heading are ignored.
// The first occurrence of a key wins, even across repeated sections. Only the first 256 KB of
// a file are read.
namespace platform {

class IniFile {
public:
    // Reads the whole file; a file that cannot be read leaves nothing to find.
    bool Load(const QString& fileName);
    // The value, or empty when the section or key is absent (or the key is empty).
    QString Value(const QString& section, const QString& key) const;
    bool IsEmpty() const { return values_.isEmpty(); }

private:
    // Keyed by the case-folded section and key, joined by a character names cannot hold.
    QHash<QString, QString> values_;
};

// One lookup in one file: empty when the file, the section or the key is absent.
QString ReadPrivateProfileString(const QString& section, const QString& key,
                                 const QString& fileName);

} // namespace platform
