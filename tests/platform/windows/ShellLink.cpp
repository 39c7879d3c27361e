// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/windows/ShellLink.h"

#include <QDir>
#include <QFileInfo>

#include <windows.h>

#include <shlobj.h>

namespace {

template <typename Interface> class ComPointer
{
public:
    ComPointer() = default;
    ~ComPointer()
    {
        if (m_interface) {
            m_interface->Release();
        }
    }
    Q_DISABLE_COPY_MOVE(ComPointer)

    void **address() { return reinterpret_cast<void **>(&m_interface); }
    Interface *operator->() const { return m_interface; }

private:
    Interface *m_interface = nullptr;
};

bool writeLink(const ShellLink &link, const QString &filePath)
{
    const auto native = [](const QString &path) {
        return QDir::toNativeSeparators(path);
    };
    ComPointer<IShellLinkW> shellLink;
    ComPointer<IPersistFile> file;
    if (CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                         shellLink.address())
            != S_OK
        || shellLink->QueryInterface(IID_IPersistFile, file.address()) != S_OK) {
        return false;
    }
    shellLink->SetPath(qUtf16Printable(native(link.target)));
    shellLink->SetArguments(qUtf16Printable(link.arguments));
    if (!link.folder.isEmpty()) {
        shellLink->SetWorkingDirectory(qUtf16Printable(native(link.folder)));
    }
    if (!link.iconFile.isEmpty()) {
        shellLink->SetIconLocation(qUtf16Printable(native(link.iconFile)), 0);
    }
    return file->Save(qUtf16Printable(native(filePath)), true) == S_OK;
}

} // namespace

bool ShellLink::write(const QString &filePath) const
{
    QDir().mkpath(QFileInfo(filePath).path());
    const HRESULT started = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const bool isWritten = writeLink(*this, filePath);
    if (SUCCEEDED(started)) {
        CoUninitialize();
    }
    return isWritten;
}
