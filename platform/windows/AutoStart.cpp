// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/AutoStart.h"

#include <QCoreApplication>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace platform {

void applyAutoStart(bool enabled)
{
    QSettings run(uR"(HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Run)"_s,
                  QSettings::NativeFormat);
    if (enabled) {
        run.setValue(u"Vaskel"_s, QCoreApplication::applicationFilePath().replace(u'/', u'\\'));
    } else {
        run.remove(u"Vaskel"_s);
    }
}

} // namespace platform
