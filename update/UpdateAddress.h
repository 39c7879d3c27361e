// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QUrl>

class QNetworkReply;

// Which addresses an update may come from. updateKeys() and updateServer() decide.

/// Whether the updater may contact an address. Without a key: http and https. With a key: https, so
/// that nobody on the way can read or change the transfer; http only for addresses of this machine
/// if the update server is on it, too.
bool mayConnectTo(const QUrl &url);

/// The same for another server and key.
bool mayConnectTo(const QUrl &url, const QUrl &server, bool hasKey);

/// The error message for an address that is not contacted.
QString refusal(const QUrl &url);

bool isRedirect(const QNetworkReply &reply);

/// Where a redirect leads; empty for one without an address.
QUrl redirectTarget(const QNetworkReply &reply);

/// Why the redirect must not be followed; empty if it may be.
QString redirectError(const QUrl &from, const QUrl &to, int redirectsLeft);
