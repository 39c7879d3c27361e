// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/FakePlatform.h"

#include "platform/AutoStart.h"
#include "platform/FileIcon.h"
#include "platform/Link.h"
#include "platform/PrivateFolder.h"
#include "platform/ProgramEnvironment.h"
#include "platform/StartMenu.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

FakePlatform &fakePlatform()
{
    static FakePlatform state;
    return state;
}

namespace platform {

void applyAutoStart(bool enabled)
{
    fakePlatform().autoStartCalls.append(enabled);
    if (fakePlatform().duringAutoStartCall) {
        fakePlatform().duringAutoStartCall();
    }
}

ProgramInfo builtinProgram(BuiltinProgram program)
{
    const ProgramInfo unknown{u"program%1"_s.arg(int(program)), {}, {}};
    return fakePlatform().builtinPrograms.value(int(program), unknown);
}

QIcon linkIcon(const QString &filePath)
{
    return fakePlatform().linkIcons.value(filePath);
}

QPixmap shellPixmap(const QString &path)
{
    fakePlatform().shellPixmapCalls.append(path);
    return fakePlatform().shellPixmaps.value(path);
}

QString linkSuffix()
{
    return fakePlatform().linkSuffix;
}

bool openLink(const QString &filePath)
{
    fakePlatform().openedLinks.append(filePath);
    return fakePlatform().openLinkResult;
}

bool makePrivateFolder(const QString &path)
{
    return !fakePlatform().foreignFolders.contains(path) && QDir().mkpath(path);
}

QProcessEnvironment programEnvironment()
{
    return fakePlatform().programEnvironment;
}

QStringList startMenuRoots()
{
    return fakePlatform().startMenuRoots;
}

QString startMenuPattern()
{
    return fakePlatform().startMenuPattern;
}

QHash<QString, QString> startMenuNames(const QString &root, const QStringList &filePaths)
{
    QHash<QString, QString> names;
    for (const QString &filePath : filePaths) {
        fakePlatform().startMenuNameCalls.append({root, filePath});
        if (!fakePlatform().unlistedFiles.contains(filePath)) {
            names.insert(filePath, fakePlatform().startMenuNames.value(
                                       filePath, QFileInfo(filePath).completeBaseName()));
        }
    }
    return names;
}

} // namespace platform
