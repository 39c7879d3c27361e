// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/StartMenuCache.h"

#include "platform/FileReplacement.h"
#include "platform/RegularFile.h"

#include <QCryptographicHash>
#include <QFile>
#include <QStandardPaths>

#include <cstring>
#include <type_traits>

#include <glib.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr quint32 formatNumber = 0x564b5303; // "VKS" and the version of the format

QString cacheFile(const QString &folder)
{
    const QByteArray key = QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha1);
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation)
           + "/Vaskel/start-menu/"_L1 + QLatin1String(key.toHex());
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

// The file is a sequence of values as they are in memory, since the same machine reads it again. A
// text is its size and its characters, with a zero at the end, and begins at a multiple of eight.
constexpr qsizetype alignment = 8;

qsizetype aligned(qsizetype size)
{
    return (size + alignment - 1) / alignment * alignment;
}

class Writer
{
public:
    template <typename Value> void write(const Value &value)
    {
        static_assert(sizeof value % alignment == 0 && std::is_trivially_copyable_v<Value>);
        m_content.append(reinterpret_cast<const char *>(&value), sizeof value);
    }

    template <typename Text> void writeText(const Text &text)
    {
        const qsizetype size = text.size() * qsizetype(sizeof *text.constData());
        write(qint64(text.size()));
        m_content.append(reinterpret_cast<const char *>(text.constData()), size);
        m_content.append(aligned(size + 2) - size, '\0');
    }

    QByteArray content() const { return m_content; }

private:
    QByteArray m_content;
};

class Reader
{
public:
    explicit Reader(const QByteArray &content)
        : m_content(content)
    {
    }

    bool atEnd() const { return m_position == m_content.size(); }

    template <typename Value> bool read(Value &value)
    {
        if (m_content.size() - m_position < qsizetype(sizeof value)) {
            return false;
        }
        std::memcpy(&value, m_content.constData() + m_position, sizeof value);
        m_position += sizeof value;
        return true;
    }

    // The text stays a part of the content.
    template <typename Text> bool readText(Text &text)
    {
        using Character = std::remove_cv_t<std::remove_reference_t<decltype(*text.constData())>>;
        qint64 length = 0;
        const qsizetype limit = m_content.size();
        if (!read(length) || length < 0 || length > limit) {
            return false;
        }
        const qsizetype size = length * qsizetype(sizeof(Character));
        const char *begin = m_content.constData() + m_position;
        if (aligned(size + 2) > limit - m_position || begin[size] != 0 || begin[size + 1] != 0) {
            return false;
        }
        text = Text::fromRawData(reinterpret_cast<const Character *>(begin), length);
        m_position += aligned(size + 2);
        return true;
    }

private:
    const QByteArray &m_content;
    qsizetype m_position = 0;
};

} // namespace

StartMenuCache::StartMenuCache(const QString &folder)
    : m_file(cacheFile(folder))
{
    QFile file(m_file);
    if (!openRegularFile(file)) {
        return;
    }
    m_content = file.readAll();
    if (!load()) {
        m_files.clear();
    }
}

bool StartMenuCache::load()
{
    Reader reader(m_content);
    qint64 format = 0;
    qint64 count = 0;
    QByteArray then;
    if (!reader.read(format) || format != formatNumber || !reader.readText(then)
        || then != sessionKey() || !reader.read(count)) {
        return false;
    }
    m_files.reserve(qMin(count, qint64(m_content.size() / qint64(sizeof(FileState)))));
    for (qint64 index = 0; index < count; ++index) {
        File &file = m_files.emplaceBack();
        if (!reader.read(file.entry.state) || !reader.readText(file.name)
            || !reader.readText(file.entry.name) || !reader.readText(file.entry.program)
            || !reader.readText(file.entry.tryExec)) {
            return false;
        }
    }
    return reader.atEnd();
}

const StartMenuCache::Entry *StartMenuCache::find(QStringView fileName, const FileState &state)
{
    const bool isNext = m_next < m_files.size() && m_files.at(m_next).name == fileName;
    const qsizetype index = isNext ? m_next : indexOf(fileName);
    if (index < 0) {
        return nullptr;
    }
    m_next = index + 1;
    File &file = m_files[index];
    if (file.entry.state != state) {
        return nullptr;
    }
    file.isUsed = true;
    return &file.entry;
}

qsizetype StartMenuCache::indexOf(QStringView fileName)
{
    if (m_indices.isEmpty()) {
        for (qsizetype index = 0; index < m_files.size(); ++index) {
            m_indices.insert(m_files.at(index).name, index);
        }
    }
    return m_indices.value(fileName, -1);
}

void StartMenuCache::insert(const QString &fileName, const Entry &entry)
{
    const qsizetype older = indexOf(fileName);
    if (older >= 0) {
        m_files[older].isUsed = false;
    }
    m_files.append({fileName, entry, true});
    m_isChanged = true;
}

void StartMenuCache::save()
{
    const auto forgotten = m_files.removeIf([](const File &file) { return !file.isUsed; });
    if (!m_isChanged && forgotten == 0) {
        return;
    }
    Writer writer;
    writer.write(qint64(formatNumber));
    writer.writeText(sessionKey());
    writer.write(qint64(m_files.size()));
    for (const File &file : std::as_const(m_files)) {
        writer.write(file.entry.state);
        writer.writeText(file.name);
        writer.writeText(file.entry.name);
        writer.writeText(file.entry.program);
        writer.writeText(file.entry.tryExec);
    }
    replaceFile(m_file, writer.content()); // without a cache the next start takes longer
}

} // namespace platform
