#include "platform/Cursor.h"

#include <QCursor>
#include <QGuiApplication>
#include <optional>

namespace platform {
namespace {
int g_count = 0;
bool g_overridden = false;
std::optional<QPoint> g_fakePos;

void Apply() {
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return;
    bool hide = g_count < 0;
    if (hide && !g_overridden) {
        QGuiApplication::setOverrideCursor(QCursor(Qt::BlankCursor));
        g_overridden = true;
    } else if (!hide && g_overridden) {
        QGuiApplication::restoreOverrideCursor();
        g_overridden = false;
    }
}
} // namespace

int ShowCursor(bool show) {
    g_count += show ? 1 : -1;
    Apply();
    return g_count;
}

int CursorDisplayCount() {
    return g_count;
}

bool CursorHidden() {
    return g_overridden;
}

QPoint GetCursorPos() {
    return g_fakePos ? *g_fakePos : QCursor::pos();
}

void SetCursorPosForTest(const QPoint& pos) {
    g_fakePos = pos;
}

void UseRealCursorPos() {
    g_fakePos.reset();
}

void ResetCursorCounter() {
    g_count = 0;
    Apply();
}

} // namespace platform
