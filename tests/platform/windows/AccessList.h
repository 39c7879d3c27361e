// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDir>
#include <QString>
#include <QTest>

#include <windows.h>

#include <aclapi.h>
#include <sddl.h>

/// The access list in the security descriptor definition language (SDDL).
inline QString accessList(const QString &path)
{
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    LPWSTR text = nullptr;
    GetNamedSecurityInfoW(qUtf16Printable(QDir::toNativeSeparators(path)), SE_FILE_OBJECT,
                          DACL_SECURITY_INFORMATION, nullptr, nullptr, nullptr, nullptr,
                          &descriptor);
    ConvertSecurityDescriptorToStringSecurityDescriptorW(descriptor, SDDL_REVISION_1,
                                                         DACL_SECURITY_INFORMATION, &text, nullptr);
    QString list = QString::fromWCharArray(text);
    LocalFree(text);
    LocalFree(descriptor);
    return list;
}

/// Grants full access to everybody, also to what will be created in the folder.
inline void openToEverybody(const QString &path)
{
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    QVERIFY(ConvertStringSecurityDescriptorToSecurityDescriptorW(
        L"D:P(A;OICI;FA;;;WD)", SDDL_REVISION_1, &descriptor, nullptr));
    QVERIFY(SetFileSecurityW(qUtf16Printable(QDir::toNativeSeparators(path)),
                             DACL_SECURITY_INFORMATION, descriptor));
    LocalFree(descriptor);
}
