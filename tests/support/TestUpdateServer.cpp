// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/UpdateServer.h"

using namespace Qt::StringLiterals;

// In place of the address that the program is built with: what a test starts is told by a variable
// where its server is, and otherwise asks a port that nobody listens on. It never asks another
// machine, whatever the build is configured for.
QString updateServer()
{
    QString address = qEnvironmentVariable("VASKEL_TEST_UPDATE_SERVER", u"http://127.0.0.1:1"_s);
    if (!address.startsWith("http://127.0.0.1:"_L1)) {
        qFatal("the test would ask another machine for updates");
    }
    return address;
}
