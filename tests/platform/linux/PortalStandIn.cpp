// SPDX-License-Identifier: GPL-3.0-or-later
#include "PortalStandIn.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDebug>
#include <QJsonDocument>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString service = u"org.freedesktop.portal.Desktop"_s;
constexpr int patience = 60'000;

uint ownerOfTheName()
{
    return QDBusConnection::sessionBus().interface()->servicePid(service);
}

} // namespace

bool PortalStandIn::start(const QJsonObject &parameters)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(SYSTEM_PYTHON),
                    {u"-B"_s, u"-m"_s, u"dbusmock"_s, u"--session"_s, u"--template"_s,
                     QStringLiteral(PORTAL_STAND_IN), u"--parameters"_s,
                     QString::fromUtf8(QJsonDocument(parameters).toJson())});
    return m_process.waitForStarted(patience)
           && QTest::qWaitFor([this] { return ownerOfTheName() == m_process.processId(); },
                              patience);
}

void PortalStandIn::end()
{
    m_process.terminate();
    m_process.waitForFinished(patience);
}

QVariantList PortalStandIn::control(const QString &method, const QVariantList &arguments) const
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        service, u"/org/freedesktop/portal/desktop"_s, u"local.vaskel.Portal"_s, method);
    call.setArguments(arguments);
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call);
    if (reply.type() == QDBusMessage::ErrorMessage) {
        qWarning() << "The stand-in fails:" << reply.errorMessage();
    }
    return reply.arguments();
}

QStringList PortalStandIn::calls() const
{
    return control(u"Calls"_s).value(0).toStringList();
}
