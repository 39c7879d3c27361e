// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

#include <optional>

class QJsonObject;

/// What the owner of a key vouches for: the file of an update, whatever its address.
struct SignedUpdate
{
    qint64 size = 0;
    QByteArray sha256; // in binary
};

/// Reads an offer of the update server. Returns nothing unless one of the keys signed it for this
/// platform and architecture, by the names that the server has for them. UpdateSignature.h has the
/// format. The keys of the answer that matter are "version" and "changelog", and
///
/// - "size": the length of the file in bytes, from 1 to 2^53,
/// - "sha256": its SHA-256, as 64 hexadecimal digits in lower case,
/// - "signature": 128 such digits.
///
/// "download_url" and "mandatory" are not signed.
std::optional<SignedUpdate> readSignedUpdate(const QJsonObject &answer, const QString &platform,
                                             const QString &architecture,
                                             const QByteArrayList &keys);

/// Whether a version is above the current one. Versions are up to four numbers with dots between
/// them; what is missing counts as 0, and anything else is no newer version.
bool isNewerVersion(const QString &version, const QString &currentVersion);
