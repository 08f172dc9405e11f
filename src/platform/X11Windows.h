#pragma once

#include <QSize>
#include <QString>
#include <optional>
#include <vector>

// What the program needs to know of other X11 windows: their titles, for the one-instance
// rule, and the size and life of the window that hosts the preview.
namespace platform::x11 {

struct TopWindow {
    quint32 id = 0;
    QString title;
};

// True when the program runs on an X display (not offscreen).
bool Available();

// Every top-level window under the root, mapped or not. A window manager's frame without a
// title is looked through to the client window it holds.
std::vector<TopWindow> TopLevelWindows();

// 0 when no top-level window has exactly this title.
quint32 FindWindowByTitle(const QString& title);
int CountWindowsWithTitlePrefix(const QString& prefix);

// Size of a window's inside, or nothing when the window does not exist.
std::optional<QSize> WindowSize(quint32 window);

} // namespace platform::x11
