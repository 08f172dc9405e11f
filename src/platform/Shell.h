#pragma once

#include <QString>
#include <functional>

// Opening a document or web page with the program the desktop associates with it.
namespace platform {

// Returns above 32 on success, or one of the classic failure codes: 2 file not found,
// 3 path not found, 31 no application associated.
int ShellOpen(const QString& operation, const QString& file, const QString& parameters,
              const QString& folder);

// Test hook: replaces the launcher; it gets the resolved URL text and returns the code.
using ShellLauncher = std::function<int(const QString& target)>;
void SetShellLauncher(ShellLauncher launcher);

} // namespace platform
