// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/SavedNotice.h"

#include "widgets/Announcement.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QTimer>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

SavedNotice::SavedNotice(QDialogButtonBox *buttons)
    : QLabel(buttons)
    , m_timer(new QTimer(this))
{
    setObjectName(u"muted"_s);
    m_timer->setSingleShot(true);
    connect(m_timer, &QTimer::timeout, this, &QWidget::hide);
}

void SavedNotice::showBeside(QDialogButtonBox *buttons, bool isSaved)
{
    auto *notice = buttons->findChild<SavedNotice *>();
    if (!notice) {
        notice = new SavedNotice(buttons);
    }
    notice->setText(isSaved ? tr("Saved") : tr("The settings cannot be saved."));
    notice->placeBeside(*buttons);
    notice->show();
    notice->m_timer->start(isSaved ? 2s : 10s);
    announce(buttons, notice->text());
}

// In front of the first button; the order of the buttons depends on the desktop.
void SavedNotice::placeBeside(const QDialogButtonBox &buttons)
{
    QRect row;
    const QList<QAbstractButton *> all = buttons.buttons();
    for (const QAbstractButton *button : all) {
        row |= button->geometry();
    }
    adjustSize();
    constexpr int space = 12;
    move(std::max(0, row.left() - space - width()), row.center().y() - height() / 2);
}
