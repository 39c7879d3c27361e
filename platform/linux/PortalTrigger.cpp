// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/PortalTrigger.h"

#include <QChar>
#include <QKeySequence>
#include <QString>

#include <array>

#include <xkbcommon/xkbcommon.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

struct Name
{
    int code;
    QLatin1StringView text;
};

constexpr std::array modifierNames = std::to_array<Name>({
    {Qt::ControlModifier, "CTRL+"_L1},
    {Qt::AltModifier, "ALT+"_L1},
    {Qt::ShiftModifier, "SHIFT+"_L1},
    {Qt::MetaModifier, "LOGO+"_L1},
});

// The keys that type no character. Function keys have their numbers.
constexpr std::array keyNames = std::to_array<Name>({
    {Qt::Key_Escape, "Escape"_L1},
    {Qt::Key_Tab, "Tab"_L1},
    {Qt::Key_Backtab, "Tab"_L1},
    {Qt::Key_Backspace, "BackSpace"_L1},
    {Qt::Key_Return, "Return"_L1},
    {Qt::Key_Enter, "KP_Enter"_L1},
    {Qt::Key_Insert, "Insert"_L1},
    {Qt::Key_Delete, "Delete"_L1},
    {Qt::Key_Pause, "Pause"_L1},
    {Qt::Key_Print, "Print"_L1},
    {Qt::Key_SysReq, "Sys_Req"_L1},
    {Qt::Key_Clear, "Clear"_L1},
    {Qt::Key_Home, "Home"_L1},
    {Qt::Key_End, "End"_L1},
    {Qt::Key_Left, "Left"_L1},
    {Qt::Key_Up, "Up"_L1},
    {Qt::Key_Right, "Right"_L1},
    {Qt::Key_Down, "Down"_L1},
    {Qt::Key_PageUp, "Page_Up"_L1},
    {Qt::Key_PageDown, "Page_Down"_L1},
    {Qt::Key_CapsLock, "Caps_Lock"_L1},
    {Qt::Key_NumLock, "Num_Lock"_L1},
    {Qt::Key_ScrollLock, "Scroll_Lock"_L1},
    {Qt::Key_Menu, "Menu"_L1},
    {Qt::Key_Help, "Help"_L1},
    {Qt::Key_Back, "XF86Back"_L1},
    {Qt::Key_Forward, "XF86Forward"_L1},
    {Qt::Key_Calculator, "XF86Calculator"_L1},
    {Qt::Key_Favorites, "XF86Favorites"_L1},
    {Qt::Key_HomePage, "XF86HomePage"_L1},
    {Qt::Key_LaunchMail, "XF86Mail"_L1},
    {Qt::Key_MediaNext, "XF86AudioNext"_L1},
    {Qt::Key_MediaPlay, "XF86AudioPlay"_L1},
    {Qt::Key_MediaPrevious, "XF86AudioPrev"_L1},
    {Qt::Key_MediaStop, "XF86AudioStop"_L1},
    {Qt::Key_Search, "XF86Search"_L1},
    {Qt::Key_VolumeDown, "XF86AudioLowerVolume"_L1},
    {Qt::Key_VolumeMute, "XF86AudioMute"_L1},
    {Qt::Key_VolumeUp, "XF86AudioRaiseVolume"_L1},
});

// The code of a key that types a character is the character in upper case.
bool typesCharacter(Qt::Key key)
{
    return key < Qt::Key_Escape;
}

QString keysymName(xkb_keysym_t keysym)
{
    std::array<char, 64> name{}; // longer than any name
    const int length = xkb_keysym_get_name(keysym, name.data(), name.size());
    return length > 0 ? QString::fromLatin1(name.data(), length) : QString();
}

QString characterName(Qt::Key key)
{
    const xkb_keysym_t keysym = xkb_utf32_to_keysym(QChar::toLower(uint(key)));
    return keysym == XKB_KEY_NoSymbol ? QString() : keysymName(keysym);
}

QString keypadName(Qt::Key key)
{
    switch (key) {
    case Qt::Key_Asterisk:
        return u"KP_Multiply"_s;
    case Qt::Key_Plus:
        return u"KP_Add"_s;
    case Qt::Key_Minus:
        return u"KP_Subtract"_s;
    case Qt::Key_Slash:
        return u"KP_Divide"_s;
    case Qt::Key_Period:
    case Qt::Key_Comma:
        return u"KP_Decimal"_s;
    default:
        return key >= Qt::Key_0 && key <= Qt::Key_9 ? "KP_"_L1 + QChar(ushort(key)) : QString();
    }
}

QString keyName(QKeyCombination combination)
{
    const Qt::Key key = combination.key();
    if (combination.keyboardModifiers() & Qt::KeypadModifier && typesCharacter(key)) {
        return keypadName(key);
    }
    if (typesCharacter(key)) {
        return characterName(key);
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F35) {
        return u'F' + QString::number(key - Qt::Key_F1 + 1);
    }
    for (const Name &name : keyNames) {
        if (name.code == key) {
            return name.text;
        }
    }
    return {};
}

} // namespace

QString portalTrigger(const QKeySequence &sequence)
{
    if (sequence.isEmpty()) {
        return {};
    }
    const QString key = keyName(sequence[0]);
    if (key.isEmpty()) {
        return {};
    }
    QString trigger;
    for (const Name &name : modifierNames) {
        if (sequence[0].keyboardModifiers().testFlag(Qt::KeyboardModifier(name.code))) {
            trigger += name.text;
        }
    }
    return trigger + key;
}

} // namespace platform
