// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QLineEdit;

/// Leaves the keys to the input method while it composes text in a line edit: neither the edit nor
/// a shortcut of its window takes Enter, Tab, Escape, an arrow or another key without text.
class InputMethodKeys : public QObject
{
    Q_OBJECT

public:
    /// The edit becomes the parent. Event filters that are installed on it later come first, and
    /// must ask isComposing().
    explicit InputMethodKeys(QLineEdit *edit);

    /// Whether the edit shows text that the input method has not committed yet.
    bool isComposing() const { return m_isComposing; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool m_isComposing = false;
};
