// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/SettingsStore.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>

using namespace Qt::StringLiterals;

namespace {

// For what is added to the file, and for the lock file beside it.
constexpr qint64 spareRoom = 16 * 1024; // bytes

QString nearestFolder(const QString &path)
{
    QString folder = QFileInfo(path).path();
    while (!QFileInfo(folder).isDir() && !QDir(folder).isRoot()) {
        folder = QFileInfo(folder).path();
    }
    return folder;
}

// QSettings replaces its file even if the disk was full before the new one was complete.
bool hasRoomFor(const QSettings &settings)
{
    if (settings.fileName().startsWith(u'\\')) { // a key in the registry of Windows
        return true;
    }
    const QFileInfo named(settings.fileName());
    const QFileInfo file(named.isFile() ? named.canonicalFilePath() : named.filePath());
    QTemporaryFile trial(nearestFolder(file.filePath()) + u'/' + file.fileName() + ".XXXXXX"_L1);
    const QByteArray bytes(file.size() + spareRoom, '\0');
    return trial.open() && trial.write(bytes) == bytes.size() && trial.flush();
}

} // namespace

SettingsStore::SettingsStore(const QString &organization, const QString &application)
    : m_settings(organization, application)
{
}

bool SettingsStore::contains(const QString &key) const
{
    return m_unsaved.contains(key) || m_settings.contains(key);
}

QVariant SettingsStore::value(const QString &key, const QVariant &defaultValue) const
{
    const auto unsaved = m_unsaved.constFind(key);
    return unsaved != m_unsaved.cend() ? *unsaved : m_settings.value(key, defaultValue);
}

void SettingsStore::setValue(const QString &key, const QVariant &value)
{
    m_unsaved.insert(key, value);
    writeUnsaved();
}

bool SettingsStore::writeUnsaved()
{
    if (m_unsaved.isEmpty()) {
        return true;
    }
    if (!hasRoomFor(m_settings) || !m_settings.isWritable()) {
        qWarning() << "Cannot write the settings:" << m_settings.fileName();
        return false;
    }
    for (auto unsaved = m_unsaved.cbegin(); unsaved != m_unsaved.cend(); ++unsaved) {
        m_settings.setValue(unsaved.key(), *unsaved);
    }
    m_unsaved.clear();
    return true;
}
