// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/SignedUpdate.h"

#include "support/TestProgram.h"
#include "update/TestKey.h"

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QTest>

using namespace Qt::StringLiterals;

/// What counts as a signed offer, without a server.
class tst_SignedUpdate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsWhatIsSigned();
    void takesAMissingChangelogForAnEmptyOne();
    void refusesWhatIsNotSigned_data();
    void refusesWhatIsNotSigned();
    void refusesAnotherSystem();
    void changesNothingByAnyFlippedBit();
    void knowsANewerVersion_data();
    void knowsANewerVersion();

private:
    std::optional<SignedUpdate> read(const QJsonObject &answer) const
    {
        return readSignedUpdate(answer, updatePlatform(), updateArchitecture(),
                                {m_key.publicKey()});
    }

    TestKey m_key;
    Release m_release{"program", u"https://host.example/new"_s};
};

void tst_SignedUpdate::readsWhatIsSigned()
{
    const std::optional<SignedUpdate> update = read(m_release.signedBy(m_key));
    QVERIFY(update);
    QCOMPARE(update->size, 7);
    QCOMPARE(update->sha256.toHex(),
             "1310ca2c8932dbd118668bd97442558a3e1f546b5e15c69699dfbd6024f548d8");
}

void tst_SignedUpdate::takesAMissingChangelogForAnEmptyOne()
{
    Release release = m_release;
    release.changelog.clear();
    QJsonObject answer = release.signedBy(m_key);
    answer.remove(u"changelog"_s);
    QVERIFY(read(answer));
}

void tst_SignedUpdate::refusesWhatIsNotSigned_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QJsonValue>("value");
    const QJsonValue missing(QJsonValue::Undefined);
    const QString hash = m_release.signedBy(m_key)["sha256"_L1].toString();
    for (const char *key : {"version", "changelog", "size", "sha256", "signature"}) {
        QTest::addRow("no %s", key) << QString::fromLatin1(key) << missing;
        QTest::addRow("%s is no text", key) << QString::fromLatin1(key) << QJsonValue(true);
        QTest::addRow("%s is empty", key) << QString::fromLatin1(key) << QJsonValue(QString());
    }
    QTest::newRow("another version") << u"version"_s << QJsonValue(u"2.0.1"_s);
    QTest::newRow("line feed behind the version") << u"version"_s << QJsonValue(u"2.0.0\n"_s);
    QTest::newRow("version and size on one line") << u"version"_s << QJsonValue(u"2.0.0\n7"_s);
    QTest::newRow("another change log") << u"changelog"_s << QJsonValue(u"nothing new"_s);
    QTest::newRow("larger") << u"size"_s << QJsonValue(8);
    QTest::newRow("empty file") << u"size"_s << QJsonValue(0);
    QTest::newRow("negative size") << u"size"_s << QJsonValue(-7);
    QTest::newRow("half a byte more") << u"size"_s << QJsonValue(7.5);
    QTest::newRow("huge size") << u"size"_s << QJsonValue(1e300);
    QTest::newRow("size as a text") << u"size"_s << QJsonValue(u"7"_s);
    QTest::newRow("another file") << u"sha256"_s << QJsonValue(QString(64, u'0'));
    QTest::newRow("short hash") << u"sha256"_s << QJsonValue(hash.left(62));
    QTest::newRow("hash in upper case") << u"sha256"_s << QJsonValue(hash.toUpper());
    QTest::newRow("hash and a blank") << u"sha256"_s << QJsonValue(hash + u' ');
    QTest::newRow("another key") << u"signature"_s
                                 << m_release.signedBy(TestKey()).value("signature"_L1);
}

void tst_SignedUpdate::refusesWhatIsNotSigned()
{
    QFETCH(QString, key);
    QFETCH(QJsonValue, value);
    QJsonObject answer = m_release.signedBy(m_key);
    QVERIFY(read(answer));
    answer.insert(key, value);
    QVERIFY(!read(answer));
}

void tst_SignedUpdate::refusesAnotherSystem()
{
    const QJsonObject answer = m_release.signedBy(m_key);
    const QByteArrayList keys{m_key.publicKey()};
    QVERIFY(readSignedUpdate(answer, updatePlatform(), updateArchitecture(), keys));
    QVERIFY(!readSignedUpdate(answer, u"amiga"_s, updateArchitecture(), keys));
    QVERIFY(!readSignedUpdate(answer, updatePlatform(), u"m68k"_s, keys));
}

// The address and "mandatory" are not signed, so a flipped bit there may leave the offer valid; it
// is then the same in all that is signed.
void tst_SignedUpdate::changesNothingByAnyFlippedBit()
{
    const QJsonObject original = m_release.signedBy(m_key);
    const QByteArray body = jsonOf(original);
    int valid = 0;
    for (qsizetype bit = 0; bit < 8 * body.size(); ++bit) {
        QByteArray flipped = body;
        flipped[bit / 8] = char(flipped.at(bit / 8) ^ (1 << bit % 8));
        const QJsonObject answer = QJsonDocument::fromJson(flipped).object();
        if (!read(answer)) {
            continue;
        }
        ++valid;
        for (const QString &key : {u"version"_s, u"changelog"_s, u"size"_s, u"sha256"_s}) {
            QVERIFY2(answer[key] == original[key], flipped.constData());
        }
    }
    // Only flips in the member "has_update" and in what is not signed leave it valid, and not all.
    const qsizetype unsignedBytes =
        QByteArray(R"("has_update":true,"download_url":"","mandatory":false,)").size()
        + m_release.url.size();
    QVERIFY2(valid > 0 && valid < 8 * unsignedBytes, qPrintable(QString::number(valid)));
}

void tst_SignedUpdate::knowsANewerVersion_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<bool>("isNewer");
    for (const char *version : {"1.2.4", "1.2.3.1", "1.3", "1.10.0", "1.02.4", "2", "10.0.0"}) {
        QTest::newRow(version) << QString::fromLatin1(version) << true;
    }
    for (const char *version :
         {"1.2.3", "1.2.3.0", "01.2.3", "1.2.2", "1.2.2.9", "1.2",  "0.9.9",      "1",
          "0",     "",        ".",      "2.",    ".2",      "2..0", "2.0.0-rc",   "v2",
          "2 ",    " 2",      "2\n",    "-2",    "2,0",     "1e9",  "9999999999", "2.0.0.0.0"}) {
        QTest::addRow("not \"%s\"", version) << QString::fromLatin1(version) << false;
    }
    QTest::newRow("not in other digits") << u"\u0662"_s << false;
}

void tst_SignedUpdate::knowsANewerVersion()
{
    QFETCH(QString, version);
    QFETCH(bool, isNewer);
    QCOMPARE(isNewerVersion(version, u"1.2.3"_s), isNewer);
    QVERIFY(!isNewerVersion(version, version));
}

VASKEL_TEST(tst_SignedUpdate, QCoreApplication)
#include "tst_SignedUpdate.moc"
