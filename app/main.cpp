// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Translation.h"
#include "core/PluginManager.h"
#include "launcher/AppLauncher.h"
#include "platform/QtVersion.h"
#include "plugins/AppPlugin.h"
#include "plugins/CalcPlugin.h"
#include "settings/Settings.h"
#include "ui/MainWindow.h"

#include <QIcon>
#include <QLocale>
#include <QTranslator>

#include <SingleApplication>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    // A second process of the same user ends in here, with the first one told.
    SingleApplication app(argc, argv, false, SingleApplication::Mode::User, 1000, u"Vaskel"_s);
    QGuiApplication::setQuitOnLastWindowClosed(false);

    const QIcon appIcon(u":/assets/icon.png"_s);
    QGuiApplication::setWindowIcon(appIcon);

    QTranslator translator;
    if (loadTranslation(translator, qtversion::uiLanguages(QLocale::system()),
                        QCoreApplication::applicationDirPath() + "/i18n"_L1)) {
        QCoreApplication::installTranslator(&translator);
    }

    AppLauncher launcher;
    Settings settings;

    PluginManager plugins;
    plugins.registerPlugin(new AppPlugin(&launcher, &plugins));
    plugins.registerPlugin(new CalcPlugin(&plugins));
    plugins.setSettings(&settings);

    MainWindow window(&launcher, &plugins, &settings);
    window.setWindowIcon(appIcon);

    QObject::connect(&app, &SingleApplication::instanceStarted, &window,
                     &MainWindow::showAndActivate);
    window.showAndActivate();

    return SingleApplication::exec();
}
