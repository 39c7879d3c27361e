// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

/// Makes QCoreApplication::quit() end the event loop in every case. Qt asks each window to close
/// before it quits and gives up when one refuses, and the launcher's window refuses every close by
/// hiding itself. Install on the application object.
class QuitFilter : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override;
};
