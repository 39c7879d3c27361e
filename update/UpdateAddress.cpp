// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/UpdateAddress.h"

#include "update/UpdateServer.h"

#include <QHostAddress>
#include <QList>
#include <QNetworkReply>

using namespace Qt::StringLiterals;

namespace {

bool isThisMachine(const QUrl &url)
{
    return url.host() == "localhost"_L1 || QHostAddress(url.host()).isLoopback();
}

} // namespace

bool mayConnectTo(const QUrl &url)
{
    return mayConnectTo(url, QUrl(updateServer()), !updateKeys().isEmpty());
}

bool mayConnectTo(const QUrl &url, const QUrl &server, bool hasKey)
{
    // Otherwise an answer from elsewhere could reach the services of this machine.
    const bool isLocal = isThisMachine(url) && isThisMachine(server);
    return url.isValid()
           && (url.scheme() == "https"_L1 || (url.scheme() == "http"_L1 && (!hasKey || isLocal)));
}

QString refusal(const QUrl &url)
{
    return u"Refused to connect to \"%1\""_s.arg(url.toDisplayString());
}

bool isRedirect(const QNetworkReply &reply)
{
    return QList<int>{301, 302, 303, 305, 307, 308}.contains(
        reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt());
}

QUrl redirectTarget(const QNetworkReply &reply)
{
    const QUrl target = reply.attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
    return target.isEmpty() ? target : reply.url().resolved(target);
}

QString redirectError(const QUrl &from, const QUrl &to, int redirectsLeft)
{
    if (redirectsLeft == 0) {
        return u"Too many redirects"_s;
    }
    const bool leavesHttps = from.scheme() == "https"_L1 && to.scheme() != "https"_L1;
    return leavesHttps || !mayConnectTo(to) ? refusal(to) : QString();
}
