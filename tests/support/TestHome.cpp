// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestHome.h"

#include "support/HomeEnvironment.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <QStringList>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

const QStringList standardFolders = {u"config"_s,  u"data"_s,   u"cache"_s,
                                     u"state"_s,   u"system"_s, u"system/applications"_s,
                                     u"runtime"_s, u"tmp"_s};

void makeAccessible(const QString &folder)
{
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void makeFolders(const QString &home)
{
    for (const QString &folder : standardFolders) {
        QDir().mkpath(home + u'/' + folder);
        makeAccessible(home + u'/' + folder);
    }
}

// Removing a folder is slow on a busy disk and would happen eight times per case, so the standard
// folders are only emptied.
void removeEntries(const QDir &home, const QString &folder)
{
    const QFileInfoList entries =
        QDir(home.filePath(folder))
            .entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo &entry : entries) {
        const QString relativePath = home.relativeFilePath(entry.filePath());
        if (!entry.isDir() || entry.isSymLink()) {
            QFile::remove(entry.filePath());
        } else if (standardFolders.contains(relativePath)) {
            makeAccessible(entry.filePath());
            removeEntries(home, relativePath);
        } else {
            QDir(entry.filePath()).removeRecursively();
        }
    }
}

class Home
{
public:
    Home()
    {
        if (!m_dir.isValid()) {
            qFatal("no temporary folder for the test's home");
        }
        makeFolders(m_dir.path());
        if (!testhome::enterHome(m_dir.path())) {
            qFatal("the system does not let the test have a home of its own");
        }
        for (const auto location :
             {QStandardPaths::AppDataLocation, QStandardPaths::GenericConfigLocation,
              QStandardPaths::ApplicationsLocation, QStandardPaths::TempLocation}) {
            if (!QStandardPaths::writableLocation(location).startsWith(m_dir.path())) {
                qFatal("the test would write outside its own home");
            }
        }
    }

    ~Home() { testhome::leaveHome(); }
    Q_DISABLE_COPY_MOVE(Home)

    QString path() const { return m_dir.path(); }

private:
    QTemporaryDir m_dir;
};

const Home home;

} // namespace

namespace testhome {

QString path()
{
    return home.path();
}

QString appDataPath()
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QDir().mkpath(folder);
    return folder;
}

void reset()
{
    // QSettings caches the files that it has read, and considers one of the same size and time
    // unchanged. So write pending changes before the files are removed, and notice that by another
    // sync().
    QSettings store(u"Vaskel"_s, u"Vaskel"_s);
    store.sync();
    removeEntries(QDir(path()), QString());
    resetOutside();
    store.sync();
    makeFolders(path());
}

QString writeFile(const QString &relativePath, const QByteArray &content)
{
    QString filePath = path() + u'/' + relativePath;
    QDir().mkpath(QFileInfo(filePath).path());
    QFile file(filePath);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("cannot write %s", qUtf8Printable(filePath));
    }
    return filePath;
}

} // namespace testhome
