// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/TitleBar.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <QWKWidgets/widgetwindowagent.h>

using namespace Qt::StringLiterals;

QWidget *buildTitleBar(QWidget *window, QWK::WidgetWindowAgent *agent)
{
    auto *bar = new QWidget(window);
    bar->setObjectName(u"windowTitleBar"_s);
    bar->setFixedHeight(36);

    auto *title = new QLabel(u"Vaskel"_s, bar);
    title->setObjectName(u"windowTitle"_s);
    auto *closeButton = new QPushButton(u"×"_s, bar);
    closeButton->setObjectName(u"windowCloseButton"_s);
    closeButton->setFixedSize(32, 28);
    closeButton->setAccessibleName(QCoreApplication::translate("FloatIcon", "Hide main window"));

    auto *layout = new QHBoxLayout(bar);
    layout->setContentsMargins(14, 0, 6, 0);
    layout->addWidget(title);
    layout->addStretch();
    layout->addWidget(closeButton);

    agent->setTitleBar(bar);
    agent->setSystemButton(QWK::WindowAgentBase::Close, closeButton);
    agent->setHitTestVisible(closeButton, true);
    QObject::connect(closeButton, &QPushButton::clicked, window, &QWidget::close);
    return bar;
}
