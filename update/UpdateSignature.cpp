// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/UpdateSignature.h"

#include <algorithm>
#include <memory>
#include <type_traits>

#include <gcrypt.h>

namespace {

constexpr int keySize = 32;
constexpr int signatureSize = 64;

struct ReleaseExpression
{
    void operator()(gcry_sexp_t expression) const { gcry_sexp_release(expression); }
};
using Expression = std::unique_ptr<std::remove_pointer_t<gcry_sexp_t>, ReleaseExpression>;

template <typename... Arguments>
Expression buildExpression(const char *format, Arguments... arguments)
{
    gcry_sexp_t expression = nullptr;
    gcry_sexp_build(&expression, nullptr, format, arguments...);
    return Expression(expression); // null after an error
}

// Another library in the process may use libgcrypt, too.
bool initialize()
{
    if (gcry_control(GCRYCTL_INITIALIZATION_FINISHED_P)) {
        return true;
    }
    if (!gcry_check_version(GCRYPT_VERSION)) {
        return false;
    }
    gcry_control(GCRYCTL_DISABLE_SECMEM, 0); // verifying needs no secret
    gcry_control(GCRYCTL_INITIALIZATION_FINISHED, 0);
    return true;
}

// Empty unless these are the digits of so many bytes; QByteArray::fromHex() skips other characters.
QByteArray bytesOf(const QByteArray &digits, int size)
{
    const QByteArray bytes = QByteArray::fromHex(digits);
    return bytes.size() == size && bytes.toHex() == digits ? bytes : QByteArray();
}

// The y coordinates of the points of small order, but for -1. Anybody can make signatures for such
// a point.
const QByteArrayList &weakPoints()
{
    static const QByteArrayList points = {
        QByteArray(keySize, '\0'),
        QByteArray(1, '\1') + QByteArray(keySize - 1, '\0'),
        QByteArray::fromHex("26e8958fc2b227b045c3f489f2ef98f0d5dfac05d3c63339b13802886d53fc05"),
        QByteArray::fromHex("c7176a703d4dd84fba3c0b760d10670f2a2053fa2c39ccc64ec7fd7792ac037a"),
    };
    return points;
}

// Rejects points that are no public key of a key pair; libgcrypt ends the process for some of them.
bool canBeKey(QByteArray point)
{
    if (point.isEmpty()) {
        return false;
    }
    point.back() = char(point.back() & 0x7f); // without the sign of x
    // The prime is 2^255 - 19; the number below it, which is -1, belongs to the last weak point.
    const QByteArray primeWithoutItsFirstByte = QByteArray(keySize - 2, '\xff') + '\x7f';
    const bool isPrimeOrMore = point.endsWith(primeWithoutItsFirstByte) && quint8(point[0]) >= 0xec;
    return !isPrimeOrMore && !weakPoints().contains(point);
}

bool isSigned(const QByteArray &key, const QByteArray &text, const QByteArray &signature)
{
    const QByteArray point = bytesOf(key.toLower(), keySize);
    const QByteArray bytes = bytesOf(signature, signatureSize);
    if (!canBeKey(point) || bytes.isEmpty()) {
        return false;
    }
    const Expression publicKey = buildExpression(
        "(public-key(ecc(curve Ed25519)(flags eddsa)(q %b)))", keySize, point.constData());
    const Expression data = buildExpression("(data(flags eddsa)(hash-algo sha512)(value %b))",
                                            int(text.size()), text.constData());
    constexpr int half = signatureSize / 2;
    const Expression proof = buildExpression("(sig-val(eddsa(r %b)(s %b)))", half,
                                             bytes.constData(), half, bytes.constData() + half);
    return publicKey && data && proof
           && gcry_pk_verify(proof.get(), data.get(), publicKey.get()) == GPG_ERR_NO_ERROR;
}

} // namespace

QByteArray updateSignatureText(const QByteArray &platform, const QByteArray &architecture,
                               const QByteArray &version, qint64 size, const QByteArray &fileHash,
                               const QByteArray &changelogHash)
{
    const QByteArrayList lines{"vaskel-update-1",        platform, architecture, version,
                               QByteArray::number(size), fileHash, changelogHash};
    return lines.join('\n') + '\n';
}

bool isSignedByAny(const QByteArrayList &keys, const QByteArray &text, const QByteArray &signature)
{
    return initialize() && std::any_of(keys.cbegin(), keys.cend(), [&](const QByteArray &key) {
               return isSigned(key, text, signature);
           });
}
