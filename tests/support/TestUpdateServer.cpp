// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/UpdateServer.h"

using namespace Qt::StringLiterals;

// Replaces the program's own server: returns the address in a variable that the test sets, or a
// local port without a program; "none" stands for no server. Never reaches another machine.
QString updateServer()
{
    QString address = qEnvironmentVariable("VASKEL_TEST_UPDATE_SERVER", u"http://127.0.0.1:1"_s);
    if (address == "none"_L1) {
        return {};
    }
    if (!address.startsWith("http://127.0.0.1:"_L1)) {
        qFatal("the test would ask another machine for updates");
    }
    return address;
}

// The keys in a variable that the test sets, separated by blanks.
QByteArrayList updateKeys()
{
    const QByteArray keys = qgetenv("VASKEL_TEST_UPDATE_KEYS");
    return keys.isEmpty() ? QByteArrayList() : keys.split(' ');
}
