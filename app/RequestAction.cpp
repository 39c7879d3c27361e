// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/RequestAction.h"

#include "app/InstanceChannel.h"
#include "app/InstanceRequest.h"
#include "ui/CommandLineEdit.h"
#include "ui/MainWindow.h"

#include <QCoreApplication>
#include <QLineEdit>

namespace {

void setQuery(CommandLineEdit &box, const QString &text)
{
    QLineEdit *edit = box.lineEdit();
    const QString before = edit->text();
    box.setText(text);
    // The window searches when the edit changes. It does not if only the command is another one.
    if (edit->text() == before) {
        Q_EMIT edit->textChanged(before);
    }
}

} // namespace

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
        window.showAndActivate();
        setQuery(*window.findChild<CommandLineEdit *>(), request.text);
        break;
    case InstanceRequest::Verb::Quit:
        instancechannel::sendAnswer();
        QCoreApplication::quit();
        break;
    }
}
