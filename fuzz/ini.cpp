// The Windows-style profile reader behind "exif.ini": any bytes as the file, then lookups of
// names taken from the file itself and of the ones the EXIF reader asks for.
#include "FuzzSupport.h"
#include "platform/IniFile.h"

#include <algorithm>

// The application and the windows are built before the first input, outside its time limit.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzz::Install();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString path = fuzz::InstallPath(QStringLiteral("exif.ini"));
    const QByteArray bytes = fuzz::Bytes(data, size);
    fuzz::WriteFile(path, bytes);

    platform::IniFile ini;
    fuzz::Check(ini.Load(path));
    QString section = QStringLiteral("Orientation");
    for (const QByteArray& raw : bytes.split('\n')) {
        const QString line = QString::fromUtf8(raw).trimmed();
        if (line.startsWith(QLatin1Char('['))) {
            section = line.mid(1, line.indexOf(QLatin1Char(']')) - 1);
            continue;
        }
        const qsizetype equals = line.indexOf(QLatin1Char('='));
        const QString key = equals > 0 ? line.left(equals) : line;
        const QString value = ini.Value(section, key);
        // What comes back is a value as it stood in the file, without the blanks around it.
        fuzz::Check(value == value.trimmed());
        // Names match whatever their case (in the ASCII letters: other scripts' case pairs
        // need not map back and forth).
        const auto ascii = [](const QString& t) {
            return std::all_of(t.begin(), t.end(), [](QChar c) { return c.unicode() < 128; });
        };
        if (ascii(section) && ascii(key))
            fuzz::Check(ini.Value(section.toUpper(), key.toLower()) ==
                        ini.Value(section.toLower(), key.toUpper()));
    }
    ini.Value(QStringLiteral("Flash"), QStringLiteral("Format"));
    fuzz::Check(ini.Value(section, QString()).isEmpty());
    platform::ReadPrivateProfileString(QStringLiteral("Orientation"), QStringLiteral("1"), path);
    return 0;
}
