// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <memory>

/// A pair of Ed25519 keys that nobody else has.
class TestKey
{
public:
    TestKey();

    QByteArray publicKey() const;                  // 64 hexadecimal digits
    QByteArray sign(const QByteArray &text) const; // 128 hexadecimal digits

private:
    std::shared_ptr<void> m_pair;
};

/// This system by the update server's names.
QString updatePlatform();
QString updateArchitecture();
/// The path of a check on this system.
QString updateCheckPath();

/// An update as its maintainer signs it.
struct Release
{
    QByteArray file;
    QString url;
    QString version = QStringLiteral("2.0.0");
    QString changelog = QStringLiteral("- one \u00e9\n- \"two\"");
    QString platform = updatePlatform();
    QString architecture = updateArchitecture();

    /// The answer of the update server.
    QJsonObject signedBy(const TestKey &key) const;
};

/// The text of an object.
QByteArray jsonOf(const QJsonObject &object);
