// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/PageScroller.h"

#include "ui/ScreenArea.h"
#include "widgets/AccessibleName.h"

#include <QApplication>
#include <QScrollArea>
#include <QStackedWidget>

using namespace Qt::StringLiterals;

namespace {

const QString areaName = u"pageScroller"_s;

QScrollArea *scrollAreaOf(const QWidget *page)
{
    const QWidget *viewport = page->parentWidget();
    auto *area = viewport ? qobject_cast<QScrollArea *>(viewport->parentWidget()) : nullptr;
    return area && area->objectName() == areaName ? area : nullptr;
}

QScrollArea *putIntoScrollArea(QStackedWidget *stack, QWidget *page)
{
    stack->removeWidget(page);
    auto *area = new QScrollArea(stack);
    area->setObjectName(areaName);
    setAccessibleNames(area, stack->window()->windowTitle());
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus); // its controls take the focus
    area->setWidgetResizable(true);
    area->setWidget(page);
    // A scroll area scrolls to a control only if the focus comes from another control inside it, so
    // do it here. A click must not scroll: the control would move away before the mouse button is
    // released.
    QObject::connect(
        qApp, &QApplication::focusChanged, area, [area, page](const QWidget *, QWidget *now) {
            if (now && page->isAncestorOf(now) && QGuiApplication::mouseButtons() == Qt::NoButton) {
                area->ensureWidgetVisible(now);
            }
        });
    return area;
}

} // namespace

void showScrollable(QStackedWidget *stack, QWidget *page)
{
    QScrollArea *area = scrollAreaOf(page);
    if (!area && isSmallScreen(availableArea(stack->screen()).size())) {
        area = putIntoScrollArea(stack, page);
    }
    QWidget *shown = area ? area : page;
    if (stack->indexOf(shown) < 0) {
        stack->addWidget(shown);
    }
    stack->setCurrentWidget(shown);
}
