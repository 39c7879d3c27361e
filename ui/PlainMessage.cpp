// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/PlainMessage.h"

#include "ui/AnswerGuard.h"
#include "ui/ScreenArea.h"

#include <QAbstractButton>
#include <QFontMetrics>
#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype measurableLength = 4000; // a longer text never fits

// Without the icon, the buttons and the frame.
QSize maximumTextSize(const QMessageBox &box)
{
    return QSize(520, 320).boundedTo(availableArea(box.screen()).size() * 2 / 3);
}

QLabel *textLabel(const QMessageBox &box)
{
    return box.findChild<QLabel *>(u"qt_msgbox_label"_s);
}

bool fits(const QMessageBox &box)
{
    const QString text = box.text();
    if (text.size() > measurableLength) {
        return false;
    }
    const QSize maximum = maximumTextSize(box);
    const QRect page(0, 0, maximum.width(), QWIDGETSIZE_MAX);
    const QRect needed = textLabel(box)->fontMetrics().boundingRect(page, Qt::TextWordWrap, text);
    return needed.width() <= maximum.width() && needed.height() <= maximum.height();
}

// QMessageBox does not limit the height of its label, so put a scrolling widget in its place.
void makeScrollable(QMessageBox &box)
{
    auto *grid = qobject_cast<QGridLayout *>(box.layout());
    QLabel *label = textLabel(box);
    int row = 0;
    int column = 0;
    int rows = 0;
    int columns = 0;
    grid->getItemPosition(grid->indexOf(label), &row, &column, &rows, &columns);
    label->hide();

    auto *page = new QPlainTextEdit(box.text(), &box);
    page->setReadOnly(true);
    page->setTabChangesFocus(true);
    page->setFixedSize(maximumTextSize(box));
    grid->addWidget(page, row, column, rows, columns);
}

void showAsPlainText(QMessageBox &box)
{
    box.setTextFormat(Qt::PlainText);
    if (!fits(box)) {
        makeScrollable(box);
    }
}

} // namespace

QMessageBox::StandardButton showPlainMessage(QWidget *parent, QMessageBox::Icon icon,
                                             const QString &title, const QString &text,
                                             QMessageBox::StandardButtons buttons)
{
    QMessageBox box(icon, title, text, buttons, parent);
    showAsPlainText(box);
    // A screen reader that learns of the focus before the message would say the button alone.
    const QList<QAbstractButton *> all = box.buttons();
    for (QAbstractButton *button : all) {
        button->setAccessibleDescription(text);
    }
    return QMessageBox::StandardButton(box.exec());
}

bool askPlainQuestion(QWidget *parent, const QString &title, const QString &text)
{
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No, parent);
    showAsPlainText(box);
    new AnswerGuard(&box, parent);
    return box.exec() == QMessageBox::Yes;
}
