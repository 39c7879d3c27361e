// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/HotkeyHints.h"

#include "widgets/HintLine.h"
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
    m_fields.append({edit, command, {}, false});
    connect(edit, &HotkeyEdit::keySequenceChanged, this, [this, edit] { showHintOf(edit); });
}

void HotkeyHints::update()
{
    for (Field &field : m_fields) {
        field.stored = field.edit->hotkey();
        field.isHeld = !field.stored.isEmpty() && m_check && m_check(field.command);
        showHint(field);
    }
}

void HotkeyHints::showHint(const Field &field)
{
    QString text;
    if (field.isHeld && field.edit->hotkey() == field.stored) {
        text = tr("This hotkey is held by another program.");
    } else if (isBareKey(field.edit->keySequence())) {
        text = tr("This key is taken from all programs.");
    }
    HintLine::setHint(field.edit, text);
}

void HotkeyHints::showHintOf(const HotkeyEdit *edit) const
{
    for (const Field &field : m_fields) {
        if (field.edit == edit) {
            showHint(field);
        }
    }
}
