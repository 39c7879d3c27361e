// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QNetworkProxyFactory>

/// The desktop's proxies, without the user's identity. On Windows, Qt would log on with the user's
/// account at every proxy that asks for NTLM or Negotiate, and an attacker in the network can
/// announce such a proxy. A proxy with a user name of its own is used with that name.
class AnonymousProxyFactory : public QNetworkProxyFactory
{
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query) override;
};
