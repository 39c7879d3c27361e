// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/TitleFont.h"

#include "support/TestProgram.h"

#include <QApplication>
#include <QFontDatabase>
#include <QRawFont>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QFont fontOf(const QString &family)
{
    QFont font({family});
    font.setPixelSize(14);
    return font;
}

QFont mediumFontOf(const QString &family)
{
    QFont font = fontOf(family);
    font.setWeight(QFont::Medium);
    return font;
}

bool hasPlainStyleAlone(const QString &family)
{
    const QStringList styles = QFontDatabase::styles(family);
    return !styles.isEmpty()
           && std::all_of(styles.begin(), styles.end(),
                          [&family](const QString &style) {
                              const int weight = QFontDatabase::weight(family, style);
                              return weight == QFont::Normal || weight == QFont::Bold;
                          })
           && std::any_of(styles.begin(), styles.end(), [&family](const QString &style) {
                  return QFontDatabase::weight(family, style) == QFont::Normal;
              });
}

} // namespace

class tst_TitleFont : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void drawsTheStyleOfMediumWeight();
    void keepsTheFontOfAFamilyWithoutIt();
    void isOfMediumWeightWhereAStyleIsNear();
};

void tst_TitleFont::drawsTheStyleOfMediumWeight()
{
    const QStringList families = QFontDatabase::families();
    QVERIFY(!families.isEmpty());
    for (const QString &family : families) {
        const QRawFont title = QRawFont::fromFont(titleFont(fontOf(family)));
        const QRawFont medium = QRawFont::fromFont(mediumFontOf(family));
        QCOMPARE(title.familyName(), medium.familyName());
        QCOMPARE(title.styleName(), medium.styleName());
    }
}

void tst_TitleFont::keepsTheFontOfAFamilyWithoutIt()
{
    QStringList families = QFontDatabase::families();
    families.removeIf([](const QString &family) {
        return !hasPlainStyleAlone(family)
               || !QRawFont::fromFont(fontOf(family)).familyName().startsWith(family);
    });
    QVERIFY(!families.isEmpty());
    for (const QString &family : std::as_const(families)) {
        QCOMPARE(titleFont(fontOf(family)), fontOf(family));
    }
}

void tst_TitleFont::isOfMediumWeightWhereAStyleIsNear()
{
    const QStringList families = QFontDatabase::families();
    for (const QString &family : families) {
        const QString plain = QRawFont::fromFont(fontOf(family)).styleName();
        const QString medium = QRawFont::fromFont(mediumFontOf(family)).styleName();
        const bool isMedium = titleFont(fontOf(family)).weight() == QFont::Medium;
        QVERIFY2(isMedium || plain == medium, qPrintable(family));
    }
}

VASKEL_TEST(tst_TitleFont, QApplication)
#include "tst_TitleFont.moc"
