// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/ItemFocusDelegate.h"

#include "support/TestProgram.h"

#include <QImage>
#include <QListWidget>
#include <QPainter>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// Draws the only row of a list, with a white outline on black.
QImage paintedRow(const ItemFocusDelegate &delegate, QStyle::State state)
{
    QStyleOptionViewItem option;
    option.rect = QRect(0, 0, 80, 24);
    option.state = QStyle::State_Enabled | state;
    option.palette.setColor(QPalette::Highlight, Qt::blue);
    option.palette.setColor(QPalette::HighlightedText, Qt::white);
    option.palette.setColor(QPalette::Text, Qt::white);
    QListWidget list;
    list.addItem(QString());
    // Suppress the outline of the view, as the style sheet does.
    list.setStyleSheet(u"QListWidget { outline: none; }"_s);
    option.widget = &list;

    QImage image(option.rect.size(), QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    delegate.paint(&painter, option, list.model()->index(0, 0));
    painter.end();
    return image;
}

} // namespace

class tst_ItemFocusDelegate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void outlinesTheCurrentRowOfAViewWithTheFocus_data();
    void outlinesTheCurrentRowOfAViewWithTheFocus();
    void outlinesAnUnselectedRowIfEnabled_data();
    void outlinesAnUnselectedRowIfEnabled();
    void keepsTheMarginOfTheOutline();
};

void tst_ItemFocusDelegate::outlinesTheCurrentRowOfAViewWithTheFocus_data()
{
    QTest::addColumn<bool>("hasFocus");
    QTest::addColumn<bool>("byKeyboard");
    QTest::addColumn<bool>("isOutlined");
    QTest::newRow("by keyboard") << true << true << true;
    QTest::newRow("by mouse") << true << false << false;
    QTest::newRow("without the focus") << false << true << false;
}

void tst_ItemFocusDelegate::outlinesTheCurrentRowOfAViewWithTheFocus()
{
    QFETCH(const bool, hasFocus);
    QFETCH(const bool, byKeyboard);
    QFETCH(const bool, isOutlined);

    QStyle::State state = QStyle::State_Selected;
    state.setFlag(QStyle::State_HasFocus, hasFocus);
    state.setFlag(QStyle::State_KeyboardFocusChange, byKeyboard);
    const QImage image = paintedRow(ItemFocusDelegate(), state);
    QCOMPARE(image.pixelColor(40, 2) == QColor(Qt::white), isOutlined);
    QCOMPARE(image.pixelColor(2, 12) == QColor(Qt::white), isOutlined);
}

void tst_ItemFocusDelegate::outlinesAnUnselectedRowIfEnabled_data()
{
    QTest::addColumn<bool>("isAsked");
    QTest::addColumn<bool>("hasFocus");
    QTest::addColumn<bool>("byKeyboard");
    QTest::addColumn<bool>("isOutlined");
    QTest::newRow("by mouse") << true << true << false << true;
    QTest::newRow("by mouse, not asked") << false << true << false << false;
    QTest::newRow("by keyboard, not asked") << false << true << true << true;
    QTest::newRow("without the focus") << true << false << true << false;
}

void tst_ItemFocusDelegate::outlinesAnUnselectedRowIfEnabled()
{
    QFETCH(const bool, isAsked);
    QFETCH(const bool, hasFocus);
    QFETCH(const bool, byKeyboard);
    QFETCH(const bool, isOutlined);

    ItemFocusDelegate delegate;
    delegate.setOutlinesUnselected(isAsked);
    QStyle::State state;
    state.setFlag(QStyle::State_HasFocus, hasFocus);
    state.setFlag(QStyle::State_KeyboardFocusChange, byKeyboard);
    const QImage image = paintedRow(delegate, state);
    QCOMPARE(image.pixelColor(40, 2) == QColor(Qt::white), isOutlined);
    QCOMPARE(image.pixelColor(2, 12) == QColor(Qt::white), isOutlined);
}

void tst_ItemFocusDelegate::keepsTheMarginOfTheOutline()
{
    ItemFocusDelegate delegate;
    delegate.setOutlineMargin(4);
    const QImage image = paintedRow(delegate, QStyle::State_Selected | QStyle::State_HasFocus
                                                  | QStyle::State_KeyboardFocusChange);
    QVERIFY(image.pixelColor(40, 2) != QColor(Qt::white));
    QCOMPARE(image.pixelColor(40, 4), QColor(Qt::white));
    QCOMPARE(image.pixelColor(4, 12), QColor(Qt::white));
}

VASKEL_TEST(tst_ItemFocusDelegate, QApplication)
#include "tst_ItemFocusDelegate.moc"
