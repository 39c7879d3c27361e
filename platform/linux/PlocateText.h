// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace platform {

/// The arguments of plocate for a search; FileIndex.h has the syntax of its text. Whatever the
/// text, none of its words is an option.
QStringList plocateArguments(const QString &text, unsigned limit);

/// The paths in plocate's output, in which a null character ends each. A path that is not valid
/// Unicode is empty; one without its end is left out.
QStringList plocatePaths(const QByteArray &output);

} // namespace platform
