// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QKeySequenceEdit>

/// A field that takes one key combination: the first that is pressed, at once. A modifier on its
/// own and a key that Qt does not know change nothing, Tab and Escape mean what they mean elsewhere
/// in the window, and Backspace or Delete empties the field, as its clear button does for the
/// mouse.
class HotkeyEdit : public QKeySequenceEdit
{
    Q_OBJECT

public:
    explicit HotkeyEdit(QWidget *parent = nullptr);

    /// Shows a hotkey in QKeySequence::PortableText form: its first combination, or nothing if it
    /// cannot be read.
    void setHotkey(const QString &hotkey);

    /// What the field shows, in QKeySequence::PortableText form; empty for no hotkey.
    QString hotkey() const;

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};
