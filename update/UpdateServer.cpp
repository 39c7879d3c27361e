// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/UpdateServer.h"

QString updateServer()
{
    return QStringLiteral(UPDATE_SERVER);
}

QByteArrayList updateKeys()
{
    const QByteArray keys(UPDATE_KEYS);
    return keys.isEmpty() ? QByteArrayList() : keys.split(' ');
}
