#pragma once

#include <QString>
#include <cstdint>
#include <stdexcept>

// The small machine-wide key-value store: what must be known before the preferences file can be
// found (installDir), and what the program tunes by itself (xFadeStepTime). It lives in an INI
// file per application and section under the user's configuration folder.

constexpr std::uint32_t kObjectErrorBase = 0x80040000u;

struct RegistryError : std::runtime_error {
    RegistryError(std::uint32_t number, const QString& description);
    std::uint32_t number;
    QString description;
    QString source = QStringLiteral("MRegistry");
};

namespace MRegistry {

// Both raise RegistryError for an empty AppName (base+1000), Section (base+1001) or Key
// (base+1002), each tested trimmed; Key itself is used as given.
void SaveValue(const QString& appName, const QString& section, const QString& key,
               const QString& setting);
// Default when the store or the key is absent. Sets *found when the key was there.
QString ReadValue(const QString& appName, const QString& section, const QString& key,
                  const QString& defaultValue, bool* found = nullptr);

// The file that holds one application's section.
QString StorePath(const QString& appName, const QString& section);

} // namespace MRegistry

// The program's own place in the store. GetSetting answers a stored value trimmed, and the
// default exactly as given when the key is absent or anything fails; neither call ever raises.
QString GetSetting(const QString& key, const QString& defaultValue);
void SaveSetting(const QString& key, const QString& value);
