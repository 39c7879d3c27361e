// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>

class QDialogButtonBox;
class QTimer;

/// Tells for a moment, beside the buttons of a page, whether the page was saved.
class SavedNotice : public QLabel
{
    Q_OBJECT

public:
    /// Shows the notice in place of an earlier one. The buttons own it from the first call on; it
    /// takes no room from them.
    static void showBeside(QDialogButtonBox *buttons, bool isSaved);

private:
    explicit SavedNotice(QDialogButtonBox *buttons);
    void placeBeside(const QDialogButtonBox &buttons);

    QTimer *m_timer;
};
