// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/CommandFolders.h"

#include "commands/CommandFile.h"
#include "commands/ScriptPlugin.h"
#include "core/PluginManager.h"
#include "platform/TrustedFolder.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QStandardPaths>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype maximumFolders = 1000; // in one place

/// Registers the plugins of the folders, and collects what is wrong.
class Registration
{
public:
    explicit Registration(PluginManager &manager)
        : m_manager(manager)
        , m_builtin(manager.commands())
    {
    }

    void addPlace(const QString &place);
    QStringList errors() const { return m_errors; }

private:
    void addFolder(const QFileInfo &folder, const QString &root);
    void addCommand(const CommandFile &file, const QString &root);
    void addError(const QString &line);

    PluginManager &m_manager;
    const QStringList m_builtin;
    QHash<QString, QString> m_roots; // by command
    QStringList m_errors;
};

void Registration::addPlace(const QString &place)
{
    const QString root = QFileInfo(place).canonicalFilePath();
    if (root.isEmpty()) {
        return; // most users have none
    }
    const QFileInfoList folders =
        QDir(root).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo &folder : folders.first(qMin(folders.size(), maximumFolders))) {
        addFolder(folder, root);
    }
    if (folders.size() > maximumFolders) {
        addError(QDir::toNativeSeparators(place)
                 + u": expected at most %1 folders"_s.arg(maximumFolders));
    }
}

void Registration::addFolder(const QFileInfo &folder, const QString &root)
{
    // A symbolic link could lead to files that somebody else can write.
    const QString path = folder.filePath();
    if (QFileInfo(folder.canonicalFilePath()).path() != root) {
        addError(QDir::toNativeSeparators(path)
                 + ": expected a folder, not a link to elsewhere"_L1);
        return;
    }
    if (!platform::isTrustedFolder(path)) {
        addError(QDir::toNativeSeparators(path)
                 + ": expected a folder that no other user can change"_L1);
        return;
    }
    QString error;
    if (const std::optional<CommandFile> file = CommandFile::load(path, error)) {
        addCommand(*file, root);
    } else {
        addError(error);
    }
}

void Registration::addCommand(const CommandFile &file, const QString &root)
{
    if (const QString error = file.errorIfIn(m_builtin); !error.isEmpty()) {
        addError(error);
    } else if (!m_roots.contains(file.command)) {
        m_roots.insert(file.command, root);
        m_manager.registerPlugin(new ScriptPlugin(file, m_manager.rowsChanged(), &m_manager));
    } else if (m_roots.value(file.command) == root) {
        addError(QDir::toNativeSeparators(CommandFile::pathIn(file.folder))
                 + u": command: expected a command that no other folder has, not \"%1\""_s.arg(
                     file.command));
    } // else the user replaces a command of the system
}

void Registration::addError(const QString &line)
{
    qWarning().noquote() << line;
    m_errors.append(line);
}

} // namespace

QStringList commandfolders::registerAll(PluginManager &manager)
{
    Registration registration(manager);
    registration.addPlace(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
                          + "/commands"_L1);
    const QString user = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const QStringList places =
        QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    for (const QString &place : places) {
        if (place != user) {
            registration.addPlace(place + "/vaskel/commands"_L1);
        }
    }
    return registration.errors();
}
