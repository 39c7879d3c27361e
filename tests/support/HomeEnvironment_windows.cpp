// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/HomeEnvironment.h"

#include "support/TestRegistry.h"

#include <QDir>

#include <array>
#include <string>
#include <utility>

#include <windows.h>

namespace testhome {

namespace {

// Replaces the user's own key in this process; below the real one.
std::wstring registryKey()
{
    return L"Software\\VaskelTest\\" + std::to_wstring(GetCurrentProcessId());
}

// The shell's names for the folders.
const std::array<std::pair<const wchar_t *, const char16_t *>, 6> shellFolders{{
    {L"AppData", u"/data"},
    {L"Local AppData", u"/cache"},
    {L"Start Menu", u"/menu"},
    {L"Programs", u"/menu/programs"},
    {L"Personal", u"/documents"},
    {L"Desktop", u"/desktop"},
}};

QString homeFolder;

// The shell names only folders that exist.
void makeShellFolders()
{
    for (const auto &[name, folder] : shellFolders) {
        QDir().mkpath(homeFolder + QString::fromUtf16(folder));
    }
}

bool writeShellFolders(HKEY user, const QString &home)
{
    constexpr const wchar_t *key =
        L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";
    for (const auto &[name, folder] : shellFolders) {
        const std::wstring path =
            QDir::toNativeSeparators(home + QString::fromUtf16(folder)).toStdWString();
        if (RegSetKeyValueW(user, key, name, REG_SZ, path.c_str(),
                            DWORD((path.size() + 1) * sizeof(wchar_t)))
            != ERROR_SUCCESS) {
            return false;
        }
    }
    return true;
}

} // namespace

bool enterHome(const QString &folder)
{
    homeFolder = folder;
    makeShellFolders();
    const QByteArray home = QDir::toNativeSeparators(folder).toLocal8Bit();
    qputenv("TEMP", home + "\\tmp");
    qputenv("TMP", home + "\\tmp");
    qputenv("TZ", "UTC");
    qputenv("VASKEL_TEST_REGISTRY_KEY", QString::fromStdWString(registryKey()).toLocal8Bit());

    HKEY user = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, registryKey().c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                        nullptr, &user, nullptr)
        != ERROR_SUCCESS) {
        return false;
    }
    const bool isEntered = writeShellFolders(user, folder)
                           && RegOverridePredefKey(HKEY_CURRENT_USER, user) == ERROR_SUCCESS;
    RegCloseKey(user);
    return isEntered;
}

QString registryPath()
{
    return QStringLiteral("HKCU\\") + QString::fromStdWString(registryKey());
}

void resetOutside()
{
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Vaskel");
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Run");
    makeShellFolders();
}

void leaveHome()
{
    // The working folder of a process cannot be removed.
    QDir::setCurrent(QDir::rootPath());
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, registryKey().c_str());
}

} // namespace testhome
