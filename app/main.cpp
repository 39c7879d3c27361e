// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/PluginHotkeys.h"
#include "app/QuitFilter.h"
#include "app/Translation.h"
#include "core/PluginManager.h"
#include "hotkey/GlobalHotkey.h"
#include "launcher/AppLauncher.h"
#include "platform/QtVersion.h"
#include "plugins/AppPlugin.h"
#include "plugins/CalcPlugin.h"
#include "plugins/DirectoryPlugin.h"
#include "plugins/FilePlugin.h"
#include "plugins/TodoPlugin.h"
#include "settings/Settings.h"
#include "ui/MainWindow.h"
#include "ui/ProgramIcon.h"

#include <QIcon>
#include <QLocale>
#include <QMenu>
#include <QProcess>
#include <QSystemTrayIcon>
#include <QTranslator>

#include <SingleApplication>

using namespace Qt::StringLiterals;

namespace {

void toggle(MainWindow &window)
{
    if (window.isVisible()) {
        window.hide();
    } else {
        window.showAndActivate();
    }
}

void registerPlugins(PluginManager &plugins, AppLauncher &launcher, Settings &settings)
{
    // The first plugin of a word keeps it, so the order matters.
    plugins.registerPlugin(new AppPlugin(&launcher, &plugins));
    plugins.registerPlugin(new CalcPlugin(&plugins));
    plugins.registerPlugin(new DirectoryPlugin(&plugins));
    plugins.setSettings(&settings);
    plugins.registerPlugin(new FilePlugin(&plugins));
    plugins.registerPlugin(new TodoPlugin(&plugins));
}

void connectHotkeys(GlobalHotkey &hotkey, PluginManager &plugins, Settings &settings,
                    MainWindow &window)
{
    QObject::connect(&hotkey, &GlobalHotkey::activated, &window, [&window] { toggle(window); });

    const auto setMainHotkey = [&] {
        hotkey.setMainHotkey(settings.globalHotkey());
    };
    QObject::connect(&settings, &Settings::globalHotkeyChanged, &hotkey, setMainHotkey);
    setMainHotkey();

    const auto reload = [&] {
        reloadPluginHotkeys(hotkey, plugins, settings);
    };
    QObject::connect(&settings, &Settings::pluginHotkeyChanged, &hotkey, reload);
    QObject::connect(&settings, &Settings::pluginEnabledChanged, &hotkey, reload);
    QObject::connect(&hotkey, &GlobalHotkey::commandActivated, &window,
                     &MainWindow::activateCommand);
    reload();
}

void restart()
{
    // The new process may come up while this one still counts as the running instance; it then ends
    // itself, as any second start does, and this one ends too. Nothing waits for the other.
    QProcess::startDetached(QCoreApplication::applicationFilePath(), {});
    QCoreApplication::quit();
}

void fillTrayMenu(QMenu &menu, MainWindow &window)
{
    const QAction *show = menu.addAction(QCoreApplication::translate("Main", "Show"));
    QObject::connect(show, &QAction::triggered, &window, &MainWindow::showAndActivate);

    const QAction *settings = menu.addAction(QCoreApplication::translate("Main", "Settings"));
    QObject::connect(settings, &QAction::triggered, &window, [&window] {
        window.showAndActivate();
        window.openPluginView(u"set"_s);
    });

    const QAction *again = menu.addAction(QCoreApplication::translate("Main", "Restart"));
    QObject::connect(again, &QAction::triggered, &window, restart);

    const QAction *quit = menu.addAction(QCoreApplication::translate("Main", "Quit"));
    QObject::connect(quit, &QAction::triggered, &window, &QCoreApplication::quit);
}

void connectTray(QSystemTrayIcon &tray, MainWindow &window)
{
    QObject::connect(&tray, &QSystemTrayIcon::activated, &window,
                     [&window](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::Trigger) {
                             toggle(window);
                         }
                     });
}

} // namespace

int main(int argc, char *argv[])
{
    // A second process of the same user ends in here, with the first one told.
    SingleApplication app(argc, argv, false, SingleApplication::Mode::User, 1000, u"Vaskel"_s);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QuitFilter quitFilter;
    app.installEventFilter(&quitFilter);

    const QIcon appIcon = programIcon();
    QGuiApplication::setWindowIcon(appIcon);

    QTranslator translator;
    if (loadTranslation(translator, qtversion::uiLanguages(QLocale::system()),
                        QCoreApplication::applicationDirPath() + "/i18n"_L1)) {
        QCoreApplication::installTranslator(&translator);
    }

    AppLauncher launcher;
    Settings settings;
    GlobalHotkey hotkey;

    PluginManager plugins;
    registerPlugins(plugins, launcher, settings);

    MainWindow window(&launcher, &plugins, &settings);
    window.setWindowIcon(appIcon);

    QObject::connect(&app, &SingleApplication::instanceStarted, &window,
                     &MainWindow::showAndActivate);
    window.showAndActivate();
    connectHotkeys(hotkey, plugins, settings, window);

    QSystemTrayIcon tray(appIcon);
    tray.setToolTip(u"Vaskel"_s);
    QMenu trayMenu;
    fillTrayMenu(trayMenu, window);
    tray.setContextMenu(&trayMenu);
    connectTray(tray, window);
    tray.setVisible(true);

    return SingleApplication::exec();
}
