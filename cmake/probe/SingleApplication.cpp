// SPDX-License-Identifier: GPL-3.0-or-later
#include <SingleApplication>

int main(int argc, char *argv[])
{
    SingleApplication app(argc, argv, false, SingleApplication::Mode::User, 1000,
                          QStringLiteral("probe"));
    QObject::connect(&app, &SingleApplication::instanceStarted, &app, &QApplication::quit);
    return app.exec();
}
