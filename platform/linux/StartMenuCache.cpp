// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/StartMenuCache.h"

#include "platform/RegularFile.h"

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

constexpr quint32 formatNumber = 0x564b5302; // "VKS" and the version of the format
constexpr int fileStateSize = sizeof(StartMenuCache::FileState);

QString cacheFile(const QString &folder)
{
    const QByteArray key = QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha1);
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation)
           + "/Vaskel/start-menu/"_L1 + QLatin1String(key.toHex());
}

// Little-endian, as on nearly all machines, so that names need no conversion.
void prepare(QDataStream &stream)
{
    stream.setVersion(QDataStream::Qt_6_4);
    stream.setByteOrder(QDataStream::LittleEndian);
}

// Names and visibility depend on the desktop and the languages, too.
QByteArray sessionKey()
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
    stream << entry.name << entry.program << entry.tryExec;
    stream.writeRawData(reinterpret_cast<const char *>(entry.state.data()), fileStateSize);
    return stream;
}

QDataStream &operator>>(QDataStream &stream, StartMenuCache::Entry &entry)
{
    stream >> entry.name >> entry.program >> entry.tryExec;
    auto *state = reinterpret_cast<char *>(entry.state.data());
    if (stream.readRawData(state, fileStateSize) != fileStateSize) {
        stream.setStatus(QDataStream::ReadPastEnd);
    }
    return stream;
}

StartMenuCache::StartMenuCache(const QString &folder)
    : m_file(cacheFile(folder))
{
    QFile file(m_file);
    if (!openRegularFile(file)) {
        return;
    }
    QDataStream stream(file.readAll());
    prepare(stream);
    quint32 format = 0;
    QByteArray then;
    stream >> format >> then;
    if (format != formatNumber || then != sessionKey()) {
        return;
    }
    stream >> m_entries;
    if (stream.status() != QDataStream::Ok) {
        m_entries.clear();
    }
}

const StartMenuCache::Entry *StartMenuCache::find(const QString &fileName, const FileState &state)
{
    const auto entry = m_entries.find(fileName);
    if (entry == m_entries.end() || entry->state != state) {
        return nullptr;
    }
    entry->isUsed = true;
    return &*entry;
}

void StartMenuCache::insert(const QString &fileName, const Entry &entry)
{
    const auto place = m_entries.insert(fileName, entry);
    place->isUsed = true;
    m_isChanged = true;
}

void StartMenuCache::save()
{
    const auto forgotten =
        m_entries.removeIf([](QHash<QString, Entry>::iterator entry) { return !entry->isUsed; });
    if (!m_isChanged && forgotten == 0) {
        return;
    }
    QDir().mkpath(QFileInfo(m_file).path());
    QSaveFile file(m_file);
    if (!file.open(QIODevice::WriteOnly)) {
        return;
    }
    QDataStream stream(&file);
    prepare(stream);
    stream << formatNumber << sessionKey() << m_entries;
    if (stream.status() == QDataStream::Ok) {
        file.commit();
    }
}

} // namespace platform
