// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/UpdateServer.h"

QString updateServer()
{
    return QStringLiteral(VASKEL_UPDATE_SERVER);
}
