// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/HotkeyHints.h"

#include "settings/HintLine.h"
#include "widgets/HotkeyEdit.h"

namespace {

bool isBareKey(const QKeySequence &sequence)
{
    return !sequence.isEmpty()
           && !(sequence[0].keyboardModifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier));
}

} // namespace

void HotkeyHints::add(HotkeyEdit *edit, const QString &command)
{
    m_fields.append({edit, command, {}, false, {}});
    connect(edit, &HotkeyEdit::keySequenceChanged, this, [this, edit] { showHintOf(edit); });
}

void HotkeyHints::takeStored()
{
    for (Field &field : m_fields) {
        field.stored = field.edit->hotkey();
    }
    refresh();
}

void HotkeyHints::refresh()
{
    for (Field &field : m_fields) {
        const bool isStored = !field.stored.isEmpty();
        field.isHeld = isStored && m_check && m_check(field.command);
        field.origin = isStored && m_origins ? m_origins(field.command) : HotkeyOrigin();
        showHint(field);
    }
}

// The desktop tells which keys it takes, so its line replaces the warning of a single key.
void HotkeyHints::showHint(const Field &field)
{
    const bool isStored = field.edit->hotkey() == field.stored;
    const bool isOfDesktop = isStored && field.origin.holder == HotkeyOrigin::Holder::Desktop;
    QString text;
    if (isStored && field.isHeld) {
        text = tr("This hotkey is held by another program.");
    } else if (!isOfDesktop && isBareKey(field.edit->keySequence())) {
        text = tr("This key is taken from all programs.");
    } else if (isStored) {
        text = originText(field.origin);
    }
    HintLine::setHint(field.edit, text);
    HintLine::setButton(field.edit, tr("Change…"),
                        isOfDesktop ? field.origin.configure : std::function<void()>());
}

QString HotkeyHints::originText(const HotkeyOrigin &origin)
{
    switch (origin.holder) {
    case HotkeyOrigin::Holder::Untold:
        return {};
    case HotkeyOrigin::Holder::Program:
        return tr("Vaskel holds this hotkey.");
    case HotkeyOrigin::Holder::Desktop:
        return origin.trigger.isEmpty()
                   ? tr("The desktop holds this hotkey.")
                   : tr("The desktop holds this hotkey: %1").arg(origin.trigger);
    case HotkeyOrigin::Holder::Nobody:
        return tr("For a hotkey that works in all windows, bind \"Vaskel --toggle\" in your "
                  "desktop's settings.");
    }
    return {};
}

void HotkeyHints::showHintOf(const HotkeyEdit *edit) const
{
    for (const Field &field : m_fields) {
        if (field.edit == edit) {
            showHint(field);
        }
    }
}
