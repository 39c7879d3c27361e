// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>

/// A line of small text under a field. It is created when the field first has a hint, so a page
/// without hints has no other widgets than before.
class HintLine : public QLabel
{
    Q_OBJECT

public:
    /// Shows the text under the field, which must be in a box layout, and makes it the field's
    /// accessible description. An empty text hides the line.
    static void setHint(QWidget *field, const QString &text);

    /// The line of the field, or null if it never had a hint. The field owns nothing; the line is
    /// its sibling.
    static HintLine *of(const QWidget *field);

private:
    explicit HintLine(QWidget *field);
    void placeUnder();

    QWidget *m_field;
};
