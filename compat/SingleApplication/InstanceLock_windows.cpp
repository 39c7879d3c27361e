// SPDX-License-Identifier: GPL-3.0-or-later
#include "InstanceLock.h"

#include <QCryptographicHash>
#include <QDir>
#include <QStandardPaths>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace {

// Lies in the user's profile, to which no other user has access.
QString privateFolder()
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    QDir().mkpath(folder);
    return folder;
}

// All users' servers share one name space, and the folder tells the users apart.
QString uniqueName(const QString &folder, const QString &userData)
{
    const QByteArray identity = folder.toUtf8() + '\0' + userData.toUtf8();
    const QByteArray hash = QCryptographicHash::hash(identity, QCryptographicHash::Sha256).toHex();
    return "SingleApplication-"_L1 + QLatin1StringView(hash.first(16));
}

} // namespace

InstanceLock::InstanceLock(const QString &userData)
{
    const QString folder = privateFolder();
    m_serverName = uniqueName(folder, userData);
    m_lockPath = QDir::toNativeSeparators(folder + u'/' + m_serverName + ".lock"_L1);
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
    // Shared with nobody, not inherited, and gone with the last handle.
    const HANDLE file =
        CreateFileW(reinterpret_cast<const wchar_t *>(m_lockPath.utf16()), GENERIC_WRITE, 0,
                    nullptr, OPEN_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return GetLastError() == ERROR_SHARING_VIOLATION ? State::HeldElsewhere
                                                         : State::Unavailable;
    }
    m_handle = reinterpret_cast<std::intptr_t>(file);
    return State::Held;
}
