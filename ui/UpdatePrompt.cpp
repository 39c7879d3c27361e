// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/UpdatePrompt.h"

#include "ui/PlainMessage.h"
#include "update/Updater.h"

#include <QProgressDialog>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

// The server chooses these texts. Laying out 200,000 characters without a blank takes seconds.
constexpr qsizetype longestText = 30000;
constexpr qsizetype longestVersion = 100;

QString shortened(const QString &text, qsizetype limit)
{
    return text.size() > limit ? text.left(limit) + u"…"_s : text;
}

} // namespace

UpdatePrompt::UpdatePrompt(Updater *updater, QWidget *window)
    : QObject(window)
    , m_updater(updater)
    , m_window(window)
{
    connect(m_updater, &Updater::updateAvailable, this, &UpdatePrompt::offer);
    connect(m_updater, &Updater::downloadProgress, this, &UpdatePrompt::showProgress);
    connect(m_updater, &Updater::downloadFinished, this, &UpdatePrompt::closeProgressDialog);
    connect(m_updater, &Updater::downloadError, this, &UpdatePrompt::showError);
}

void UpdatePrompt::offer(const QString &version, const QString &changelog, const QString &url)
{
    m_typingPause.call([this, version, changelog, url] { ask(version, changelog, url); });
}

void UpdatePrompt::ask(const QString &version, const QString &changelog, const QString &url)
{
    const QString text =
        tr("New version %1 is available.\n\n%2\n\nUpdate now?")
            .arg(shortened(version, longestVersion), shortened(changelog, longestText));
    if (askPlainQuestion(m_window, tr("Update available"), text)) {
        m_updater->downloadAndInstall(url);
    }
}

void UpdatePrompt::showProgress(qint64 bytesReceived, qint64 bytesTotal)
{
    if (!m_progressDialog) {
        createProgressDialog();
    }
    if (bytesTotal > 0) {
        m_progressDialog->setValue(int(bytesReceived * 100 / bytesTotal));
    }
    m_progressDialog->show();
}

void UpdatePrompt::createProgressDialog()
{
    m_progressDialog =
        new QProgressDialog(tr("Downloading update..."), QString(), 0, 100, m_window);
    // A screen reader names a dialog by its title, and this one has none.
    m_progressDialog->setAccessibleName(m_progressDialog->labelText());
    m_progressDialog->setWindowModality(Qt::WindowModal);
    m_progressDialog->setCancelButton(nullptr);
    // With the default duration, setValue() would run the event loop. The download could finish
    // inside it, and the dialog would then be shown again.
    m_progressDialog->setMinimumDuration(std::numeric_limits<int>::max());
}

void UpdatePrompt::closeProgressDialog()
{
    if (m_progressDialog) {
        m_progressDialog->close();
    }
}

void UpdatePrompt::showError(const QString &message)
{
    closeProgressDialog();
    showPlainMessage(m_window, QMessageBox::Warning, tr("Update failed"),
                     shortened(message, longestText), QMessageBox::Ok);
}
