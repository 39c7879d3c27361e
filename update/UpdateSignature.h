// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayList>

/// The text that the signature of an update covers: "vaskel-update-1" and these values in this
/// order, each on a line of its own that ends with a line feed. The two hashes are SHA-256 in lower
/// case hexadecimal. No value may contain a line feed.
QByteArray updateSignatureText(const QByteArray &platform, const QByteArray &architecture,
                               const QByteArray &version, qint64 size, const QByteArray &fileHash,
                               const QByteArray &changelogHash);

/// Whether one of the keys made this Ed25519 signature of the text. A key is 64, a signature 128
/// hexadecimal digits; the signature's letters are lower case. Anything else counts as a wrong one,
/// and so does a key for which anybody can make signatures. False, too, if libgcrypt cannot be
/// initialised; the first call does that, which takes some milliseconds.
bool isSignedByAny(const QByteArrayList &keys, const QByteArray &text, const QByteArray &signature);
