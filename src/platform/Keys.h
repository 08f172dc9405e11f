#pragma once

#include <Qt>

class QKeyEvent;

// The show's key commands are defined on the classic virtual key codes (27 Esc, 37 left...).
namespace platform {

// The codes the show's commands are written on.
namespace vk {
inline constexpr int Escape = 27;
inline constexpr int Space = 32;
inline constexpr int PageUp = 33;
inline constexpr int PageDown = 34;
inline constexpr int Left = 37;
inline constexpr int Right = 39;
inline constexpr int C = 67;
inline constexpr int D = 68;
inline constexpr int M = 77;
inline constexpr int N = 78;
inline constexpr int Numpad4 = 100;
inline constexpr int Numpad6 = 102;
inline constexpr int F1 = 112;
// What some keyboards and remote controls send for their arrows.
inline constexpr int Unknown = 255;
} // namespace vk

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
