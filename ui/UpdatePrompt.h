// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/TypingPause.h"

#include <QCoreApplication>
#include <QObject>

class QProgressDialog;
class QWidget;
class Updater;

/// The dialogs of an update: asks before the download, but not while the user types, shows its
/// progress, and warns if it fails. A check that fails or finds no update shows nothing.
class UpdatePrompt : public QObject
{
    Q_DECLARE_TR_FUNCTIONS(MainWindow) // its context in the translation files

public:
    /// The updater is not owned and must outlive the prompt. The window becomes the parent of the
    /// prompt and of its dialogs.
    UpdatePrompt(Updater *updater, QWidget *window);

private:
    void offer(const QString &version, const QString &changelog, const QString &url);
    void ask(const QString &version, const QString &changelog, const QString &url);
    void showProgress(qint64 bytesReceived, qint64 bytesTotal);
    void createProgressDialog();
    void closeProgressDialog();
    void showError(const QString &message);

    Updater *m_updater;
    QWidget *m_window;
    TypingPause m_typingPause{this};
    QProgressDialog *m_progressDialog = nullptr; // created on the first report
};
