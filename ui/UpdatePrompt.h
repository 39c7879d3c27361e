// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QObject>

class QProgressDialog;
class QWidget;
class Updater;

/// Shows an update to the user: asks before it is downloaded, shows how far the download is, and
/// warns if it fails. A check that finds nothing or fails is silent.
class UpdatePrompt : public QObject
{
    Q_DECLARE_TR_FUNCTIONS(MainWindow) // the context of its texts in the translation files

public:
    /// The updater is not owned and must outlive the prompt. The window becomes the prompt's owner
    /// and the parent of its dialogs.
    UpdatePrompt(Updater *updater, QWidget *window);

private:
    void offer(const QString &version, const QString &changelog, const QString &url);
    void showProgress(qint64 bytesReceived, qint64 bytesTotal);
    void createProgressDialog();
    void closeProgressDialog();
    void showError(const QString &message);

    Updater *m_updater;
    QWidget *m_window;
    QProgressDialog *m_progressDialog = nullptr; // made on the first report and kept
};
