// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/SignedUpdate.h"

#include "fuzz/Fuzz.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

// The input is an answer of the update server. If it begins with 'a' to 'j', that chooses a signed
// answer and one of its keys, and the rest is the key's new value. An accepted answer must have the
// signed content.

namespace {

using fuzz::check;

// The public key of the first example of RFC 8032, whose private key is as public.
const QByteArrayList publicKeys = {
    "d75a980182b10ab7d54bfed3c964073a0ee172f3daa62325af021a68f707511a"};

struct Release
{
    QString version;
    QString changelog;
    qint64 size;
    QString sha256;
    QString signature;
};

const Release releases[] = {
    {u"2.0"_s, QString(), 4096,
     u"ad7facb2586fc6e966c004d7d1d16b024f5805ff7cb47c7a85dabd8b48892ca7"_s,
     u"c7d4c7a9e5dc9c278119b1f0ab5f622b7c2892dcf502b77b6ad82253b13f04f352eece04af528b525b1c883daaa59253f3c5cde045b35504848d4e24530c2204"_s},
    {u"1.10.0.3"_s, u"- \u00e9\n- \"two\""_s, 1,
     u"6e340b9cffb37a989ca544e6bb780a2c78901d3fb33738768511a30617afa01d"_s,
     u"12f5e5fd151b46237af42a7040ecad1629a0d6e6ec22456d30cad13d3102d29f4ae92190c5a5099d8e14014aa7fa59ac353909a413ad8a955d5a4fdbc02ab201"_s},
};

QJsonObject answerOf(const Release &release)
{
    return {{u"has_update"_s, true},
            {u"version"_s, release.version},
            {u"changelog"_s, release.changelog},
            {u"size"_s, release.size},
            {u"sha256"_s, release.sha256},
            {u"signature"_s, release.signature}};
}

// Text, or a number if it is one.
QJsonValue valueOf(const QString &text)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return isNumber ? QJsonValue(number) : QJsonValue(text);
}

QJsonObject answerFrom(const QByteArray &input)
{
    const int choice = input.isEmpty() ? -1 : input.at(0) - 'a';
    const QStringList keys = {u"version"_s, u"changelog"_s, u"size"_s, u"sha256"_s, u"signature"_s};
    if (choice < 0 || choice >= int(keys.size() * std::size(releases))) {
        return QJsonDocument::fromJson(input).object();
    }
    QJsonObject answer = answerOf(releases[choice / keys.size()]);
    const QString rest = QString::fromUtf8(input.sliced(1));
    const bool isNumber = keys.at(choice % keys.size()) == "size"_L1;
    answer.insert(keys.at(choice % keys.size()), isNumber ? valueOf(rest) : QJsonValue(rest));
    return answer;
}

bool isRelease(const QJsonObject &answer, const SignedUpdate &update)
{
    return std::any_of(std::begin(releases), std::end(releases), [&](const Release &release) {
        return answer["version"_L1].toString() == release.version
               && answer["changelog"_L1].toString() == release.changelog
               && update.size == release.size
               && QString::fromLatin1(update.sha256.toHex()) == release.sha256;
    });
}

void checkOrder(const QString &version)
{
    for (const QString &other : {version, u"1.0.0"_s, u"1"_s, u"0"_s, u"999999999.0"_s}) {
        check(!isNewerVersion(version, other) || !isNewerVersion(other, version),
              "each of two versions is above the other");
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    for (const Release &release : releases) {
        check(readSignedUpdate(answerOf(release), u"linux"_s, u"amd64"_s, publicKeys).has_value(),
              "a signed answer is refused");
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QJsonObject answer = answerFrom(fuzz::bytesOf(data, size));
    const auto update = readSignedUpdate(answer, u"linux"_s, u"amd64"_s, publicKeys);
    check(!update || isRelease(answer, *update), "an answer that nobody has signed is taken");
    check(!update || !readSignedUpdate(answer, u"windows"_s, u"amd64"_s, publicKeys),
          "an answer is taken for another platform");
    checkOrder(answer["version"_L1].toString());
    return 0;
}
