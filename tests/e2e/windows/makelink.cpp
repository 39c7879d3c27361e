// SPDX-License-Identifier: GPL-3.0-or-later
//
// usage: makelink NAME TARGET ARGUMENTS
//
// Creates a link in the start menu of all users.

#include "platform/windows/ShellLink.h"

#include <QCoreApplication>
#include <QDir>
#include <QStringList>

#include <windows.h>

#include <shlobj.h>

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    wchar_t folder[MAX_PATH];
    if (SHGetFolderPathW(nullptr, CSIDL_COMMON_PROGRAMS | CSIDL_FLAG_CREATE, nullptr, 0, folder)
        < 0) {
        return 1;
    }
    const QString path = QDir::fromNativeSeparators(QString::fromWCharArray(folder)) + u'/'
                         + arguments.value(1) + QStringLiteral(".lnk");
    return ShellLink{arguments.value(2), arguments.value(3), {}, {}}.write(path) ? 0 : 1;
}
