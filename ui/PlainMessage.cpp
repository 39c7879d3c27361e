// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/PlainMessage.h"

#include <QFontMetrics>
#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype measurableLength = 4000; // more does not fit anyway

// What a text may take; the icon, the buttons and the frame come on top.
QSize roomFor(const QMessageBox &box)
{
    return QSize(520, 320).boundedTo(box.screen()->availableSize() * 2 / 3);
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
    const QSize room = roomFor(box);
    const QRect page(0, 0, room.width(), QWIDGETSIZE_MAX);
    const QRect taken = textLabel(box)->fontMetrics().boundingRect(page, Qt::TextWordWrap, text);
    return taken.width() <= room.width() && taken.height() <= room.height();
}

// The box sizes itself to its label and lets it be as high as it likes.
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
    page->setFixedSize(roomFor(box));
    grid->addWidget(page, row, column, rows, columns);
}

} // namespace

QMessageBox::StandardButton showPlainMessage(QWidget *parent, QMessageBox::Icon icon,
                                             const QString &title, const QString &text,
                                             QMessageBox::StandardButtons buttons)
{
    QMessageBox box(icon, title, text, buttons, parent);
    box.setTextFormat(Qt::PlainText);
    if (!fits(box)) {
        makeScrollable(box);
    }
    return QMessageBox::StandardButton(box.exec());
}
