// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QKeySequenceEdit>

/// A field for one key combination, which it accepts as soon as it is pressed. It ignores single
/// modifiers and keys that Qt does not know. Tab and Escape work as elsewhere in the window.
/// Backspace, Delete or the clear button empty the field.
class HotkeyEdit : public QKeySequenceEdit
{
    Q_OBJECT

public:
    explicit HotkeyEdit(QWidget *parent = nullptr);

    /// Shows the first combination of a hotkey in QKeySequence::PortableText form; nothing if it
    /// cannot be parsed.
    void setHotkey(const QString &hotkey);

    /// The shown hotkey as QKeySequence::PortableText; empty for none.
    QString hotkey() const;

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};
