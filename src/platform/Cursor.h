#pragma once

#include <QPoint>

// The pointer's display counter: each hide lowers it, each show raises it, and the pointer is
// visible while the count is 0 or more. Returns the new count.
namespace platform {

int ShowCursor(bool show);
int CursorDisplayCount();
bool CursorHidden();
// Pointer position in screen pixels.
QPoint GetCursorPos();
// Test hook: a fixed pointer position, or back to the real pointer with std::nullopt-like reset.
void SetCursorPosForTest(const QPoint& pos);
void UseRealCursorPos();
// Test hook: back to a fresh count of 0, pointer shown.
void ResetCursorCounter();

} // namespace platform
