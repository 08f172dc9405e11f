#include "prefs/MRegistry.h"

#include <QFileInfo>
#include <QSettings>
#include <QVariant>

RegistryError::RegistryError(std::uint32_t number_, const QString& description_)
    : std::runtime_error(description_.toStdString()), number(number_), description(description_) {}

namespace MRegistry {
namespace {

void CheckNames(const QString& appName, const QString& section, const QString& key) {
    if (appName.trimmed().isEmpty())
        throw RegistryError(kObjectErrorBase + 1000, QStringLiteral("AppName may not be empty"));
    if (section.trimmed().isEmpty())
        throw RegistryError(kObjectErrorBase + 1001, QStringLiteral("Section may not be empty"));
    if (key.trimmed().isEmpty())
        throw RegistryError(kObjectErrorBase + 1002, QStringLiteral("Key may not be empty"));
}

// Classic system error codes, so that the numbers raised keep their meaning.
constexpr std::uint32_t kAccessDenied = 5;
constexpr std::uint32_t kInvalidData = 13;

std::uint32_t StatusCode(QSettings::Status status) {
    return status == QSettings::AccessError ? kAccessDenied : kInvalidData;
}

// The type a value would have had in the old store: 1 for text.
std::uint32_t StoredType(const QVariant& v) {
    switch (v.typeId()) {
    case QMetaType::QString:
        return 1;
    case QMetaType::QStringList:
        return 7;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Bool:
        return 4;
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return 11;
    default:
        return 3;
    }
}

} // namespace

QString StorePath(const QString& appName, const QString& section) {
    QSettings s(QSettings::IniFormat, QSettings::UserScope, appName.trimmed(), section.trimmed());
    return s.fileName();
}

void SaveValue(const QString& appName, const QString& section, const QString& key,
               const QString& setting) {
    CheckNames(appName, section, key);
    QSettings s(QSettings::IniFormat, QSettings::UserScope, appName.trimmed(), section.trimmed());
    if (s.status() != QSettings::NoError)
        throw RegistryError(kObjectErrorBase + 2000 + StatusCode(s.status()),
                            QStringLiteral("Could not open/create registry section"));
    s.setValue(key, setting);
    s.sync();
    if (s.status() != QSettings::NoError)
        throw RegistryError(kObjectErrorBase + 2000 + StatusCode(s.status()),
                            QStringLiteral("Could not set key value"));
}

QString ReadValue(const QString& appName, const QString& section, const QString& key,
                  const QString& defaultValue, bool* found) {
    if (found) *found = false;
    CheckNames(appName, section, key);
    QString path = StorePath(appName, section);
    if (!QFileInfo::exists(path)) return defaultValue;
    QSettings s(path, QSettings::IniFormat);
    if (s.status() != QSettings::NoError)
        throw RegistryError(kObjectErrorBase + 2000 + StatusCode(s.status()),
                            QStringLiteral("Could not open registry section"));
    if (!s.contains(key)) return defaultValue;
    QVariant v = s.value(key);
    std::uint32_t type = StoredType(v);
    if (type != 1)
        throw RegistryError(kObjectErrorBase + 2000 + type,
                            QStringLiteral("Registry data not a string"));
    if (found) *found = true;
    return v.toString();
}

} // namespace MRegistry

namespace {
const QString kAppName = QStringLiteral("Marrowfield");
const QString kSection = QStringLiteral("Tessaview");
} // namespace

QString GetSetting(const QString& key, const QString& defaultValue) {
    try {
        bool found = false;
        QString v = MRegistry::ReadValue(kAppName, kSection, key, defaultValue, &found);
        return found ? v.trimmed() : defaultValue;
    } catch (...) {
        return defaultValue;
    }
}

void SaveSetting(const QString& key, const QString& value) {
    try {
        MRegistry::SaveValue(kAppName, kSection, key, value);
    } catch (...) {
        // A user who may not write the store simply loses the value; the show retunes it.
    }
}
