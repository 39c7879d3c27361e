// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileIndex.h"

#include "platform/windows/Everything.h"

#include <array>

namespace platform::fileindex {

namespace {

constexpr unsigned requestFullPath = 4;

// In UTF-16 units; a longer path comes back cut short.
constexpr unsigned pathBufferSize = 1024;

QString resultPath(unsigned index)
{
    // One more than the library is told, so that there is an end whatever it writes.
    std::array<wchar_t, pathBufferSize + 1> buffer{};
    if (Everything_GetResultFullPathNameW(index, buffer.data(), pathBufferSize) == 0) {
        return {};
    }
    return QString::fromWCharArray(buffer.data());
}

QStringList resultPaths()
{
    const unsigned count = Everything_GetNumResults();
    QStringList paths;
    for (unsigned index = 0; index < count; ++index) {
        paths.append(resultPath(index));
    }
    return paths;
}

} // namespace

QString name()
{
    return QStringLiteral("Everything");
}

Answer search(const QString &text, unsigned limit)
{
    Everything_SetSearchW(qUtf16Printable(text));
    Everything_SetMax(limit);
    Everything_SetRequestFlags(requestFullPath);
    Answer answer;
    if (Everything_QueryW(1) != 0) {
        answer.paths = resultPaths();
    } else {
        answer.error = Everything_GetLastError();
    }
    Everything_Reset(); // the library keeps one query for the whole process
    return answer;
}

} // namespace platform::fileindex
