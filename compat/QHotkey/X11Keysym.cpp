// SPDX-License-Identifier: GPL-3.0-or-later
#include "X11Keysym.h"

#include <QChar>
#include <QHash>
#include <QtGlobal>

#include <X11/XF86keysym.h>
#include <X11/keysym.h>
#include <xkbcommon/xkbcommon.h>

namespace {

// Beyond Latin-1 many characters have an old keysym, and each has one made of its code point.
constexpr int firstOfUnicode = 0x100;
constexpr int lastOfUnicode = 0x10ffff;
constexpr xcb_keysym_t unicodeKeysyms = 0x01000000;

QList<xcb_keysym_t> letterKeysyms(int key)
{
    const char32_t letter = QChar::toLower(char32_t(key));
    return {xkb_utf32_to_keysym(letter), unicodeKeysyms | letter};
}

xcb_keysym_t namedKeysym(int key)
{
    static const QHash<int, xcb_keysym_t> keysyms{
        {Qt::Key_Escape, XK_Escape},
        {Qt::Key_Tab, XK_Tab},
        {Qt::Key_Backtab, XK_Tab},
        {Qt::Key_Backspace, XK_BackSpace},
        {Qt::Key_Return, XK_Return},
        {Qt::Key_Enter, XK_KP_Enter},
        {Qt::Key_Insert, XK_Insert},
        {Qt::Key_Delete, XK_Delete},
        {Qt::Key_Pause, XK_Pause},
        {Qt::Key_Print, XK_Print},
        {Qt::Key_SysReq, XK_Sys_Req},
        {Qt::Key_Home, XK_Home},
        {Qt::Key_End, XK_End},
        {Qt::Key_Left, XK_Left},
        {Qt::Key_Up, XK_Up},
        {Qt::Key_Right, XK_Right},
        {Qt::Key_Down, XK_Down},
        {Qt::Key_PageUp, XK_Page_Up},
        {Qt::Key_PageDown, XK_Page_Down},
        {Qt::Key_Menu, XK_Menu},
        {Qt::Key_Help, XK_Help},
        {Qt::Key_Back, XF86XK_Back},
        {Qt::Key_Forward, XF86XK_Forward},
        {Qt::Key_Stop, XF86XK_Stop},
        {Qt::Key_Refresh, XF86XK_Refresh},
        {Qt::Key_Favorites, XF86XK_Favorites},
        {Qt::Key_HomePage, XF86XK_HomePage},
        {Qt::Key_Search, XF86XK_Search},
        {Qt::Key_LaunchMail, XF86XK_Mail},
        {Qt::Key_LaunchMedia, XF86XK_AudioMedia},
        {Qt::Key_Calculator, XF86XK_Calculator},
        {Qt::Key_Explorer, XF86XK_Explorer},
        {Qt::Key_WWW, XF86XK_WWW},
        {Qt::Key_Tools, XF86XK_Tools},
        {Qt::Key_Eject, XF86XK_Eject},
        {Qt::Key_ScreenSaver, XF86XK_ScreenSaver},
        {Qt::Key_Sleep, XF86XK_Sleep},
        {Qt::Key_PowerOff, XF86XK_PowerOff},
        {Qt::Key_MonBrightnessUp, XF86XK_MonBrightnessUp},
        {Qt::Key_MonBrightnessDown, XF86XK_MonBrightnessDown},
        {Qt::Key_VolumeUp, XF86XK_AudioRaiseVolume},
        {Qt::Key_VolumeDown, XF86XK_AudioLowerVolume},
        {Qt::Key_VolumeMute, XF86XK_AudioMute},
        {Qt::Key_MicMute, XF86XK_AudioMicMute},
        {Qt::Key_MediaPlay, XF86XK_AudioPlay},
        {Qt::Key_MediaTogglePlayPause, XF86XK_AudioPlay},
        {Qt::Key_MediaPause, XF86XK_AudioPause},
        {Qt::Key_MediaStop, XF86XK_AudioStop},
        {Qt::Key_MediaPrevious, XF86XK_AudioPrev},
        {Qt::Key_MediaNext, XF86XK_AudioNext},
        {Qt::Key_MediaRecord, XF86XK_AudioRecord},
    };
    return keysyms.value(key, XCB_NO_SYMBOL);
}

// Maps keys that have at most one keysym.
xcb_keysym_t singleKeysym(QKeyCombination combination)
{
    const int key = combination.key();
    if (combination.keyboardModifiers() & Qt::KeypadModifier) {
        // The keysyms of the keypad are ordered like ASCII.
        const bool isCharacter =
            (key >= Qt::Key_Asterisk && key <= Qt::Key_9) || key == Qt::Key_Equal;
        return isCharacter ? XK_KP_0 + xcb_keysym_t(key - Qt::Key_0) : namedKeysym(key);
    }
    if (key >= Qt::Key_A && key <= Qt::Key_Z) {
        return XK_a + xcb_keysym_t(key - Qt::Key_A);
    }
    if (key >= Qt::Key_Agrave && key <= Qt::Key_THORN && key != Qt::Key_multiply) {
        return XK_agrave + xcb_keysym_t(key - Qt::Key_Agrave);
    }
    if (key >= Qt::Key_Space && key <= Qt::Key_ydiaeresis) {
        return xcb_keysym_t(key);
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F35) {
        return XK_F1 + xcb_keysym_t(key - Qt::Key_F1);
    }
    return namedKeysym(key);
}

} // namespace

QList<xcb_keysym_t> x11Keysyms(QKeyCombination combination)
{
    const int key = combination.key();
    if (key >= firstOfUnicode && key <= lastOfUnicode) {
        return letterKeysyms(key);
    }
    const xcb_keysym_t keysym = singleKeysym(combination);
    return keysym != XCB_NO_SYMBOL ? QList<xcb_keysym_t>{keysym} : QList<xcb_keysym_t>{};
}
