// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/TestKey.h"

#include "update/UpdateSignature.h"

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QSysInfo>

#include <gcrypt.h>

using namespace Qt::StringLiterals;

namespace {

std::shared_ptr<void> shared(gcry_sexp_t expression)
{
    return {expression, [](void *it) {
                gcry_sexp_release(static_cast<gcry_sexp_t>(it));
            }};
}

gcry_sexp_t raw(const std::shared_ptr<void> &expression)
{
    return static_cast<gcry_sexp_t>(expression.get());
}

std::shared_ptr<void> part(const std::shared_ptr<void> &expression, const char *name)
{
    return shared(gcry_sexp_find_token(raw(expression), name, 0));
}

// The digits of an element's 32 bytes.
QByteArray digits(const std::shared_ptr<void> &expression, const char *name)
{
    size_t size = 0;
    const std::shared_ptr<void> element = part(expression, name);
    const char *bytes = gcry_sexp_nth_data(raw(element), 1, &size);
    if (size != 32) {
        qFatal("a number of %zu bytes", size);
    }
    return QByteArray(bytes, 32).toHex();
}

void check(gcry_error_t error)
{
    if (error) {
        qFatal("%s", gcry_strerror(error));
    }
}

} // namespace

TestKey::TestKey()
{
    if (!gcry_control(GCRYCTL_INITIALIZATION_FINISHED_P)) {
        gcry_check_version(nullptr);
        gcry_control(GCRYCTL_DISABLE_SECMEM, 0);
        gcry_control(GCRYCTL_INITIALIZATION_FINISHED, 0);
    }
    gcry_sexp_t wish = nullptr;
    check(gcry_sexp_build(&wish, nullptr, "(genkey(ecc(curve Ed25519)(flags eddsa)))"));
    const auto owner = shared(wish);
    gcry_sexp_t pair = nullptr;
    check(gcry_pk_genkey(&pair, wish));
    m_pair = shared(pair);
}

QByteArray TestKey::publicKey() const
{
    return digits(part(m_pair, "public-key"), "q");
}

QByteArray TestKey::sign(const QByteArray &text) const
{
    gcry_sexp_t data = nullptr;
    check(gcry_sexp_build(&data, nullptr, "(data(flags eddsa)(hash-algo sha512)(value %b))",
                          int(text.size()), text.constData()));
    const auto owner = shared(data);
    gcry_sexp_t signature = nullptr;
    check(gcry_pk_sign(&signature, data, raw(part(m_pair, "private-key"))));
    const auto result = shared(signature);
    return digits(result, "r") + digits(result, "s");
}

QString updatePlatform()
{
    return QSysInfo::kernelType() == "winnt"_L1 ? u"windows"_s : u"linux"_s;
}

QString updateArchitecture()
{
    const QString processor = QSysInfo::buildCpuArchitecture();
    return processor == "x86_64"_L1 ? u"amd64"_s : processor;
}

QString updateCheckPath()
{
    return u"/api/v1/update/latest?platform=%1&arch=%2"_s.arg(updatePlatform(),
                                                              updateArchitecture());
}

QJsonObject Release::signedBy(const TestKey &key) const
{
    const auto hash = [](const QByteArray &data) {
        return QCryptographicHash::hash(data, QCryptographicHash::Sha256).toHex();
    };
    const QByteArray text =
        updateSignatureText(platform.toUtf8(), architecture.toUtf8(), version.toUtf8(), file.size(),
                            hash(file), hash(changelog.toUtf8()));
    return {{u"has_update"_s, true},
            {u"version"_s, version},
            {u"changelog"_s, changelog},
            {u"download_url"_s, url},
            {u"mandatory"_s, false},
            {u"size"_s, file.size()},
            {u"sha256"_s, QString::fromLatin1(hash(file))},
            {u"signature"_s, QString::fromLatin1(key.sign(text))}};
}

QByteArray jsonOf(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}
