// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/MainWindow.h"

#include "settings/ThemeManager.h"
#include "support/TestProgram.h"
#include "ui/ApplicationStyle.h"
#include "ui/CommandLineEdit.h"
#include "ui/WindowTest.h"

#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace windowtest;

/// The window under the style sheet, in both palettes.
class tst_MainWindowLook : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(new ApplicationStyle); }
    void init();
    void cleanup() { qApp->setStyleSheet(QString()); }

    void nothingIsClipped_data();
    void nothingIsClipped();
    void rowsFillTheListWithoutScrolling_data() { nothingIsClipped_data(); }
    void rowsFillTheListWithoutScrolling();
    void rowsHaveTheColorsOfThePalette_data() { nothingIsClipped_data(); }
    void rowsHaveTheColorsOfThePalette();
    void newPaletteReachesAVisibleWindow();

private:
    void useTheme(const QString &name);
    ThemeManager m_theme;
};

void tst_MainWindowLook::init()
{
    reset();
}

void tst_MainWindowLook::useTheme(const QString &name)
{
    m_theme.setTheme(name);
    qApp->setStyleSheet(m_theme.styleSheet());
}

void tst_MainWindowLook::nothingIsClipped_data()
{
    QTest::addColumn<QString>("theme");
    QTest::newRow("dark") << u"dark"_s;
    QTest::newRow("light") << u"light"_s;
}

void tst_MainWindowLook::nothingIsClipped()
{
    QFETCH(QString, theme);
    useTheme(theme);
    Window w;
    w.launcher.pinApp(u"/calculator"_s, u"计算器 Åg"_s, QString());
    QVERIFY(w.showActive());
    for (const QString &text : {QString(), u"calc 记事本"_s}) {
        w.enter(text);
        w.settle();
        int seen = 0;
        const QList<QWidget *> widgets = w.window.findChildren<QWidget *>();
        for (const QWidget *widget : widgets) {
            const bool hasText = qobject_cast<const QLabel *>(widget)
                                 || qobject_cast<const QPushButton *>(widget)
                                 || qobject_cast<const QLineEdit *>(widget)
                                 || qobject_cast<const CommandLineEdit *>(widget);
            if (!hasText || !widget->isVisible()) {
                continue;
            }
            ++seen;
            const QByteArray name = widget->objectName().toUtf8();
            QVERIFY2(widget->height() >= widget->minimumSizeHint().height(), name.constData());
            QVERIFY2(widget->height() >= widget->fontMetrics().height(), name.constData());
            const QRect place(widget->mapTo(&w.window, QPoint()), widget->size());
            QVERIFY2(w.window.rect().contains(place), name.constData());
            QVERIFY2(widget->parentWidget()->rect().contains(widget->geometry()), name.constData());
        }
        QVERIFY(seen >= 5);
    }
}

void tst_MainWindowLook::rowsFillTheListWithoutScrolling()
{
    QFETCH(QString, theme);
    useTheme(theme);
    Window w;
    QVERIFY(w.showActive());
    w.calc.records = numberedRecords(3);
    w.enter(u"calc "_s);
    w.settle();
    QCOMPARE(w.list->sizeHintForRow(0), 62); // 46 of the sheet, with 8 above and below
    QCOMPARE(w.list->verticalScrollBar()->maximum(), 0);
    for (int row = 0; row < 3; ++row) {
        const QRect place = w.list->visualItemRect(w.list->item(row));
        QCOMPARE(place.height(), 62);
        QVERIFY(w.list->viewport()->rect().contains(place));
    }
}

void tst_MainWindowLook::rowsHaveTheColorsOfThePalette()
{
    QFETCH(QString, theme);
    useTheme(theme);
    Window w;
    QVERIFY(w.showActive());
    w.calc.records = numberedRecords(3);
    w.enter(u"calc "_s);
    w.settle();
    const auto image = [&](int row) {
        return w.list->viewport()->grab(w.list->visualItemRect(w.list->item(row))).toImage();
    };
    const auto holds = [](const QImage &picture, const QColor &color) {
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixelColor(x, y) == color) {
                    return true;
                }
            }
        }
        return false;
    };
    const QImage selected = image(0);
    QCOMPARE(selected.pixelColor(selected.width() / 2, 4), m_theme.accent());
    QVERIFY(selected.pixelColor(0, 0) != m_theme.accent()); // the corners are round
    QVERIFY(holds(selected, Qt::white));
    const QImage other = image(1);
    QCOMPARE(other.pixelColor(other.width() / 2, 4), m_theme.surface());
    QVERIFY(holds(other, m_theme.text()));
}

void tst_MainWindowLook::newPaletteReachesAVisibleWindow()
{
    useTheme(u"dark"_s);
    Window w;
    QVERIFY(w.showActive());
    const auto background = [&] {
        return w.window.grab().toImage().pixelColor(5, 60);
    };
    QCOMPARE(background(), m_theme.bg());
    useTheme(u"light"_s);
    QCOMPARE(background(), QColor(u"#f5f5f7"_s));
    const QColor entry = w.edit->palette().color(QPalette::Text);
    QCOMPARE(entry, QColor(u"#1d1d1f"_s));
}

VASKEL_TEST(tst_MainWindowLook, QApplication)
#include "tst_MainWindowLook.moc"
