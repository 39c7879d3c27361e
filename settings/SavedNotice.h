// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>

class QDialogButtonBox;
class QTimer;

/// The word "Saved" beside the buttons of a page, for two seconds.
class SavedNotice : public QLabel
{
    Q_OBJECT

public:
    /// Shows the notice, or shows it for longer. The buttons own it from the first call on; it
    /// takes no room from them.
    static void showBeside(QDialogButtonBox *buttons);

private:
    explicit SavedNotice(QDialogButtonBox *buttons);
    void placeBeside(const QDialogButtonBox &buttons);

    QTimer *m_timer;
};
