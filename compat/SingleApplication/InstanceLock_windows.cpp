// SPDX-License-Identifier: GPL-3.0-or-later
#include "InstanceLock.h"

#include <QByteArray>
#include <QCryptographicHash>

#include <windows.h>

#include <sddl.h>

using namespace Qt::StringLiterals;

namespace {

constexpr DWORD pipeBufferSize = 1; // no data is sent

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

// The lock is a named pipe without clients: only one process can create its first instance, and a
// failed attempt leaves no trace.
InstanceLock::InstanceLock(const QString &userData)
    : m_serverName(pipeName(userData))
{
    m_lockPath = uR"(\\.\pipe\)"_s + m_serverName + "-lock"_L1;
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
    const HANDLE pipe = CreateNamedPipeW(qUtf16Printable(m_lockPath),
                                         PIPE_ACCESS_INBOUND | FILE_FLAG_FIRST_PIPE_INSTANCE,
                                         PIPE_TYPE_BYTE | PIPE_WAIT | PIPE_REJECT_REMOTE_CLIENTS, 1,
                                         pipeBufferSize, pipeBufferSize, 0, nullptr);
    if (pipe == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        return error == ERROR_ACCESS_DENIED || error == ERROR_PIPE_BUSY ? State::HeldElsewhere
                                                                        : State::Unavailable;
    }
    m_handle = reinterpret_cast<std::intptr_t>(pipe);
    return State::Held;
}

void InstanceLock::allowActivation()
{
    AllowSetForegroundWindow(ASFW_ANY);
}
