// SPDX-License-Identifier: GPL-3.0-or-later
#include <QWKWidgets/widgetwindowagent.h>

#include <QApplication>
#include <QPushButton>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QWidget window;
    QWidget bar(&window);
    QPushButton button(&bar);
    QWK::WidgetWindowAgent agent(&window);
    agent.setup(&window);
    agent.setTitleBar(&bar);
    agent.setSystemButton(QWK::WindowAgentBase::SystemButton::Close, &button);
    agent.setHitTestVisible(&button, true);
    return app.exec();
}
