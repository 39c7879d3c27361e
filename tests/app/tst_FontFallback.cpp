// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/FontFallback.h"

#include "settings/ThemeManager.h"
#include "support/TestProgram.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QGlyphRun>
#include <QLabel>
#include <QTest>
#include <QTextLayout>

using namespace Qt::StringLiterals;

namespace {

QFont sheetFont()
{
    QLabel label;
    label.setStyleSheet(ThemeManager().styleSheet());
    label.ensurePolished();
    return label.font();
}

} // namespace

class tst_FontFallback : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void desktopFontReplacesTheStyleSheetsFont();
    void chineseGlyphsAreFound();
    void applicationHasTheStyleSheetsFont();
};

void tst_FontFallback::desktopFontReplacesTheStyleSheetsFont()
{
    if (QFontDatabase::families().contains(u"Segoe UI"_s)) {
        QSKIP("The font of the sheet is installed.");
    }
    // A font that no system substitutes by default.
    const QFont desktopFont(u"DejaVu Sans Mono"_s);
    QCOMPARE(QFontInfo(desktopFont).family(), u"DejaVu Sans Mono"_s);
    QVERIFY(QFontInfo(sheetFont()).family() != u"DejaVu Sans Mono"_s);

    substituteDesktopFont(desktopFont);
    QCOMPARE(QFontInfo(sheetFont()).family(), u"DejaVu Sans Mono"_s);
    QCOMPARE(sheetFont().pixelSize(), 14);
    QFont::removeSubstitutions(u"Segoe UI"_s);
}

void tst_FontFallback::chineseGlyphsAreFound()
{
    substituteDesktopFont(QFont(u"DejaVu Sans"_s));
    QTextLayout layout(u"计算器 abc"_s, sheetFont());
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    const QList<QGlyphRun> runs = layout.glyphRuns();
    QVERIFY(runs.size() >= 2);
    for (const QGlyphRun &run : runs) {
        QVERIFY(!run.glyphIndexes().contains(0U)); // 0 is the glyph for missing characters
    }
    QFont::removeSubstitutions(u"Segoe UI"_s);
}

void tst_FontFallback::applicationHasTheStyleSheetsFont()
{
    const QFont sheet = sheetFont();
    const QFont before = QApplication::font();
    setApplicationFont();
    const QFont after = QApplication::font();
    QApplication::setFont(before);
    QCOMPARE(after.families(), sheet.families());
    QCOMPARE(after.pixelSize(), sheet.pixelSize());
}

VASKEL_TEST(tst_FontFallback, QApplication)
#include "tst_FontFallback.moc"
