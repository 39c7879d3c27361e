// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileIndex.h"

#include "platform/windows/Everything.h"

#include <array>

namespace platform::fileindex {

namespace {

constexpr unsigned requestFullPath = 4; // EVERYTHING_REQUEST_FULL_PATH_AND_FILE_NAME

// In UTF-16 units. The library truncates longer paths.
constexpr unsigned pathBufferSize = 1024;

QString resultPath(unsigned index)
{
    // The library is told one unit less, so that the buffer always ends with a null character.
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

// Everything answers nothing until its index is complete, and does not tell when it is.
void watch(QObject *, const std::function<void()> &) {}

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
    Everything_Reset(); // the library keeps one query per process
    return answer;
}

} // namespace platform::fileindex
