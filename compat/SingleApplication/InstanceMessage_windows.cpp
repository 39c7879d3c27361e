// SPDX-License-Identifier: GPL-3.0-or-later
#include "InstanceMessage.h"

#include "WindowsUser.h"

#include <QScopeGuard>

#include <algorithm>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace {

DWORD remaining(const QDeadlineTimer &deadline)
{
    return DWORD(std::max(deadline.remainingTime(), qint64(1)));
}

HANDLE connectTo(const QString &pipe, const QDeadlineTimer &deadline)
{
    while (true) {
        // Whoever owns the pipe may learn who this user is, but not act as this user.
        const HANDLE connection = CreateFileW(
            qUtf16Printable(pipe), GENERIC_WRITE | FILE_READ_ATTRIBUTES, 0, nullptr, OPEN_EXISTING,
            FILE_FLAG_OVERLAPPED | SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION, nullptr);
        if (connection != INVALID_HANDLE_VALUE || GetLastError() != ERROR_PIPE_BUSY
            || !WaitNamedPipeW(qUtf16Printable(pipe), remaining(deadline))) {
            return connection;
        }
    }
}

// A pipe without a buffer takes the message when the primary instance reads it.
bool write(HANDLE connection, const QByteArray &message, const QDeadlineTimer &deadline)
{
    OVERLAPPED operation{};
    operation.hEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    const auto closing = qScopeGuard([&operation] { CloseHandle(operation.hEvent); });
    DWORD written = 0;
    if (!WriteFile(connection, message.constData(), DWORD(message.size()), nullptr, &operation)
        && GetLastError() != ERROR_IO_PENDING) {
        return false;
    }
    if (WaitForSingleObject(operation.hEvent, remaining(deadline)) != WAIT_OBJECT_0) {
        CancelIoEx(connection, &operation);
    }
    return GetOverlappedResult(connection, &operation, &written, TRUE)
           && written == DWORD(message.size());
}

} // namespace

bool sendInstanceMessage(const QString &serverName, const QByteArray &message,
                         const QDeadlineTimer &deadline)
{
    const HANDLE connection = connectTo(uR"(\\.\pipe\)"_s + serverName, deadline);
    if (connection == INVALID_HANDLE_VALUE) {
        return false;
    }
    const auto closing = qScopeGuard([connection] { CloseHandle(connection); });
    ULONG server = 0;
    if (!GetNamedPipeServerProcessId(connection, &server) || !isProcessOfUser(server)) {
        return false; // another user took the name of the pipe
    }
    AllowSetForegroundWindow(ASFW_ANY); // for the window that the message may show
    return write(connection, message, deadline);
}

// The access list of the pipe admits this user alone.
bool isConnectionOfUser(qintptr)
{
    return true;
}
