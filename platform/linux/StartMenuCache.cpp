// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/StartMenuCache.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#include <glib.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr quint32 formatNumber = 0x564b5301; // "VKS" and the version of the format
constexpr auto streamVersion = QDataStream::Qt_6_4;

QString cacheFile(const QString &folder)
{
    const QByteArray key = QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha1);
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation)
           + "/Vaskel/start-menu/"_L1 + QLatin1String(key.toHex());
}

// What the names and the decision to list them depend on besides the files.
QByteArray circumstances()
{
    QByteArray text = qgetenv("XDG_CURRENT_DESKTOP");
    for (const char *const *language = g_get_language_names(); *language; ++language) {
        text += '\n';
        text += *language;
    }
    return text;
}

} // namespace

QDataStream &operator<<(QDataStream &stream, const StartMenuCache::Entry &entry)
{
    return stream << entry.name << entry.program << entry.tryExec << entry.identity;
}

QDataStream &operator>>(QDataStream &stream, StartMenuCache::Entry &entry)
{
    return stream >> entry.name >> entry.program >> entry.tryExec >> entry.identity;
}

StartMenuCache::StartMenuCache(const QString &folder)
    : m_file(cacheFile(folder))
{
    QFile file(m_file);
    if (!file.open(QIODevice::ReadOnly)) {
        return;
    }
    QDataStream stream(file.readAll());
    stream.setVersion(streamVersion);
    quint32 format = 0;
    QByteArray then;
    stream >> format >> then;
    if (format != formatNumber || then != circumstances()) {
        return;
    }
    stream >> m_kept;
    if (stream.status() != QDataStream::Ok) {
        m_kept.clear();
    }
}

std::optional<StartMenuCache::Entry> StartMenuCache::find(const QString &filePath,
                                                          const QByteArray &identity)
{
    const auto entry = m_kept.constFind(filePath);
    if (entry == m_kept.cend() || entry->identity != identity) {
        return std::nullopt;
    }
    m_used.insert(filePath, *entry);
    return *entry;
}

void StartMenuCache::insert(const QString &filePath, const Entry &entry)
{
    m_used.insert(filePath, entry);
    m_isChanged = true;
}

void StartMenuCache::save() const
{
    if (!m_isChanged && m_used.size() == m_kept.size()) {
        return;
    }
    QDir().mkpath(QFileInfo(m_file).path());
    QSaveFile file(m_file);
    if (!file.open(QIODevice::WriteOnly)) {
        return;
    }
    QDataStream stream(&file);
    stream.setVersion(streamVersion);
    stream << formatNumber << circumstances() << m_used;
    if (stream.status() == QDataStream::Ok) {
        file.commit();
    }
}

} // namespace platform
