// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

namespace platform {

/// QFile::encodeName() and QFile::decodeName(), which take ten times as long for an ASCII name.
/// Nearly all names are.
QByteArray encodedName(const QString &name);
QString decodedName(QByteArrayView name);

} // namespace platform
