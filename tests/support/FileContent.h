// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QFile>
#include <QTest>

#include <optional>

namespace filecontent {

/// The bytes of a file; none if it cannot be read, which equals no content, not even an empty one.
inline std::optional<QByteArray> contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? std::optional(file.readAll()) : std::nullopt;
}

} // namespace filecontent

/// Lets QCOMPARE show the content of a file, or that it cannot be read.
template <> inline char *QTest::toString(const std::optional<QByteArray> &content)
{
    return content ? QTest::toString(*content) : qstrdup("cannot be read");
}
