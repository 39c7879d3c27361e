// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/SettingsStore.h"

#include <QDebug>
#include <QFileInfo>
#include <QTemporaryFile>

using namespace Qt::StringLiterals;

namespace {

// For what is added to the file, and for the lock file beside it.
constexpr qint64 spareRoom = 16 * 1024; // bytes

// QSettings replaces its file even if the disk was full before the new one was complete. In the
// registry of Windows there is no file.
bool hasRoomFor(const QSettings &settings)
{
    const QFileInfo file(QFileInfo(settings.fileName()).canonicalFilePath());
    if (!file.isFile()) {
        return true;
    }
    QTemporaryFile trial(file.filePath() + ".XXXXXX"_L1);
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
    if (!hasRoomFor(m_settings)) {
        qWarning() << "Cannot write the settings:" << m_settings.fileName();
        return false;
    }
    for (auto unsaved = m_unsaved.cbegin(); unsaved != m_unsaved.cend(); ++unsaved) {
        m_settings.setValue(unsaved.key(), *unsaved);
    }
    m_unsaved.clear();
    return true;
}
