// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/HotkeyEdit.h"

#include "platform/QtVersion.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QLineEdit>

#include <algorithm>
#include <initializer_list>

namespace {

// A modifier, or a key that Qt has no code for, such as that of a further level of a layout.
bool isNoHotkey(int key)
{
    switch (key) {
    case 0:
    case Qt::Key_unknown:
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Meta:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_Mode_switch:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock:
        return true;
    default:
        return false;
    }
}

bool isPlain(const QKeyEvent &event, std::initializer_list<int> keys)
{
    return event.modifiers() == Qt::NoModifier
           && std::find(keys.begin(), keys.end(), event.key()) != keys.end();
}

// Systems differ in what the key is called that Shift is held with.
bool isShiftTab(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Backtab
           || (event.key() == Qt::Key_Tab && event.modifiers().testFlag(Qt::ShiftModifier));
}

// Empty for what QKeySequence could not read, too.
QKeySequence firstCombination(const QKeySequence &sequence)
{
    const bool isKnown = !sequence.isEmpty() && sequence[0].key() != Qt::Key_unknown;
    return isKnown ? QKeySequence(sequence[0]) : QKeySequence();
}

/// One field of text, where the base class would show a frame around a nameless line edit.
class AccessibleHotkeyEdit : public QAccessibleWidget
{
public:
    explicit AccessibleHotkeyEdit(HotkeyEdit *edit)
        : QAccessibleWidget(edit, QAccessible::EditableText)
    {
    }

    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QAccessibleInterface *child(int) const override { return nullptr; }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.editable = true;
        return state;
    }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? line()->text(kind) : QAccessibleWidget::text(kind);
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TextInterface ? line()->interface_cast(type)
                                                  : QAccessibleWidget::interface_cast(type);
    }

private:
    QAccessibleInterface *line() const
    {
        return QAccessible::queryAccessibleInterface(widget()->findChild<QLineEdit *>());
    }
};

QAccessibleInterface *createInterface(const QString &, QObject *object)
{
    auto *edit = qobject_cast<HotkeyEdit *>(object);
    return edit ? new AccessibleHotkeyEdit(edit) : nullptr;
}

} // namespace

HotkeyEdit::HotkeyEdit(QWidget *parent)
    : QKeySequenceEdit(parent)
{
    qtversion::setMaximumSequenceLength(*this, 1);
    setClearButtonEnabled(true);
    QAccessible::installFactory(createInterface); // at most once, however often it is called
}

void HotkeyEdit::setHotkey(const QString &hotkey)
{
    setKeySequence(firstCombination(QKeySequence::fromString(hotkey, QKeySequence::PortableText)));
}

QString HotkeyEdit::hotkey() const
{
    return keySequence().toString(QKeySequence::PortableText);
}

bool HotkeyEdit::event(QEvent *event)
{
    // The base class keeps every key from the window's shortcuts.
    if (event->type() == QEvent::ShortcutOverride
        && isPlain(*static_cast<QKeyEvent *>(event), {Qt::Key_Escape})) {
        event->ignore();
        return true;
    }
    // From Qt 6.5 on the base class would take Shift+Tab for a hotkey.
    if (event->type() == QEvent::KeyPress && isShiftTab(*static_cast<QKeyEvent *>(event))) {
        return QWidget::event(event);
    }
    return QKeySequenceEdit::event(event);
}

void HotkeyEdit::keyPressEvent(QKeyEvent *event)
{
    // The base class empties the field at the first key of a combination, so that Shift+Tab or a
    // modifier thought better of would lose the hotkey.
    if (isNoHotkey(event->key())) {
        return;
    }
    if (isPlain(*event, {Qt::Key_Escape})) {
        event->ignore();
        return;
    }
    if (isPlain(*event, {Qt::Key_Backspace, Qt::Key_Delete})) {
        clear();
        return;
    }
    QKeySequenceEdit::keyPressEvent(event);
    // Ends the recording, which would else wait for further combinations.
    setKeySequence(firstCombination(keySequence()));
}
