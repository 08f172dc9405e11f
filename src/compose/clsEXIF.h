#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <cstdint>
#include <optional>
#include <vector>

namespace platform {
class IniFile;
}

// One directory entry as it was read, and what the user sees of it.
struct TagEntry {
    long Tag = 0;
    QString TagName;
    long Format = 0; // the TIFF type
    // Counts and offsets are 32-bit unsigned in the file; a double holds them all.
    double Components = 0;
    double ValueOffset = 0; // the entry's 4 value bytes as a number
    QVariant Value;         // the number Text shows, when it shows one
    QString Text;
};

// The EXIF block of a JPEG file, read without the imaging library. Only the first 4096 bytes
// of the file are searched for the Exif signature and parsed: the show asks for a handful of
// values that cameras put near the front, and one small read per picture keeps a show fast.
// Whatever lies beyond that window is not seen. Nothing here throws to the caller.
class clsEXIF {
public:
    // "exif.ini" beside the program.
    clsEXIF();
    // Another "exif.ini", for callers (tests) that must not touch the install folder.
    explicit clsEXIF(const QString& iniFile);

    QString ImageFile() const { return imageFile_; }
    // Reads the file at once and sets ReadStatus.
    void SetImageFile(const QString& fileName);
    bool IntelByteAlignment() const { return intelByteAlignment_; }
    // 0 read; 1 not an EXIF file; 2 the read failed.
    long ReadStatus() const { return readStatus_; }
    const std::vector<TagEntry>& Tags() const { return tags_; }
    QString IniFile() const { return iniFile_; }

    // The first entry of that tag: its text, and its number (null when it holds none). A tag
    // not read gives the text "Tag <number> not found." and leaves value alone. A file that
    // could not be read changes neither and says why in the log.
    void MetaInfo(long tag, QString& text, QVariant& value) const;
    // "Tag #<number>" for a number the table does not know.
    static QString GetTagName(long tag);
    // "<TagName>: <Text>" lines, or why there are none.
    QString ListInfo() const;
    // The answers below say "notEXIF" or "file-open-problem" when the file gave no block.
    QString GetOrigDate() const;
    QString GetDescription() const;
    // 1 unless the block holds a numeric Orientation.
    int GetOrientation() const;
    QString GetDimensionsAsString() const;

private:
    void ReadMetaInfo();
    void DecodeTagValue(TagEntry& entry, std::int64_t tiffStart, std::int64_t pos,
                        const platform::IniFile& ini) const;
    std::optional<double> ReadIFD(std::int64_t tiffStart, double offset, long wantedTag,
                                  const platform::IniFile& ini);
    std::optional<double> ReadUnsigned(const QByteArray& bytes, std::int64_t pos, int count) const;
    std::optional<double> ReadSigned(const QByteArray& bytes, std::int64_t pos, int count) const;
    // value and "numerator/denominator" of the 8 bytes at pos; no value for a zero denominator.
    struct Rational {
        std::optional<double> value;
        QString text;
    };
    std::optional<Rational> ReadUnsignedRational(const QByteArray& bytes, std::int64_t pos) const;
    std::optional<Rational> ReadSignedRational(const QByteArray& bytes, std::int64_t pos) const;
    static QByteArray ReadFileBytes(const QString& fileName, qint64 count = -1);
    static QString ReadIni(const platform::IniFile& ini, const QString& section,
                           const QString& key);
    static QString FilterText(const QByteArray& raw);
    // The Text of the first entry of that name, or the status words when nothing was read.
    QString TextOfFirst(const QString& tagName) const;

    QString imageFile_;
    QString iniFile_;
    bool intelByteAlignment_ = false;
    long readStatus_ = 0;
    std::vector<TagEntry> tags_;
    QByteArray data_;
    // Where the interoperability directory starts; kept, not read.
    std::optional<double> interopOffset_;
};
