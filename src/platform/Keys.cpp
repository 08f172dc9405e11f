#include "platform/Keys.h"

#include <QKeyEvent>
#include <array>

namespace platform {
namespace {
std::array<bool, 256> g_down{};

int Table(int key) {
    switch (key) {
    case Qt::Key_Backspace:
        return 8;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return 9;
    case Qt::Key_Clear:
        return 12;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Shift:
        return 16;
    case Qt::Key_Control:
        return 17;
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
        return 18;
    case Qt::Key_Pause:
        return 19;
    case Qt::Key_CapsLock:
        return 20;
    case Qt::Key_Escape:
        return vk::Escape;
    case Qt::Key_Space:
        return vk::Space;
    case Qt::Key_PageUp:
        return vk::PageUp;
    case Qt::Key_PageDown:
        return vk::PageDown;
    case Qt::Key_End:
        return 35;
    case Qt::Key_Home:
        return 36;
    case Qt::Key_Left:
        return vk::Left;
    case Qt::Key_Up:
        return 38;
    case Qt::Key_Right:
        return vk::Right;
    case Qt::Key_Down:
        return 40;
    case Qt::Key_Print:
        return 44;
    case Qt::Key_Insert:
        return 45;
    case Qt::Key_Delete:
        return 46;
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
        return 91;
    case Qt::Key_Super_R:
        return 92;
    case Qt::Key_Menu:
        return 93;
    case Qt::Key_NumLock:
        return 144;
    case Qt::Key_ScrollLock:
        return 145;
    case Qt::Key_Semicolon:
        return 186;
    case Qt::Key_Equal:
        return 187;
    case Qt::Key_Comma:
        return 188;
    case Qt::Key_Minus:
        return 189;
    case Qt::Key_Period:
        return 190;
    case Qt::Key_Slash:
        return 191;
    default:
        break;
    }
    if (key >= Qt::Key_A && key <= Qt::Key_Z) return 65 + (key - Qt::Key_A);
    if (key >= Qt::Key_0 && key <= Qt::Key_9) return 48 + (key - Qt::Key_0);
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return vk::F1 + (key - Qt::Key_F1);
    return 0;
}

int KeypadTable(int key) {
    if (key >= Qt::Key_0 && key <= Qt::Key_9) return 96 + (key - Qt::Key_0);
    switch (key) {
    // With num lock off the keypad arrows arrive as plain cursor keys.
    case Qt::Key_Left:
        return vk::Numpad4;
    case Qt::Key_Right:
        return vk::Numpad6;
    case Qt::Key_Asterisk:
        return 106;
    case Qt::Key_Plus:
        return 107;
    case Qt::Key_Minus:
        return 109;
    case Qt::Key_Period:
        return 110;
    case Qt::Key_Slash:
        return 111;
    default:
        return Table(key);
    }
}
} // namespace

int VirtualKeyCode(int qtKey, Qt::KeyboardModifiers modifiers) {
    return modifiers.testFlag(Qt::KeypadModifier) ? KeypadTable(qtKey) : Table(qtKey);
}

int VirtualKeyCode(const QKeyEvent& event) {
    return VirtualKeyCode(event.key(), event.modifiers());
}

void NoteKeyEvent(const QKeyEvent& event) {
    int code = VirtualKeyCode(event);
    if (code <= 0 || code > 255) return;
    if (event.type() == QEvent::KeyPress)
        g_down[static_cast<std::size_t>(code)] = true;
    else if (event.type() == QEvent::KeyRelease && !event.isAutoRepeat())
        g_down[static_cast<std::size_t>(code)] = false;
}

short GetKeyState(int virtualKey) {
    if (virtualKey < 0 || virtualKey > 255) return 0;
    return g_down[static_cast<std::size_t>(virtualKey)] ? static_cast<short>(-32768) : 0;
}

short GetAsyncKeyState(int virtualKey) {
    return GetKeyState(virtualKey);
}

void ClearKeyStates() {
    g_down.fill(false);
}

} // namespace platform
