// SPDX-License-Identifier: GPL-3.0-or-later
#include "update/UpdateSignature.h"

#include "support/TestProgram.h"
#include "update/TestKey.h"

#include <QTest>

namespace {

// openssl made this signature with the private key in tests/scripts/tst_sign_update.py.
const QByteArray opensslKey("d75a980182b10ab7d54bfed3c964073a0ee172f3daa62325af021a68f707511a");
const QByteArray
    opensslSignature("72a42a595d7b14283005bca14836a5e305c22ac8a57d181b372831be9c019f84"
                     "db17daa7295eda7e60e357e6af748d10c9b15ef0a6fab34d243be7af8e5eb805");
const QByteArray opensslText("vaskel-update-1\n"
                             "linux\n"
                             "amd64\n"
                             "2.0.1\n"
                             "7\n"
                             "1310ca2c8932dbd118668bd97442558a3e1f546b5e15c69699dfbd6024f548d8\n"
                             "1fdc071134a13ffcd4727ad90928aef6180b19859e9bed02f2c30a8299550516\n");

} // namespace

class tst_UpdateSignature : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void putsEachValueOnALine();
    void acceptsTheSignatureOfAnotherProgram();
    void acceptsEitherOfTwoKeys();
    void refusesOtherSignatures_data();
    void refusesOtherSignatures();
    void refusesOtherKeys_data();
    void refusesOtherKeys();
    void refusesKeysThatFitAnySignature();
    void refusesEachFlippedByteOfTheText();
    void refusesEachFlippedBitOfTheSignature();
};

void tst_UpdateSignature::putsEachValueOnALine()
{
    QCOMPARE(
        updateSignatureText("linux", "amd64", "2.0.1", 7,
                            "1310ca2c8932dbd118668bd97442558a3e1f546b5e15c69699dfbd6024f548d8",
                            "1fdc071134a13ffcd4727ad90928aef6180b19859e9bed02f2c30a8299550516"),
        opensslText);
}

void tst_UpdateSignature::acceptsTheSignatureOfAnotherProgram()
{
    QVERIFY(isSignedByAny({opensslKey}, opensslText, opensslSignature));
    QVERIFY(isSignedByAny({opensslKey.toUpper()}, opensslText, opensslSignature));
}

void tst_UpdateSignature::acceptsEitherOfTwoKeys()
{
    const TestKey first;
    const TestKey second;
    const QByteArrayList keys{first.publicKey(), second.publicKey()};
    QVERIFY(isSignedByAny(keys, "text", first.sign("text")));
    QVERIFY(isSignedByAny(keys, "text", second.sign("text")));
    QVERIFY(!isSignedByAny(keys, "text", TestKey().sign("text")));
    QVERIFY(!isSignedByAny(keys, "text", first.sign("test")));
}

void tst_UpdateSignature::refusesOtherSignatures_data()
{
    QTest::addColumn<QByteArray>("signature");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("too short") << opensslSignature.left(126);
    QTest::newRow("odd") << opensslSignature.left(127);
    QTest::newRow("too long") << opensslSignature + "00";
    QTest::newRow("twice") << opensslSignature + opensslSignature;
    QTest::newRow("upper case") << opensslSignature.toUpper();
    QTest::newRow("blank before it") << " " + opensslSignature;
    QTest::newRow("line feed behind it") << opensslSignature + "\n";
    QTest::newRow("zeros") << QByteArray(128, '0');
    QTest::newRow("ones") << QByteArray(128, 'f');
    QTest::newRow("halves exchanged") << opensslSignature.mid(64) + opensslSignature.left(64);
    QTest::newRow("no number") << QByteArray(128, 'x');
}

void tst_UpdateSignature::refusesOtherSignatures()
{
    QFETCH(QByteArray, signature);
    QVERIFY(!isSignedByAny({opensslKey}, opensslText, signature));
}

void tst_UpdateSignature::refusesOtherKeys_data()
{
    QTest::addColumn<QByteArrayList>("keys");
    QTest::newRow("none") << QByteArrayList();
    QTest::newRow("empty") << QByteArrayList{""};
    QTest::newRow("another") << QByteArrayList{TestKey().publicKey()};
    QTest::newRow("two others") << QByteArrayList{TestKey().publicKey(), TestKey().publicKey()};
    QTest::newRow("too short") << QByteArrayList{opensslKey.left(62)};
    QTest::newRow("too long") << QByteArrayList{opensslKey + "00"};
    QTest::newRow("no number") << QByteArrayList{QByteArray(64, 'x')};
    QTest::newRow("no point of the curve") << QByteArrayList{QByteArray(64, 'f')};
}

void tst_UpdateSignature::refusesOtherKeys()
{
    QFETCH(QByteArrayList, keys);
    QVERIFY(!isSignedByAny(keys, opensslText, opensslSignature));
}

// The points of small order, also as numbers above the prime: with such a key, anybody's signature
// fits one of a few texts.
void tst_UpdateSignature::refusesKeysThatFitAnySignature()
{
    const QByteArrayList points = {
        "0000000000000000000000000000000000000000000000000000000000000000",
        "0000000000000000000000000000000000000000000000000000000000000080",
        "0100000000000000000000000000000000000000000000000000000000000000",
        "0100000000000000000000000000000000000000000000000000000000000080",
        "ecffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff7f",
        "ecffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff",
        "edffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff7f",
        "eeffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff7f",
        "26e8958fc2b227b045c3f489f2ef98f0d5dfac05d3c63339b13802886d53fc05",
        "26e8958fc2b227b045c3f489f2ef98f0d5dfac05d3c63339b13802886d53fc85",
        "c7176a703d4dd84fba3c0b760d10670f2a2053fa2c39ccc64ec7fd7792ac037a",
        "c7176a703d4dd84fba3c0b760d10670f2a2053fa2c39ccc64ec7fd7792ac03fa",
    };
    for (const QByteArray &key : points) {
        for (const QByteArray &point : points) {
            for (int number = 0; number < 8; ++number) {
                QVERIFY2(!isSignedByAny({key}, "text " + QByteArray::number(number),
                                        point + QByteArray(64, '0')),
                         qPrintable(QString::fromLatin1(key + ' ' + point)));
            }
        }
    }
}

void tst_UpdateSignature::refusesEachFlippedByteOfTheText()
{
    for (qsizetype index = 0; index < opensslText.size(); ++index) {
        QByteArray text = opensslText;
        text[index] = char(text.at(index) ^ 1);
        QVERIFY2(!isSignedByAny({opensslKey}, text, opensslSignature), text.constData());
    }
}

void tst_UpdateSignature::refusesEachFlippedBitOfTheSignature()
{
    const QByteArray bytes = QByteArray::fromHex(opensslSignature);
    for (qsizetype bit = 0; bit < 8 * bytes.size(); ++bit) {
        QByteArray flipped = bytes;
        flipped[bit / 8] = char(flipped.at(bit / 8) ^ (1 << bit % 8));
        QVERIFY2(!isSignedByAny({opensslKey}, opensslText, flipped.toHex()),
                 qPrintable(QString::number(bit)));
    }
}

VASKEL_TEST(tst_UpdateSignature, QCoreApplication)
#include "tst_UpdateSignature.moc"
