// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowsUser.h"

#include <QByteArray>

#include <sddl.h>

namespace {

// Empty if the system does not tell.
QString userOfToken(HANDLE token)
{
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
    return identity;
}

QString userOfProcess(HANDLE process)
{
    HANDLE token = nullptr;
    if (!OpenProcessToken(process, TOKEN_QUERY, &token)) {
        return {};
    }
    QString identity = userOfToken(token);
    CloseHandle(token);
    return identity;
}

} // namespace

QString windowsUser()
{
    return userOfProcess(GetCurrentProcess());
}

bool isProcessOfUser(DWORD id)
{
    const HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id);
    if (!process) {
        return false;
    }
    const QString identity = userOfProcess(process);
    CloseHandle(process);
    return !identity.isEmpty() && identity == windowsUser();
}
