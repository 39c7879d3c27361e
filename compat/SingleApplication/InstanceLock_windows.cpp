// SPDX-License-Identifier: GPL-3.0-or-later
#include "InstanceLock.h"

#include "WindowsUser.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QDir>

#include <windows.h>

#include <shlobj.h>

using namespace Qt::StringLiterals;

namespace {

// Pipe names are global to the machine, so two sessions of the user share an instance.
QString pipeName(const QString &userData)
{
    const QByteArray identity = windowsUser().toUtf8() + '\0' + userData.toUtf8();
    const QByteArray hash = QCryptographicHash::hash(identity, QCryptographicHash::Sha256).toHex();
    return "SingleApplication-"_L1 + QLatin1StringView(hash.first(16));
}

// Not QStandardPaths, which needs an application object to know the name of the program.
QString roamingFolder()
{
    PWSTR path = nullptr;
    QString folder;
    if (SUCCEEDED(SHGetKnownFolderPath(FOLDERID_RoamingAppData, 0, nullptr, &path))) {
        folder = QString::fromWCharArray(path);
    }
    CoTaskMemFree(path);
    return folder;
}

} // namespace

// The lock is a file in the user's own folder, since any user can take the name of a pipe. The
// folder does not depend on the name of the executable.
InstanceLock::InstanceLock(const QString &userData)
    : m_serverName(pipeName(userData))
{
    if (const QString roaming = roamingFolder(); !roaming.isEmpty()) {
        const QString folder = roaming + u'/' + userData;
        QDir().mkpath(folder);
        m_lockPath = QDir::toNativeSeparators(folder + "/instance.lock"_L1);
    }
}

InstanceLock::~InstanceLock()
{
    if (m_handle != -1) {
        CloseHandle(reinterpret_cast<HANDLE>(m_handle));
    }
}

InstanceLock::State InstanceLock::tryLock()
{
    if (m_handle != -1) {
        return State::Held;
    }
    // Other programs may read the file, such as for a backup, so the lock is on its first byte.
    const HANDLE file = CreateFileW(qUtf16Printable(m_lockPath), GENERIC_READ | GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return State::Unavailable;
    }
    OVERLAPPED firstByte{};
    if (!LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0,
                    &firstByte)) {
        const DWORD error = GetLastError();
        CloseHandle(file);
        return error == ERROR_LOCK_VIOLATION || error == ERROR_IO_PENDING ? State::HeldElsewhere
                                                                          : State::Unavailable;
    }
    m_handle = reinterpret_cast<std::intptr_t>(file);
    return State::Held;
}

// Not by QLocalSocket: the server, which may be anybody's, must not act in the name of this user.
InstanceLock::Notice InstanceLock::notifyHolder(const QDeadlineTimer &) const
{
    AllowSetForegroundWindow(ASFW_ANY);
    const QString name = uR"(\\.\pipe\)"_s + m_serverName;
    const HANDLE pipe = CreateFileW(qUtf16Printable(name), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                    SECURITY_SQOS_PRESENT | SECURITY_ANONYMOUS, nullptr);
    if (pipe == INVALID_HANDLE_VALUE) {
        // Another user's pipe may refuse everybody else.
        return GetLastError() == ERROR_ACCESS_DENIED ? Notice::Stolen : Notice::NotListening;
    }
    ULONG process = 0;
    const bool isOwn = GetNamedPipeServerProcessId(pipe, &process) && isProcessOfUser(process);
    CloseHandle(pipe);
    return isOwn ? Notice::Given : Notice::Stolen;
}
