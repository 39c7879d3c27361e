// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayList>
#include <QString>

// Both are set when the program is built. Tests link bodies that return what the test chooses.

/// The address of the update server, without a trailing slash; empty if there is none to ask.
QString updateServer();

/// The Ed25519 public keys by which the server's answers are signed, each as 64 hexadecimal digits;
/// empty if answers need no signature.
QByteArrayList updateKeys();
