// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Link.h"

#include <QStringView>

namespace platform {

bool isLink(const QString &path)
{
    const QString suffix = linkSuffix();
    if (path.size() <= suffix.size() || path.at(path.size() - suffix.size() - 1) != u'.') {
        return false;
    }
    // Nearly all suffixes are exactly equal, and that comparison is faster.
    const QStringView last = QStringView(path).last(suffix.size());
    return last == suffix || last.compare(suffix, Qt::CaseInsensitive) == 0;
}

} // namespace platform
