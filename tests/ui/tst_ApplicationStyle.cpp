// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ApplicationStyle.h"

#include "settings/ThemeManager.h"
#include "support/EventCounter.h"
#include "support/TestProgram.h"
#include "ui/Contrast.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QIcon>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <QTest>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The strongest contrast between the background and a pixel.
double strongestContrast(const QImage &image, const QColor &background)
{
    double strongest = 1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            strongest = std::max(strongest, contrast(image.pixelColor(x, y), background));
        }
    }
    return strongest;
}

} // namespace

class tst_ApplicationStyle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(new ApplicationStyle); }
    void init();
    void buttonFocusIsVisible_data();
    void buttonFocusIsVisible();
    void checkBoxOfARowIsVisible_data() { buttonFocusIsVisible_data(); }
    void checkBoxOfARowIsVisible();
    void iconOfASelectedRowKeepsItsColors();
    void arrowOfAComboBoxIsVisible_data() { buttonFocusIsVisible_data(); }
    void arrowOfAComboBoxIsVisible();
    void listOfAComboBoxShowsAllRows_data() { buttonFocusIsVisible_data(); }
    void listOfAComboBoxShowsAllRows();
    void clearButtonOfALineEditIsVisible_data() { buttonFocusIsVisible_data(); }
    void clearButtonOfALineEditIsVisible();
    void marksOfAMessageAreVisible_data() { buttonFocusIsVisible_data(); }
    void marksOfAMessageAreVisible();
    void menuIsMaskedToItsRoundFrame();
    void listReachesBehindItsScrollBar_data() { buttonFocusIsVisible_data(); }
    void listReachesBehindItsScrollBar();
    void anotherSheetPolishesADeepWidgetNoMoreOften();

private:
    void useTheme(const QString &name);
    ThemeManager m_theme;
};

void tst_ApplicationStyle::init()
{
    qApp->setStyleSheet(QString());
}

void tst_ApplicationStyle::useTheme(const QString &name)
{
    m_theme.setTheme(name);
    qApp->setStyleSheet(m_theme.styleSheet());
}

void tst_ApplicationStyle::buttonFocusIsVisible_data()
{
    QTest::addColumn<QString>("theme");
    QTest::newRow("dark") << u"dark"_s;
    QTest::newRow("light") << u"light"_s;
}

void tst_ApplicationStyle::buttonFocusIsVisible()
{
    QFETCH(QString, theme);
    useTheme(theme);
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    auto *plain = new QPushButton(&window);
    auto *primary = new QPushButton(&window);
    primary->setObjectName(u"primary"_s);
    layout->addWidget(plain);
    layout->addWidget(primary);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));

    for (QPushButton *button : {plain, primary}) {
        QPushButton *other = button == plain ? primary : plain;
        other->setFocus(Qt::TabFocusReason);
        const QImage without = button->grab().toImage();
        const QColor background = without.pixelColor(without.rect().center());
        button->setFocus(Qt::TabFocusReason);
        QImage with = button->grab().toImage();
        QVERIFY(with != without);
        // The frame leaves a margin around the text.
        const QImage text = with.copy(with.rect().adjusted(6, 6, -6, -6));
        QCOMPARE(text, without.copy(without.rect().adjusted(6, 6, -6, -6)));
        // Without the border of the sheet.
        with = with.copy(with.rect().adjusted(3, 3, -3, -3));
        QVERIFY(strongestContrast(with, background) >= 3);
    }
}

void tst_ApplicationStyle::checkBoxOfARowIsVisible()
{
    QFETCH(QString, theme);
    useTheme(theme);
    QTreeWidget tree;
    auto *row = new QTreeWidgetItem(&tree);
    row->setCheckState(0, Qt::Unchecked);
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));

    const auto picture = [&] {
        return tree.viewport()->grab(tree.visualItemRect(row)).toImage();
    };
    for (const bool isSelected : {false, true}) {
        row->setSelected(isSelected);
        row->setCheckState(0, Qt::Unchecked);
        const QImage empty = picture();
        const QColor background = isSelected ? m_theme.accent() : m_theme.surface();
        QCOMPARE(empty.pixelColor(empty.rect().center()), background);
        QVERIFY2(strongestContrast(empty, background) >= (isSelected ? 2 : 3),
                 qPrintable(QString::number(strongestContrast(empty, background))));
        row->setCheckState(0, Qt::Checked);
        const QImage checked = picture();
        QVERIFY(checked != empty);
        QVERIFY(strongestContrast(checked, background) >= 3);
    }
}

void tst_ApplicationStyle::iconOfASelectedRowKeepsItsColors()
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::yellow);
    const QIcon icon(pixmap);
    QCOMPARE(icon.pixmap(16, QIcon::Selected).toImage().pixelColor(8, 8), QColor(Qt::yellow));
    QVERIFY(icon.pixmap(16, QIcon::Disabled).toImage().pixelColor(8, 8) != QColor(Qt::yellow));
}

void tst_ApplicationStyle::arrowOfAComboBoxIsVisible()
{
    QFETCH(QString, theme);
    useTheme(theme);
    QComboBox box;
    box.resize(200, 40);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    const QImage picture = box.grab().toImage();
    const QImage right = picture.copy(box.width() - 24, 8, 20, box.height() - 16);
    QVERIFY(strongestContrast(right, m_theme.surface()) >= 4.5);
}

void tst_ApplicationStyle::listOfAComboBoxShowsAllRows()
{
    QFETCH(QString, theme);
    useTheme(theme);
    QComboBox box;
    box.addItems({u"One"_s, u"Two"_s, u"Three"_s, u"Four"_s});
    box.setCurrentIndex(2);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    box.showPopup();
    const QAbstractItemView *list = box.view();
    QTRY_VERIFY(list->isVisible());

    QCOMPARE(list->verticalScrollBar()->maximum(), 0);
    for (int row = 0; row < box.count(); ++row) {
        const QRect place = list->visualRect(list->model()->index(row, 0));
        QVERIFY(list->viewport()->rect().contains(place));
        QVERIFY(place.height() >= list->fontMetrics().height() + 12);
    }
    box.hidePopup();
}

void tst_ApplicationStyle::clearButtonOfALineEditIsVisible()
{
    QFETCH(QString, theme);
    useTheme(theme);
    QLineEdit edit(u"text"_s);
    edit.setClearButtonEnabled(true);
    edit.resize(200, 40);
    edit.show();
    QVERIFY(QTest::qWaitForWindowExposed(&edit));
    const auto right = [&edit] {
        return edit.grab().toImage().copy(edit.width() - 28, 8, 24, edit.height() - 16);
    };
    // The button fades in.
    QTRY_VERIFY(strongestContrast(right(), m_theme.surface()) >= 3);
    // Check the arms of the cross, too.
    const QIcon icon = edit.style()->standardIcon(QStyle::SP_LineEditClearButton, nullptr, &edit);
    QCOMPARE(icon.availableSizes().value(0), QSize(16, 16));
    const QImage cross = icon.pixmap(16).toImage();
    for (const QPoint arm : {QPoint(4, 4), QPoint(11, 4), QPoint(4, 11), QPoint(11, 11)}) {
        QVERIFY(cross.pixelColor(arm).alphaF() > 0.5F);
    }
    QCOMPARE(cross.pixelColor(8, 4).alpha(), 0);
}

void tst_ApplicationStyle::marksOfAMessageAreVisible()
{
    QFETCH(QString, theme);
    useTheme(theme);
    for (const QStyle::StandardPixmap which :
         {QStyle::SP_DialogYesButton, QStyle::SP_DialogNoButton, QStyle::SP_DialogOkButton,
          QStyle::SP_DialogCancelButton}) {
        const QImage mark = QApplication::style()->standardIcon(which).pixmap(16).toImage();
        QImage picture(mark.size(), QImage::Format_RGB32);
        picture.fill(m_theme.surface());
        QPainter(&picture).drawImage(QPoint(), mark);
        // At least the length of an arm, since a single pixel is no mark.
        int visible = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                visible += contrast(picture.pixelColor(x, y), m_theme.surface()) >= 3;
            }
        }
        QVERIFY2(visible >= 12, qPrintable(QString::number(visible)));
    }
}

void tst_ApplicationStyle::menuIsMaskedToItsRoundFrame()
{
    useTheme(u"dark"_s);
    QMenu menu;
    menu.addAction(u"Entry"_s);
    menu.addAction(u"Another entry"_s);
    menu.popup(QPoint(100, 100));
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    const QRegion shape = menu.mask();
    const QRect rect = menu.rect();
    for (const QPoint &corner :
         {rect.topLeft(), rect.topRight(), rect.bottomLeft(), rect.bottomRight()}) {
        QVERIFY(!shape.contains(corner));
        const QPoint inwards(corner.x() ? -3 : 3, corner.y() ? -3 : 3);
        QVERIFY(shape.contains(corner + inwards));
    }
    QVERIFY(shape.contains(QPoint(0, rect.center().y())));
    QVERIFY(shape.contains(QPoint(rect.center().x(), rect.bottom())));
}

void tst_ApplicationStyle::listReachesBehindItsScrollBar()
{
    QFETCH(QString, theme);
    useTheme(theme);
    QTreeWidget tree;
    for (int row = 0; row < 100; ++row) {
        new QTreeWidgetItem(&tree);
    }
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));
    QScrollBar *bar = tree.verticalScrollBar();
    QVERIFY(bar->isVisible());
    const QImage picture = tree.grab().toImage();
    // The handle is above the last pixels, and the bar has a margin on both sides.
    const QRect place(bar->mapTo(&tree, QPoint()), bar->size());
    for (int x = place.left() - 2; x <= place.right(); ++x) {
        QCOMPARE(picture.pixelColor(x, place.bottom() - 5), m_theme.surface());
    }
}

void tst_ApplicationStyle::anotherSheetPolishesADeepWidgetNoMoreOften()
{
    setApplicationSheet(u"QPushButton { color: #ffffff; }"_s);
    QWidget window;
    QWidget *outer = &window;
    for (int depth = 0; depth < 8; ++depth) {
        outer = new QWidget(outer);
    }
    QPushButton shallow(&window);
    QPushButton deep(outer);
    window.show();
    EventCounter shallowChanges(&shallow, QEvent::StyleChange);
    EventCounter deepChanges(&deep, QEvent::StyleChange);

    setApplicationSheet(u"QPushButton { color: #000000; }"_s);
    QCOMPARE(deep.palette().color(QPalette::ButtonText), QColor(Qt::black));
    QVERIFY(shallowChanges.count > 0);
    QCOMPARE(deepChanges.count, shallowChanges.count);
}

VASKEL_TEST(tst_ApplicationStyle, QApplication)
#include "tst_ApplicationStyle.moc"
