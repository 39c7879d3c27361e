// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/AnonymousProxyFactory.h"

#include <QNetworkProxy>

QList<QNetworkProxy> AnonymousProxyFactory::queryProxy(const QNetworkProxyQuery &query)
{
    QList<QNetworkProxy> proxies = proxyForQuery(query);
    for (QNetworkProxy &proxy : proxies) {
        // Qt uses the account of the desktop's user only for a proxy without a user name.
        if (proxy.type() != QNetworkProxy::NoProxy && proxy.user().isEmpty()) {
            proxy.setUser(QStringLiteral("anonymous"));
        }
    }
    return proxies;
}
