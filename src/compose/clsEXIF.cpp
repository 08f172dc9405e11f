#include "compose/clsEXIF.h"

#include "app/DebugLog.h"
#include "app/VbNumbers.h"
#include "app/modMain.h"
#include "platform/IniFile.h"

#include <QFile>
#include <QStringDecoder>
#include <QStringList>
#include <algorithm>
#include <array>
#include <cmath>
#include <exception>

namespace {

// One small read a picture; see the class comment.
constexpr qint64 kReadWindow = 4096;

constexpr long kExifOffset = 34665;
constexpr long kDateTimeOriginal = 36867;
constexpr long kInteroperabilityOffset = 40965;

struct KnownTag {
    long number;
    const char* name;
};

// The tags the reader names; any other shows as "Tag #<number>".
constexpr std::array<KnownTag, 54> kTagTable{{
    {270, "ImageDescription"},
    {271, "Make"},
    {272, "Model"},
    {274, "Orientation"},
    {282, "XResolution"},
    {283, "YResolution"},
    {296, "ResolutionUnit"},
    {305, "Software"},
    {306, "DateTime"},
    {318, "WhitePoint"},
    {319, "PrimaryChromaticities"},
    {529, "YCbCrCoefficients"},
    {531, "YCbCrPositioning"},
    {532, "ReferenceBlackWhite"},
    {33432, "Copyright"},
    {34665, "ExifOffset"},
    {33434, "ExposureTime"},
    {33437, "FNumber"},
    {34850, "ExposureProgram"},
    {34855, "ISOSpeedRatings"},
    {36864, "ExifVersion"},
    {36867, "DateTimeOriginal"},
    {36868, "DateTimeDigitized"},
    {37121, "ComponentsConfiguration"},
    {37122, "CompressedBitsPerPixel"},
    {37377, "ShutterSpeedValue"},
    {37378, "ApertureValue"},
    {37379, "BrightnessValue"},
    {37380, "ExposureBiasValue"},
    {37381, "MaxApertureValue"},
    {37382, "SubjectDistance"},
    {37383, "MeteringMode"},
    {37384, "LightSource"},
    {37385, "Flash"},
    {37386, "FocalLength"},
    {37500, "MakerNote"},
    {37510, "UserComment"},
    {37520, "SubsecTime"},
    {37521, "SubsecTimeOriginal"},
    {37522, "SubsecTimeDigitized"},
    {40960, "FlashPixVersion"},
    {40961, "ColorSpace"},
    {40962, "ExifImageWidth"},
    {40963, "ExifImageHeight"},
    {40964, "RelatedSoundFile"},
    {40965, "ExifInteroperabilityOffset"},
    {41486, "FocalPlaneXResolution"},
    {41487, "FocalPlaneYResolution"},
    {41488, "FocalPlaneResolutionUnit"},
    {41493, "ExposureIndex"},
    {41495, "SensingMethod"},
    {41728, "FileSource"},
    {41729, "SceneType"},
    {41730, "CFAPattern"},
}};

// Bytes per component, by TIFF type; index 0 is no type at all.
constexpr std::array<int, 13> kTypeSizes{0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8};

// Types the file invents beyond the table have no size: their value is read as nothing.
int TypeSize(long format) {
    return format >= 0 && format < static_cast<long>(kTypeSizes.size())
               ? kTypeSizes[static_cast<std::size_t>(format)]
               : 0;
}

bool IsOneOf(long tag, std::initializer_list<long> tags) {
    return std::find(tags.begin(), tags.end(), tag) != tags.end();
}

// Whole numbers without a point (a 32-bit count must not turn into "4.29e+09"), fractions with
// up to 15 significant digits.
QString NumberText(double value) {
    if (!std::isfinite(value)) return QString();
    if (value == std::floor(value) && std::fabs(value) < 1e15)
        return QString::number(value + 0.0, 'f', 0);
    return QString::number(value, 'g', 15);
}

// The display formats "0", "0.0" and "0.000", with halves going away from zero (an f-number
// of 5.65 shows as 5.7). A value too large to show (an exposure of 1/0, 2 to a huge power)
// shows as nothing rather than as "inf".
QString FormatFixed(double value, int decimals) {
    const double scale = std::pow(10.0, decimals);
    const double scaled = std::round(value * scale);
    if (!std::isfinite(scaled)) return QString();
    // Adding 0.0 turns a negative zero into "0.0" rather than "-0.0".
    return QString::number(scaled / scale + 0.0, 'f', decimals);
}

// Text fields are meant to be plain ASCII, but many programs write UTF-8 into them; anything
// else is taken a byte a character.
QString AsciiText(const QByteArray& raw) {
    QStringDecoder decode(QStringDecoder::Utf8);
    const QString text = decode(raw);
    return decode.hasError() ? QString::fromLatin1(raw) : text;
}

} // namespace

clsEXIF::clsEXIF() {
    QString folder = InstallDir;
    if (!folder.isEmpty() && !folder.endsWith(QLatin1Char('/')) &&
        !folder.endsWith(QLatin1Char('\\')))
        folder += QLatin1Char('/');
    iniFile_ = folder + QStringLiteral("exif.ini");
}

clsEXIF::clsEXIF(const QString& iniFile) : iniFile_(iniFile) {}

void clsEXIF::SetImageFile(const QString& fileName) {
    imageFile_ = fileName;
    ReadMetaInfo();
}

void clsEXIF::ReadMetaInfo() {
    tags_.clear();
    intelByteAlignment_ = false;
    interopOffset_.reset();
    try {
        data_ = ReadFileBytes(imageFile_, kReadWindow);
        if (data_.isEmpty()) {
            readStatus_ = 2;
            return;
        }
        const qsizetype found = data_.indexOf(QByteArrayView("Exif\0\0", 6));
        if (found < 0) {
            readStatus_ = 1;
            data_.clear();
            return;
        }
        readStatus_ = 0;
        const std::int64_t tiffStart = found + 6;
        // Anything but "II" is taken as big-endian; the rest of the header is not checked.
        intelByteAlignment_ = data_.mid(tiffStart, 2) == "II";
        platform::IniFile ini;
        ini.Load(iniFile_);
        if (const std::optional<double> ifdOffset = ReadUnsigned(data_, tiffStart + 4, 4)) {
            // Without an ExifOffset there is no sub-directory: offset 0 would read the header.
            if (const std::optional<double> exifOffset =
                    ReadIFD(tiffStart, *ifdOffset, kExifOffset, ini))
                interopOffset_ = ReadIFD(tiffStart, *exifOffset, kInteroperabilityOffset, ini);
        }
    } catch (const std::exception&) {
        readStatus_ = 2;
    }
    data_.clear();
}

std::optional<double> clsEXIF::ReadIFD(std::int64_t tiffStart, double offset, long wantedTag,
                                       const platform::IniFile& ini) {
    std::optional<double> answer;
    // The offset comes from the file (or from a text exif.ini may have rewritten): it may
    // point anywhere, or be no number at all.
    const double start = static_cast<double>(tiffStart) + offset;
    if (!(start >= 0 && start < static_cast<double>(data_.size()))) return answer;
    std::int64_t pos = static_cast<std::int64_t>(start);
    const std::optional<double> count = ReadUnsigned(data_, pos, 2);
    if (!count) return answer;
    pos += 2;
    // Only entries actually read are kept: a count the window cannot hold leaves no blanks.
    for (int i = 0; i < static_cast<int>(*count); ++i, pos += 12) {
        // The rest of the directory lies beyond the window.
        if (pos + 12 > data_.size()) break;
        TagEntry entry;
        entry.Tag = static_cast<long>(ReadUnsigned(data_, pos, 2).value_or(0));
        entry.Format = static_cast<long>(ReadUnsigned(data_, pos + 2, 2).value_or(0));
        entry.Components = ReadUnsigned(data_, pos + 4, 4).value_or(0);
        entry.ValueOffset = ReadUnsigned(data_, pos + 8, 4).value_or(0);
        entry.TagName = GetTagName(entry.Tag);
        DecodeTagValue(entry, tiffStart, pos, ini);
        tags_.push_back(entry);
        if (entry.Tag == wantedTag) answer = vb::RoundHalfEven(vb::Val(entry.Text));
        // Nothing the program asks for stands behind the date taken.
        if (entry.Tag == kDateTimeOriginal) break;
    }
    return answer;
}

void clsEXIF::DecodeTagValue(TagEntry& entry, std::int64_t tiffStart, std::int64_t pos,
                             const platform::IniFile& ini) const {
    const int typeSize = TypeSize(entry.Format);
    // Up to 8 * (2^32 - 1): no overflow in 64 bits.
    const std::int64_t size = typeSize * static_cast<std::int64_t>(entry.Components);
    QByteArray raw;
    if (size > 4) {
        // A value that runs past the window is cut short; one that starts past it is empty.
        const std::int64_t at = tiffStart + static_cast<std::int64_t>(entry.ValueOffset);
        if (at < data_.size()) raw = data_.mid(at, std::min<std::int64_t>(size, data_.size() - at));
    } else {
        raw = data_.mid(pos + 8, 4);
    }

    const long tag = entry.Tag;
    QString text;
    auto showNumber = [&](std::optional<double> number) {
        if (!number) return;
        entry.Value = *number;
        text = NumberText(*number);
    };
    switch (entry.Format) {
    case 2:
        text = AsciiText(raw);
        break;
    case 5:
    case 10: {
        auto readAt = [&](std::int64_t at) {
            return entry.Format == 5 ? ReadUnsignedRational(raw, at) : ReadSignedRational(raw, at);
        };
        const std::optional<Rational> first = readAt(0);
        // A zero denominator leaves the rational without a value: the formatted texts are
        // then empty, and the "n/d" form still says what the file holds.
        auto showFormatted = [&](double (*shown)(double), int decimals) {
            if (!first || !first->value) return;
            const double number = shown(*first->value);
            text = FormatFixed(number, decimals);
            if (!text.isEmpty()) entry.Value = number;
        };
        const bool unsignedType = entry.Format == 5;
        if (unsignedType && tag == 33434) {
            showFormatted([](double v) { return 1 / v; }, 0);
        } else if (unsignedType && IsOneOf(tag, {37378, 37381})) {
            showFormatted([](double v) { return std::pow(std::sqrt(2.0), v); }, 1);
        } else if (unsignedType && IsOneOf(tag, {282, 283, 33437, 37382, 37386, 41486, 41487})) {
            showFormatted([](double v) { return v; }, 1);
        } else if (!unsignedType && tag == 37377) {
            showFormatted([](double v) { return std::pow(2.0, v); }, 0);
        } else if (!unsignedType && tag == 37380) {
            showFormatted([](double v) { return v; }, 1);
        } else if (entry.Components <= 1) {
            if (first) {
                text = first->text;
                if (first->value) entry.Value = *first->value;
            }
        } else {
            // Only the components that lie inside the window.
            const std::int64_t count =
                std::min<std::int64_t>(static_cast<std::int64_t>(entry.Components), raw.size() / 8);
            QStringList parts;
            for (std::int64_t i = 0; i < count; ++i) {
                const std::optional<Rational> part = readAt(8 * i);
                parts << (part && part->value ? FormatFixed(*part->value, 3) : QString());
            }
            text = parts.join(QLatin1Char('/'));
        }
        break;
    }
    case 6:
    case 8:
    case 9:
        showNumber(ReadSigned(raw, 0, typeSize));
        break;
    case 7:
        if (tag == 37500) {
            text = FilterText(raw);
        } else if (tag == 36864 || tag == 40960) {
            // "0220" is version 2.20.
            const QString digits = QString::fromLatin1(raw);
            text = NumberText(vb::Val(digits.left(2))) + QLatin1Char('.') + digits.right(2);
        } else if (tag == 37121) {
            static const std::array<const char*, 7> kChannels{"", "Y", "Cb", "Cr", "R", "G", "B"};
            for (qsizetype i = 0; i < std::min<qsizetype>(4, raw.size()); ++i) {
                const auto channel = static_cast<unsigned char>(raw[i]);
                // A code the list does not know adds nothing.
                if (channel < kChannels.size()) text += QLatin1String(kChannels[channel]);
            }
        } else if (tag == 41728 || tag == 41729) {
            showNumber(ReadUnsigned(raw, 0, typeSize));
        } else {
            text = QString::fromLatin1(raw);
        }
        break;
    default:
        showNumber(ReadUnsigned(raw, 0, typeSize));
        break;
    }
    text.remove(QChar(0));

    // exif.ini may put words in place of a value (section = tag name, key = the value), and
    // may wrap the value in a pattern (key "Format", "@X" standing for the value).
    if (!ini.IsEmpty()) {
        const QString words = ReadIni(ini, entry.TagName, text);
        if (!words.isEmpty()) text = words;
        const QString pattern = ReadIni(ini, entry.TagName, QStringLiteral("Format"));
        if (!pattern.isEmpty()) text = QString(pattern).replace(QLatin1String("@X"), text);
    }
    entry.Text = text;
}

std::optional<double> clsEXIF::ReadUnsigned(const QByteArray& bytes, std::int64_t pos,
                                            int count) const {
    if (pos < 0 || count < 0 || pos + count > bytes.size()) return std::nullopt;
    double value = 0;
    for (int i = 0; i < count; ++i) {
        const std::int64_t at = intelByteAlignment_ ? pos + count - 1 - i : pos + i;
        value = value * 256 + static_cast<unsigned char>(bytes[static_cast<qsizetype>(at)]);
    }
    return value;
}

std::optional<double> clsEXIF::ReadSigned(const QByteArray& bytes, std::int64_t pos,
                                          int count) const {
    std::optional<double> value = ReadUnsigned(bytes, pos, count);
    if (value && count > 0 && *value >= std::ldexp(1.0, count * 8 - 1))
        *value -= std::ldexp(1.0, count * 8);
    return value;
}

std::optional<clsEXIF::Rational> clsEXIF::ReadUnsignedRational(const QByteArray& bytes,
                                                               std::int64_t pos) const {
    const std::optional<double> numerator = ReadUnsigned(bytes, pos, 4);
    const std::optional<double> denominator = ReadUnsigned(bytes, pos + 4, 4);
    if (!numerator || !denominator) return std::nullopt;
    Rational rational;
    rational.text = NumberText(*numerator) + QLatin1Char('/') + NumberText(*denominator);
    if (*denominator != 0) rational.value = *numerator / *denominator;
    return rational;
}

std::optional<clsEXIF::Rational> clsEXIF::ReadSignedRational(const QByteArray& bytes,
                                                             std::int64_t pos) const {
    const std::optional<double> numerator = ReadSigned(bytes, pos, 4);
    const std::optional<double> denominator = ReadSigned(bytes, pos + 4, 4);
    if (!numerator || !denominator) return std::nullopt;
    Rational rational;
    rational.text = NumberText(*numerator) + QLatin1Char('/') + NumberText(*denominator);
    if (*denominator != 0) rational.value = *numerator / *denominator;
    return rational;
}

QByteArray clsEXIF::ReadFileBytes(const QString& fileName, qint64 count) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) return QByteArray();
    return count < 0 ? file.readAll() : file.read(count);
}

QString clsEXIF::ReadIni(const platform::IniFile& ini, const QString& section, const QString& key) {
    // The value went through a 1024-byte buffer, cut at its first zero.
    QString value = ini.Value(section, key).left(1023);
    const qsizetype zero = value.indexOf(QChar(0));
    if (zero >= 0) value.truncate(zero);
    return value.trimmed();
}

QString clsEXIF::FilterText(const QByteArray& raw) {
    QString text;
    for (const char byte : raw) {
        const auto code = static_cast<unsigned char>(byte);
        if (code > 31 && code < 128) text += QLatin1Char(byte);
    }
    return text;
}

QString clsEXIF::GetTagName(long tag) {
    for (const KnownTag& known : kTagTable)
        if (known.number == tag) return QLatin1String(known.name);
    return QStringLiteral("Tag #%1").arg(tag);
}

void clsEXIF::MetaInfo(long tag, QString& text, QVariant& value) const {
    if (readStatus_ == 1) {
        BugLog(QStringLiteral("@@@@ clsEXIF error : MetaInfo File is not in EXIF format "));
        return;
    }
    if (readStatus_ != 0) {
        BugLog(QStringLiteral("@@@@ clsEXIF error : MetaInfo - error parsing the file "));
        return;
    }
    for (const TagEntry& entry : tags_) {
        if (entry.Tag == tag) {
            text = entry.Text;
            value = entry.Value;
            return;
        }
    }
    text = QStringLiteral("Tag %1 not found.").arg(tag);
}

QString clsEXIF::ListInfo() const {
    if (readStatus_ == 2) return QStringLiteral("Could not open the file.");
    if (readStatus_ == 1) return QStringLiteral("File is not in EXIF format.");
    QString list;
    for (const TagEntry& entry : tags_)
        list += entry.TagName + QLatin1String(": ") + entry.Text + QLatin1String("\r\n");
    return list;
}

QString clsEXIF::TextOfFirst(const QString& tagName) const {
    if (readStatus_ == 1) return QStringLiteral("notEXIF");
    if (readStatus_ == 2) return QStringLiteral("file-open-problem");
    for (const TagEntry& entry : tags_)
        if (entry.TagName == tagName) return entry.Text;
    return QString();
}

QString clsEXIF::GetOrigDate() const {
    return TextOfFirst(QStringLiteral("DateTimeOriginal"));
}

QString clsEXIF::GetDescription() const {
    return TextOfFirst(QStringLiteral("ImageDescription"));
}

int clsEXIF::GetOrientation() const {
    if (readStatus_ != 0) return 1;
    for (const TagEntry& entry : tags_) {
        if (entry.TagName != QLatin1String("Orientation")) continue;
        // Words from exif.ini read as 0; a number too large for the old Integer is ignored.
        return vb::CInt(vb::Val(entry.Text.trimmed())).value_or(1);
    }
    return 1;
}

QString clsEXIF::GetDimensionsAsString() const {
    if (readStatus_ == 1) return QStringLiteral("notEXIF");
    if (readStatus_ == 2) return QStringLiteral("file-open-problem");
    std::optional<QString> x;
    std::optional<QString> y;
    for (const TagEntry& entry : tags_) {
        if (!x && entry.TagName == QLatin1String("XResolution")) x = entry.Text;
        if (!y && entry.TagName == QLatin1String("YResolution")) y = entry.Text;
        if (x && y) return *x + QLatin1String(" x ") + *y;
    }
    return QString();
}
