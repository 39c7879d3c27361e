// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <QWidget>

/// The part of the plugins page that lists the errors in the user's own commands. Created only if
/// there are some.
class CommandErrorList : public QWidget
{
    Q_OBJECT

public:
    /// Shows the lines, which are those of the log, above the cards of the page: no key scrolls to
    /// a text below the last field.
    static void insertInto(QWidget *page, const QStringList &lines);

private:
    CommandErrorList(const QStringList &lines, QWidget *parent);
};
