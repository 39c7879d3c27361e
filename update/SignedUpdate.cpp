// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/SignedUpdate.h"

#include "update/UpdateSignature.h"

#include <QCryptographicHash>
#include <QJsonObject>
#include <QRegularExpression>
#include <QVersionNumber>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 maximumSize = qint64(1) << 53; // up to here, JSON numbers are exact

bool isVersion(const QString &text)
{
    static const QRegularExpression pattern(uR"(\A[0-9]{1,9}(\.[0-9]{1,9}){0,3}\z)"_s);
    return pattern.match(text).hasMatch();
}

} // namespace

std::optional<SignedUpdate> readSignedUpdate(const QJsonObject &answer, const QString &platform,
                                             const QString &architecture,
                                             const QByteArrayList &keys)
{
    const QString version = answer["version"_L1].toString();
    const qint64 size = answer["size"_L1].toInteger();
    const QByteArray digits = answer["sha256"_L1].toString().toLatin1();
    const QByteArray hash = QByteArray::fromHex(digits);
    if (!isVersion(version) || size < 1 || size > maximumSize
        || hash.size() != QCryptographicHash::hashLength(QCryptographicHash::Sha256)) {
        return {};
    }
    const QByteArray changelogHash = QCryptographicHash::hash(
        answer["changelog"_L1].toString().toUtf8(), QCryptographicHash::Sha256);
    const QByteArray text =
        updateSignatureText(platform.toUtf8(), architecture.toUtf8(), version.toUtf8(), size,
                            hash.toHex(), changelogHash.toHex());
    const QByteArray signature = answer["signature"_L1].toString().toLatin1();
    if (hash.toHex() != digits || !isSignedByAny(keys, text, signature)) {
        return {};
    }
    return SignedUpdate{size, hash};
}

bool isNewerVersion(const QString &version, const QString &currentVersion)
{
    const auto number = [](const QString &text) {
        return QVersionNumber::fromString(text).normalized();
    };
    return isVersion(version) && number(version) > number(currentVersion);
}
