// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/ItemFocusDelegate.h"

#include "support/TestProgram.h"

#include <QImage>
#include <QListWidget>
#include <QPainter>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_ItemFocusDelegate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void outlinesTheCurrentRowOfAViewWithTheFocus_data();
    void outlinesTheCurrentRowOfAViewWithTheFocus();
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

    QStyleOptionViewItem option;
    option.rect = QRect(0, 0, 80, 24);
    option.state = QStyle::State_Enabled | QStyle::State_Selected;
    option.state.setFlag(QStyle::State_HasFocus, hasFocus);
    option.state.setFlag(QStyle::State_KeyboardFocusChange, byKeyboard);
    option.palette.setColor(QPalette::Highlight, Qt::blue);
    option.palette.setColor(QPalette::HighlightedText, Qt::white);
    QListWidget list;
    list.addItem(QString());
    // Without an outline of the view's own, as the program's style sheet has it.
    list.setStyleSheet(u"QListWidget { outline: none; }"_s);
    option.widget = &list;

    QImage image(option.rect.size(), QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    ItemFocusDelegate(&list).paint(&painter, option, list.model()->index(0, 0));
    painter.end();
    QCOMPARE(image.pixelColor(40, 2) == QColor(Qt::white), isOutlined);
    QCOMPARE(image.pixelColor(2, 12) == QColor(Qt::white), isOutlined);
}

VASKEL_TEST(tst_ItemFocusDelegate, QApplication)
#include "tst_ItemFocusDelegate.moc"
