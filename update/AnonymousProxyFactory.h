// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QNetworkProxyFactory>

/// The proxies of the desktop, without the user's identity. On Windows, Qt would prove that to each
/// proxy that asks for NTLM or Negotiate, and the network may name the proxy. A proxy with a user
/// name of its own is used with that name.
class AnonymousProxyFactory : public QNetworkProxyFactory
{
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query) override;
};
