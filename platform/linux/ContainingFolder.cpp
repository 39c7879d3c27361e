// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ContainingFolder.h"

#include "platform/Folder.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QFileInfo>
#include <QStringList>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace platform {

bool showInFolder(const QString &path)
{
    const QFileInfo file(path);
    if (!file.isAbsolute() || !(file.exists() || file.isSymbolicLink())) {
        return false;
    }
    const QString folder = file.absolutePath();
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return openFolder(folder);
    }
    // https://www.freedesktop.org/wiki/Specifications/file-manager-interface/
    QDBusMessage call = QDBusMessage::createMethodCall(
        u"org.freedesktop.FileManager1"_s, u"/org/freedesktop/FileManager1"_s,
        u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
    const QStringList addresses = {QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)};
    call << addresses << QString(); // no startup notification
    // The file manager may still have to start, so do not wait for its answer.
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), QCoreApplication::instance());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, folder] {
        if (watcher->isError()) {
            openFolder(folder);
        }
        watcher->deleteLater();
    });
    return true;
}

} // namespace platform
