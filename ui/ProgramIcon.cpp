// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ProgramIcon.h"

#include <QSize>
#include <QString>

using namespace Qt::StringLiterals;

QIcon programIcon()
{
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64, 128}) {
        // A file whose size is told is not opened before it is needed.
        icon.addFile(u":/assets/icons/%1.png"_s.arg(size), QSize(size, size));
    }
    return icon;
}
