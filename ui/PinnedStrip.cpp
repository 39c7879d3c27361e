// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/PinnedStrip.h"

#include "core/ResultRecord.h"
#include "launcher/AppLauncher.h"
#include "platform/ImageFile.h"
#include "ui/ScreenArea.h"
#include "ui/ScrollRow.h"
#include "ui/VisibleText.h"

#include <QCoreApplication>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QWheelEvent>
#include <QWindow>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr int neighbourWidth = 24; // how much of the next button shows beside the focused one

// The larger component, so that a plain wheel moves the strip, too.
int mainDelta(const QPoint &delta)
{
    return std::abs(delta.x()) > std::abs(delta.y()) ? delta.x() : delta.y();
}

bool isByMouse(const QEvent &event)
{
    return static_cast<const QFocusEvent &>(event).reason() == Qt::MouseFocusReason;
}

} // namespace

PinnedStrip::PinnedStrip(AppLauncher *launcher, QWidget *parent)
    : QWidget(parent)
    , m_launcher(launcher)
    , m_layout(new ScrollRow(this))
{
    setObjectName(u"pinnedStrip"_s);
    m_layout->setContentsMargins(0, 0, 0, 0);
    connect(m_launcher, &AppLauncher::pinsChanged, this, &PinnedStrip::rebuild);
}

bool PinnedStrip::isEmpty() const
{
    return m_layout->count() == 0;
}

void PinnedStrip::rebuild()
{
    Q_EMIT aboutToChange();
    const int offset = m_layout->offset();
    clear();
    const QVariantList pins = m_launcher->pinnedApps();
    if (!pins.isEmpty()) {
        auto *label = new QLabel(QCoreApplication::translate("MainWindow", "Pinned"), this);
        label->setObjectName(u"muted"_s);
        addToLayout(label);
        for (const QVariant &pin : pins) {
            addButton(pin.toMap());
        }
        m_layout->addStretch();
    }
    m_layout->setLimit(availableWidth());
    m_layout->scrollTo(offset); // the layout has reduced it while there were few
    updateGeometry();
    Q_EMIT changed();
}

bool PinnedStrip::eventFilter(QObject *watched, QEvent *event)
{
    // A button must not move away under the pointer that presses it.
    if (event->type() == QEvent::FocusIn && !isByMouse(*event)) {
        scrollToButton(*qobject_cast<QWidget *>(watched));
    }
    return QWidget::eventFilter(watched, event);
}

bool PinnedStrip::event(QEvent *event)
{
    if (event->type() == QEvent::Show && window()->windowHandle()) {
        connect(window()->windowHandle(), &QWindow::screenChanged, this, &PinnedStrip::fitToScreen,
                Qt::UniqueConnection);
        fitToScreen();
    }
    return QWidget::event(event);
}

void PinnedStrip::wheelEvent(QWheelEvent *event)
{
    if (m_layout->geometry().width() == width()) {
        QWidget::wheelEvent(event);
        return;
    }
    const bool isFine = !event->pixelDelta().isNull();
    const QPoint delta = isFine ? event->pixelDelta() : event->angleDelta();
    m_layout->scrollTo(m_layout->offset() - mainDelta(delta));
    event->accept();
}

void PinnedStrip::clear()
{
    while (QLayoutItem *item = m_layout->takeAt(0)) {
        delete item->widget();
        delete item;
    }
}

void PinnedStrip::addButton(const QVariantMap &pin)
{
    const QString path = recordPath(pin);
    const QString icon = recordIcon(pin);
    // Escape ampersands: a name has no mnemonic.
    const QString text = visibleText(recordTitle(pin)).replace(u'&', "&&"_L1);

    auto *button = new QPushButton(text, this);
    button->setObjectName(u"pinnedAppButton"_s);
    button->setIconSize(QSize(24, 24));
    if (!icon.isEmpty()) {
        button->setIcon(platform::iconOfImageFile(icon));
    }
    button->installEventFilter(this);
    button->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(button, &QPushButton::clicked, this, [this, path] {
        m_launcher->launch(path);
        Q_EMIT launched();
    });
    connect(button, &QPushButton::customContextMenuRequested, this,
            [this, button, path](const QPoint &position) {
                openMenu(path, button->mapToGlobal(position));
            });
    addToLayout(button);
}

// The layout would show a new widget only in the next pass of the event loop, after the window has
// adapted its height without the widget.
void PinnedStrip::addToLayout(QWidget *widget)
{
    m_layout->addWidget(widget);
    widget->show();
}

void PinnedStrip::openMenu(const QString &path, const QPoint &globalPosition)
{
    QMenu menu(window());
    const QAction *unpin =
        menu.addAction(QCoreApplication::translate("MainWindow", "Unpin from Start"));
    if (menu.exec(globalPosition) == unpin) {
        m_launcher->unpinApp(path);
    }
}

void PinnedStrip::fitToScreen()
{
    connect(screen(), &QScreen::availableGeometryChanged, this, &PinnedStrip::fitToScreen,
            Qt::UniqueConnection);
    if (availableWidth() != m_layout->limit()) {
        m_layout->setLimit(availableWidth());
        Q_EMIT changed();
    }
}

// The width of the screen without the margins of the window.
int PinnedStrip::availableWidth() const
{
    const QLayout *outer = parentWidget() ? parentWidget()->layout() : nullptr;
    const QMargins margins = outer ? outer->contentsMargins() : QMargins();
    return availableArea(screen()).width() - margins.left() - margins.right();
}

void PinnedStrip::scrollToButton(const QWidget &button)
{
    const int left = button.x() - neighbourWidth;
    const int right = button.x() + button.width() + neighbourWidth;
    if (left < 0) {
        m_layout->scrollTo(m_layout->offset() + left);
    } else if (right > width()) {
        m_layout->scrollTo(m_layout->offset() + right - width());
    }
}
