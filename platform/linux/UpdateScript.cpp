// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/UpdateScript.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// The new file is written beside the program, so that mv replaces it atomically. "set -C" makes the
// redirection fail if the name exists, even as a symbolic link. $0 is the script's path. The umask
// changes in a subshell only, and exec replaces the shell: a background job would ignore SIGINT and
// SIGQUIT. The shell reads all of the braces before it deletes the script.
constexpr const char16_t *script = uR"(#!/bin/sh
download=%1
program=%2
new=$program.new.$$

fail() {
    echo 'Failed to copy update file' >&2
    if command -v notify-send >/dev/null; then
        notify-send Vaskel 'Failed to copy update file'
    fi
    exit 1
}

replace() {
    cat "$download" >"$new" || return 1
    chown %3 "$new" 2>/dev/null
    chmod %4 "$new" && mv -f "$new" "$program"
}

for second in 1 2; do
    if kill -0 %5 2>/dev/null; then
        sleep 1
    fi
done

(umask 077; set -C; true >"$new") || fail
if ! replace; then
    rm -f "$new"
    fail
fi
rm -f "$download"
{
    rm -f "$0"
    exec "$program" </dev/null
}
)";

// Within single quotes only the single quote itself is special.
QString quoted(QString path)
{
    return u'\'' + path.replace(u'\'', uR"('\'')"_s) + u'\'';
}

} // namespace

QString updateScript(const QString &downloadPath, const QString &programPath)
{
    struct stat program = {};
    program.st_mode = S_IRWXU; // in case the program's file is missing
    ::stat(QFile::encodeName(programPath).constData(), &program);
    const QString owner = u"%1:%2"_s.arg(program.st_uid).arg(program.st_gid);
    const QString mode = QString::number(program.st_mode & 07777, 8);
    return QString::fromUtf16(script).arg(quoted(downloadPath), quoted(programPath), owner, mode,
                                          QString::number(QCoreApplication::applicationPid()));
}

void startUpdateScript(const QString &scriptPath)
{
    QProcess shell;
    shell.setProgram(u"/bin/sh"_s);
    shell.setArguments({scriptPath});
    shell.startDetached();
}

} // namespace platform
