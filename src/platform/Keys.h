#pragma once

#include <Qt>

class QKeyEvent;

// The show's key commands are defined on the classic virtual key codes (27 Esc, 37 left...).
namespace platform {

// 0 for a key that has no code in the table.
int VirtualKeyCode(int qtKey, Qt::KeyboardModifiers modifiers);
int VirtualKeyCode(const QKeyEvent& event);

// Key state as seen from the key events the program received: the high bit (0x8000 as a
// negative 16-bit value) is set while the key is down.
void NoteKeyEvent(const QKeyEvent& event);
short GetKeyState(int virtualKey);
short GetAsyncKeyState(int virtualKey);
void ClearKeyStates();

} // namespace platform
