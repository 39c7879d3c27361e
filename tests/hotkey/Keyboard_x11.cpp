// SPDX-License-Identifier: GPL-3.0-or-later
#include "hotkey/Keyboard.h"

#include "compat/OtherClient.h"

#include <QHash>
#include <QStringList>

#include <X11/keysym.h>
#include <xcb/xcb.h>

using namespace Qt::StringLiterals;

namespace {

xcb_keysym_t symbolOf(const QString &name)
{
    static const QHash<QString, xcb_keysym_t> symbols{
        {u"Ctrl"_s, XK_Control_L}, {u"Alt"_s, XK_Alt_L}, {u"Space"_s, XK_space}, {u"C"_s, XK_c}};
    return symbols.value(name);
}

quint16 modifiersOf(const QString &sequence)
{
    return (sequence.contains("Ctrl+"_L1) ? XCB_MOD_MASK_CONTROL : 0)
           | (sequence.contains("Alt+"_L1) ? XCB_MOD_MASK_1 : 0);
}

xcb_keysym_t keyOf(const QString &sequence)
{
    return symbolOf(sequence.section(u'+', -1));
}

} // namespace

class Keyboard::Private
{
public:
    OtherClient other;
};

Keyboard::Keyboard()
    : d(std::make_unique<Private>())
{
}

Keyboard::~Keyboard() = default;

void Keyboard::reset()
{
    d->other.reset();
}

bool Keyboard::isReady() const
{
    return d->other.hasFocus();
}

void Keyboard::type(const QString &sequence)
{
    QList<xcb_keysym_t> symbols;
    const QStringList names = sequence.split(u'+');
    for (const QString &name : names) {
        symbols.append(symbolOf(name));
    }
    d->other.type(symbols);
}

int Keyboard::received(const QString &sequence)
{
    return d->other.received(keyOf(sequence));
}

bool Keyboard::grabHotkey(const QString &sequence)
{
    return d->other.grab(keyOf(sequence), modifiersOf(sequence));
}

void Keyboard::releaseHotkey(const QString &sequence)
{
    d->other.ungrab(keyOf(sequence), modifiersOf(sequence));
}

bool Keyboard::isPress(const void *message)
{
    return static_cast<const xcb_generic_event_t *>(message)->response_type == XCB_KEY_PRESS;
}
