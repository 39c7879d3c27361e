// SPDX-License-Identifier: GPL-3.0-or-later
#include <SingleApplication>

int main(int argc, char *argv[])
{
    SingleApplication app(argc, argv, false, SingleApplication::Mode::User, 1000,
                          QStringLiteral("probe"));
    QObject::connect(&app, &SingleApplication::instanceStarted, &app, &QApplication::quit);
    QObject::connect(&app, &SingleApplication::receivedMessage, &app,
                     [](quint32, const QByteArray &) { QApplication::quit(); });
    if (app.isSecondary()) {
        return app.sendMessage("message", 1000) ? 0 : 1;
    }
    return app.exec();
}
