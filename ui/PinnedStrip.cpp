// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/PinnedStrip.h"

#include "core/ResultRecord.h"
#include "launcher/AppLauncher.h"
#include "ui/PngFile.h"
#include "ui/VisibleText.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>

using namespace Qt::StringLiterals;

PinnedStrip::PinnedStrip(AppLauncher *launcher, QWidget *parent)
    : QWidget(parent)
    , m_launcher(launcher)
    , m_layout(new QHBoxLayout(this))
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
    updateGeometry();
    Q_EMIT changed();
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
        button->setIcon(iconOfFile(icon));
    }
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
