// SPDX-License-Identifier: GPL-3.0-or-later
#include "InstanceLock.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QDir>
#include <QStandardPaths>

#include <windows.h>

#include <sddl.h>

using namespace Qt::StringLiterals;

namespace {

// Pipe names are global to the machine, so two sessions of the user share an instance.
QString userIdentity()
{
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) {
        return {};
    }
    DWORD size = 0;
    GetTokenInformation(token, TokenUser, nullptr, 0, &size);
    QByteArray buffer(int(size), '\0');
    QString identity;
    LPWSTR name = nullptr;
    if (GetTokenInformation(token, TokenUser, buffer.data(), size, &size)
        && ConvertSidToStringSidW(reinterpret_cast<TOKEN_USER *>(buffer.data())->User.Sid, &name)) {
        identity = QString::fromWCharArray(name);
        LocalFree(name);
    }
    CloseHandle(token);
    return identity;
}

QString pipeName(const QString &userData)
{
    const QByteArray identity = userIdentity().toUtf8() + '\0' + userData.toUtf8();
    const QByteArray hash = QCryptographicHash::hash(identity, QCryptographicHash::Sha256).toHex();
    return "SingleApplication-"_L1 + QLatin1StringView(hash.first(16));
}

} // namespace

// The name of a pipe can be taken by any user, a file in the user's own folder cannot.
InstanceLock::InstanceLock(const QString &userData)
    : m_serverName(pipeName(userData))
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (!folder.isEmpty()) {
        QDir().mkpath(folder);
        m_lockPath = QDir::toNativeSeparators(folder + u'/' + m_serverName + ".lock"_L1);
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

void InstanceLock::allowActivation()
{
    AllowSetForegroundWindow(ASFW_ANY);
}
