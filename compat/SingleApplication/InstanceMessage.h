// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <QString>

/// The size of the longest message that a primary instance takes, in bytes.
constexpr qsizetype maximumInstanceMessageSize = 4096;

/// Sends a message to the primary instance that listens under this QLocalServer name. Needs no
/// application object. Returns false if no process of this user listens, or if it does not take the
/// message in time.
bool sendInstanceMessage(const QString &serverName, const QByteArray &message,
                         const QDeadlineTimer &deadline);

/// Whether the process at the other end of an accepted connection belongs to this user.
bool isConnectionOfUser(qintptr socketDescriptor);
