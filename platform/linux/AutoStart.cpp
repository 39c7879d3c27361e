// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/AutoStart.h"

#include "platform/FileReplacement.h"
#include "platform/RegularFile.h"
#include "platform/linux/GlibPointer.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

QString entryPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
           + "/autostart/Vaskel.desktop"_L1;
}

// Quotes one argument of an Exec line. A percent sign starts a field code; four characters need a
// backslash within quotes.
QString quoted(const QString &argument)
{
    QString text;
    for (const QChar character : argument) {
        if (u"\"`$\\"_s.contains(character)) {
            text += u'\\';
        }
        text += character;
        if (character == u'%') {
            text += character;
        }
    }
    return u'"' + text + u'"';
}

// The first word of an Exec line must not contain "%" or "=", but an argument may.
QString commandLine(const QString &program)
{
    const bool isPlain = !program.contains(u'%') && !program.contains(u'=');
    return isPlain ? quoted(program)
                   : "sh -c "_L1 + quoted(u"exec \"$0\""_s) + u' ' + quoted(program);
}

QByteArray entryFor(const QString &program)
{
    const KeyFilePointer entry(g_key_file_new());
    const auto set = [&entry](const char *key, const QString &value) {
        g_key_file_set_string(entry.get(), G_KEY_FILE_DESKTOP_GROUP, key,
                              value.toUtf8().constData());
    };
    set(G_KEY_FILE_DESKTOP_KEY_TYPE, u"Application"_s);
    set(G_KEY_FILE_DESKTOP_KEY_NAME, u"Vaskel"_s);
    set(G_KEY_FILE_DESKTOP_KEY_EXEC, commandLine(program));
    set(G_KEY_FILE_DESKTOP_KEY_ICON, u"vaskel"_s);
    set(G_KEY_FILE_DESKTOP_KEY_TERMINAL, u"false"_s);
    set("X-GNOME-Autostart-enabled", u"true"_s);
    gsize size = 0;
    const TextPointer data(g_key_file_to_data(entry.get(), &size, nullptr));
    return {data.get(), qsizetype(size)};
}

bool hasContent(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return openRegularFile(file) && file.size() == content.size() && file.readAll() == content;
}

void write(const QString &path, const QByteArray &content)
{
    // The target of a symbolic link is not ours.
    if (QFileInfo(path).isSymLink()) {
        QFile::remove(path);
    }
    replaceFile(path, content);
}

} // namespace

void applyAutoStart(bool enabled)
{
    const QString path = entryPath();
    if (!enabled) {
        QFile::remove(path);
        return;
    }
    const QString program = QCoreApplication::applicationFilePath();
    const QByteArray content = entryFor(program);
    if (!program.isEmpty() && !hasContent(path, content)) {
        write(path, content);
    }
}

} // namespace platform
