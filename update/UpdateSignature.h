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
/// and so does a key that fits everybody's signatures.
/// The first call loads the tables of libgcrypt, which takes some milliseconds, or seven million
/// instructions; a start without it takes 190,000 more because of the library.
bool isSignedByAny(const QByteArrayList &keys, const QByteArray &text, const QByteArray &signature);
