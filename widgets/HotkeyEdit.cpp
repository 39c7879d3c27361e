// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/HotkeyEdit.h"

#include "platform/QtVersion.h"
#include "widgets/AccessibleFactory.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QLineEdit>

#include <algorithm>
#include <initializer_list>

namespace {

// Modifiers, and keys without a Qt::Key, such as those of further levels of a keyboard layout.
bool isIgnoredKey(int key)
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

// Some systems report Shift+Tab as Backtab, others as Tab with the Shift modifier.
bool isShiftTab(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Backtab
           || (event.key() == Qt::Key_Tab && event.modifiers().testFlag(Qt::ShiftModifier));
}

// Returns an empty sequence if the first key is unknown, as after a parse error.
QKeySequence firstCombination(const QKeySequence &sequence)
{
    const bool isKnown = !sequence.isEmpty() && sequence[0].key() != Qt::Key_unknown;
    return isKnown ? QKeySequence(sequence[0]) : QKeySequence();
}

/// Reports a single text field; the base class reports a frame around a line edit without a name.
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

} // namespace

HotkeyEdit::HotkeyEdit(QWidget *parent)
    : QKeySequenceEdit(parent)
{
    qtversion::setMaximumSequenceLength(*this, 1);
    setClearButtonEnabled(true);
    installAccessible<HotkeyEdit, AccessibleHotkeyEdit>();
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
    // The base class accepts every key, so the shortcut of the window would not get Escape.
    if (event->type() == QEvent::ShortcutOverride
        && isPlain(*static_cast<QKeyEvent *>(event), {Qt::Key_Escape})) {
        event->ignore();
        return true;
    }
    // Since Qt 6.5 the base class would record Shift+Tab as a hotkey.
    if (event->type() == QEvent::KeyPress && isShiftTab(*static_cast<QKeyEvent *>(event))) {
        return QWidget::event(event);
    }
    return QKeySequenceEdit::event(event);
}

void HotkeyEdit::keyPressEvent(QKeyEvent *event)
{
    // The base class clears the field at the first key of a combination, so a single modifier or
    // Shift+Tab would lose the hotkey.
    if (isIgnoredKey(event->key())) {
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
    // Ends the recording; the base class would wait for further combinations.
    setKeySequence(firstCombination(keySequence()));
}
