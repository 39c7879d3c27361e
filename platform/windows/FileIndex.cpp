// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileIndex.h"

#include "platform/windows/Everything.h"

#include <array>

namespace platform::fileindex {

namespace {

// In UTF-16 units; a longer path comes back cut short.
constexpr unsigned pathBufferSize = 1024;

} // namespace

QString name()
{
    return QStringLiteral("Everything");
}

void setSearchText(const QString &text)
{
    Everything_SetSearchW(qUtf16Printable(text));
}

void setMaximum(unsigned count)
{
    Everything_SetMax(count);
}

void setRequestFlags(unsigned flags)
{
    Everything_SetRequestFlags(flags);
}

bool query()
{
    return Everything_QueryW(1) != 0;
}

unsigned lastError()
{
    return Everything_GetLastError();
}

unsigned resultCount()
{
    return Everything_GetNumResults();
}

QString resultPath(unsigned index)
{
    // One more than the library is told, so that there is an end whatever it writes.
    std::array<wchar_t, pathBufferSize + 1> buffer{};
    if (Everything_GetResultFullPathNameW(index, buffer.data(), pathBufferSize) == 0) {
        return {};
    }
    return QString::fromWCharArray(buffer.data());
}

void reset()
{
    Everything_Reset();
}

} // namespace platform::fileindex
