// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>

#include <functional>

class QPushButton;

/// A line of small text under a field. It is created when the field first has a hint, so a page
/// without hints has no additional widgets.
class HintLine : public QLabel
{
    Q_OBJECT

public:
    /// Shows the text under the field, which must be in a box layout, and makes it the field's
    /// accessible description. An empty text hides the line.
    static void setHint(QWidget *field, const QString &text);

    /// Shows a button at the end of the line, which must have had a text, and calls the function
    /// when the button is pressed. An empty function hides the button.
    static void setButton(QWidget *field, const QString &text,
                          const std::function<void()> &pressed);

    /// The line of the field, or null if it never had a hint. The field owns nothing; the line is
    /// its sibling.
    static HintLine *of(const QWidget *field);

private:
    explicit HintLine(QWidget *field);
    void placeUnder();
    void addButton();

    QWidget *m_field;
    QPushButton *m_button = nullptr;
    std::function<void()> m_pressed;
};
