// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowsKey.h"

#include <QChar>
#include <QHash>

#include <windows.h>

namespace {

// In the high byte of what VkKeyScanExW returns.
constexpr int scanShift = 1;
constexpr int scanControl = 2;
constexpr int scanAlt = 4;

// The virtual-key codes of letters and digits equal their characters.
std::optional<unsigned> plainKey(Qt::Key key)
{
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) {
        return unsigned(key);
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) {
        return unsigned(key - Qt::Key_F1) + VK_F1;
    }
    return std::nullopt;
}

std::optional<unsigned> keypadKey(Qt::Key key)
{
    if (key >= Qt::Key_0 && key <= Qt::Key_9) {
        return unsigned(key - Qt::Key_0) + VK_NUMPAD0;
    }
    switch (key) {
    case Qt::Key_Asterisk:
        return VK_MULTIPLY;
    case Qt::Key_Plus:
        return VK_ADD;
    case Qt::Key_Minus:
        return VK_SUBTRACT;
    case Qt::Key_Slash:
        return VK_DIVIDE;
    case Qt::Key_Period:
    case Qt::Key_Comma:
        return VK_DECIMAL;
    default:
        return std::nullopt;
    }
}

std::optional<unsigned> namedKey(Qt::Key key)
{
    static const QHash<Qt::Key, unsigned> codes = {
        {Qt::Key_Escape, VK_ESCAPE},
        {Qt::Key_Tab, VK_TAB},
        {Qt::Key_Backtab, VK_TAB},
        {Qt::Key_Backspace, VK_BACK},
        {Qt::Key_Return, VK_RETURN},
        {Qt::Key_Enter, VK_RETURN},
        {Qt::Key_Insert, VK_INSERT},
        {Qt::Key_Delete, VK_DELETE},
        {Qt::Key_Pause, VK_PAUSE},
        {Qt::Key_Print, VK_SNAPSHOT},
        {Qt::Key_Clear, VK_CLEAR},
        {Qt::Key_Home, VK_HOME},
        {Qt::Key_End, VK_END},
        {Qt::Key_Left, VK_LEFT},
        {Qt::Key_Up, VK_UP},
        {Qt::Key_Right, VK_RIGHT},
        {Qt::Key_Down, VK_DOWN},
        {Qt::Key_PageUp, VK_PRIOR},
        {Qt::Key_PageDown, VK_NEXT},
        {Qt::Key_CapsLock, VK_CAPITAL},
        {Qt::Key_NumLock, VK_NUMLOCK},
        {Qt::Key_ScrollLock, VK_SCROLL},
        {Qt::Key_Menu, VK_APPS},
        {Qt::Key_Help, VK_HELP},
        {Qt::Key_Space, VK_SPACE},
        {Qt::Key_Back, VK_BROWSER_BACK},
        {Qt::Key_Forward, VK_BROWSER_FORWARD},
        {Qt::Key_Refresh, VK_BROWSER_REFRESH},
        {Qt::Key_Stop, VK_BROWSER_STOP},
        {Qt::Key_Search, VK_BROWSER_SEARCH},
        {Qt::Key_Favorites, VK_BROWSER_FAVORITES},
        {Qt::Key_HomePage, VK_BROWSER_HOME},
        {Qt::Key_VolumeDown, VK_VOLUME_DOWN},
        {Qt::Key_VolumeMute, VK_VOLUME_MUTE},
        {Qt::Key_VolumeUp, VK_VOLUME_UP},
        {Qt::Key_MediaPlay, VK_MEDIA_PLAY_PAUSE},
        {Qt::Key_MediaTogglePlayPause, VK_MEDIA_PLAY_PAUSE},
        {Qt::Key_MediaStop, VK_MEDIA_STOP},
        {Qt::Key_MediaPrevious, VK_MEDIA_PREV_TRACK},
        {Qt::Key_MediaNext, VK_MEDIA_NEXT_TRACK},
        {Qt::Key_LaunchMail, VK_LAUNCH_MAIL},
        {Qt::Key_LaunchMedia, VK_LAUNCH_MEDIA_SELECT},
    };
    const auto code = codes.constFind(key);
    return code != codes.cend() ? std::optional(code.value()) : std::nullopt;
}

unsigned systemModifiers(Qt::KeyboardModifiers modifiers)
{
    unsigned system = 0;
    system |= modifiers.testFlag(Qt::ShiftModifier) ? MOD_SHIFT : 0;
    system |= modifiers.testFlag(Qt::ControlModifier) ? MOD_CONTROL : 0;
    system |= modifiers.testFlag(Qt::AltModifier) ? MOD_ALT : 0;
    system |= modifiers.testFlag(Qt::MetaModifier) ? MOD_WIN : 0;
    return system;
}

// The key that types the character, with the modifiers needed for it.
std::optional<WindowsKey> characterKey(Qt::Key key)
{
    if (key > 0xffff) {
        return std::nullopt;
    }
    const auto character = wchar_t(QChar(ushort(key)).toLower().unicode());
    const SHORT found = VkKeyScanExW(character, GetKeyboardLayout(0));
    if (found == -1) {
        return std::nullopt;
    }
    WindowsKey typing{0, LOBYTE(found)};
    typing.modifiers |= HIBYTE(found) & scanShift ? MOD_SHIFT : 0;
    typing.modifiers |= HIBYTE(found) & scanControl ? MOD_CONTROL : 0;
    typing.modifiers |= HIBYTE(found) & scanAlt ? MOD_ALT : 0;
    return typing;
}

} // namespace

std::optional<WindowsKey> windowsKey(QKeyCombination combination)
{
    const Qt::KeyboardModifiers modifiers = combination.keyboardModifiers();
    const Qt::Key key = combination.key();
    std::optional<unsigned> code;
    if (modifiers.testFlag(Qt::KeypadModifier)) {
        code = keypadKey(key);
    }
    if (!code) {
        code = plainKey(key);
    }
    if (!code) {
        code = namedKey(key);
    }
    if (code) {
        return WindowsKey{systemModifiers(modifiers), *code};
    }
    std::optional<WindowsKey> typing = characterKey(key);
    if (typing) {
        typing->modifiers |= systemModifiers(modifiers);
    }
    return typing;
}
