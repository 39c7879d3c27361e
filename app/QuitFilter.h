// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

/// Makes QCoreApplication::quit() always end the event loop. Qt would first close all windows and
/// give up if one refuses; the launcher's window hides itself instead. Install it on the
/// application object.
class QuitFilter : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override;
};
