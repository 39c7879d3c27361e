// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/RequestAction.h"

#include "app/InstanceChannel.h"
#include "app/InstanceRequest.h"
#include "ui/MainWindow.h"

#include <QCoreApplication>

void toggle(MainWindow &window)
{
    if (isShowing(window)) {
        window.hide();
    } else {
        window.showAndActivate();
    }
}

void carryOut(const InstanceRequest &request, MainWindow &window)
{
    switch (request.verb) {
    case InstanceRequest::Verb::Toggle:
        toggle(window);
        break;
    case InstanceRequest::Verb::Show:
        window.showAndActivate();
        break;
    case InstanceRequest::Verb::Hide:
        window.hide();
        break;
    case InstanceRequest::Verb::Query:
        window.showQuery(request.text);
        break;
    case InstanceRequest::Verb::Quit:
        instancechannel::sendAnswer();
        QCoreApplication::quit();
        break;
    }
}
