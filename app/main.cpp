// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/BuiltinPlugins.h"
#include "app/CommandLine.h"
#include "app/CommandLineAnswer.h"
#include "app/ExitStatus.h"
#include "app/FirstStart.h"
#include "app/FontFallback.h"
#include "app/HotkeyRegistration.h"
#include "app/InstanceChannel.h"
#include "app/Logger.h"
#include "app/QuitFilter.h"
#include "app/RequestAction.h"
#include "app/StartMessageHandler.h"
#include "app/Translation.h"
#include "core/PluginManager.h"
#include "hotkey/GlobalHotkey.h"
#include "launcher/AppLauncher.h"
#include "platform/ColorScheme.h"
#include "platform/DesktopHotkeys.h"
#include "platform/FloatingWindow.h"
#include "platform/FontLibrary.h"
#include "platform/IconTheme.h"
#include "platform/ProcessEnvironment.h"
#include "platform/WindowFocus.h"
#include "platform/WindowFrame.h"
#include "plugins/SettingsPlugin.h"
#include "settings/Settings.h"
#include "settings/ThemeManager.h"
#include "ui/ApplicationStyle.h"
#include "ui/FloatIcon.h"
#include "ui/MainWindow.h"
#include "ui/ScreenArea.h"
#include "ui/VaskelIcon.h"
#include "update/Updater.h"

#include <QIcon>
#include <QMenu>
#include <QPixmapCache>
#include <QProcess>
#include <QScreen>
#include <QSystemTrayIcon>
#include <QTimer>
#include <QTranslator>

#include <SingleApplication>

#include <chrono>
#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto firstMessageDelay = 2s;

// In KiB. The icons of rows and pins are not in this cache, and few other pictures are used again.
constexpr int pictureLimit = 512;

void connectTheme(SingleApplication &app, ThemeManager &theme, Settings &settings)
{
    const auto setTheme = [&] {
        theme.setTheme(settings.theme());
    };
    setTheme();

    QApplication::setStyle(new ApplicationStyle);
    substituteDesktopFont(QApplication::font());
    setApplicationFont();
    const auto apply = [&] {
        // Applying a style sheet is expensive, and not every theme has a palette of its own.
        const QString sheet = theme.styleSheet();
        if (sheet != app.styleSheet()) {
            setApplicationSheet(sheet);
        }
    };
    QObject::connect(&theme, &ThemeManager::paletteChanged, &app, apply);
    QObject::connect(&theme, &ThemeManager::themeChanged, &app, apply);
    apply();

    QObject::connect(&settings, &Settings::themeChanged, &theme, setTheme);
    platform::watchColorScheme(&theme, [&theme] { theme.updateDarkState(); });
}

void showFloatIcon(FloatIcon &icon, const Settings &settings)
{
    std::optional<QRect> available;
    if (const QScreen *screen = QGuiApplication::primaryScreen()) {
        available = availableArea(screen);
    }
    icon.move(floatIconPosition(settings.floatIconPos(), available));

    const auto updateVisibility = [&] {
        // Elsewhere the icon would be somewhere in the middle of the screen.
        icon.setVisible(settings.showFloatIcon() && platform::canPlaceWindows());
    };
    QObject::connect(&settings, &Settings::showFloatIconChanged, &icon, updateVisibility);
    updateVisibility();
}

void connectSecondStart(const SingleApplication &app, MainWindow &window)
{
    QObject::connect(&app, &SingleApplication::instanceStarted, &window,
                     &MainWindow::showAndActivate);
    QObject::connect(&app, &SingleApplication::receivedMessage, &window,
                     [&window](quint32, const QByteArray &message) {
                         if (const auto request = InstanceRequest::fromMessage(message)) {
                             carryOut(*request, window);
                         } else {
                             qWarning("Ignored a message of another process");
                         }
                     });
}

void connectHotkeys(GlobalHotkey &hotkey, HotkeyRegistration &registration, Settings &settings,
                    MainWindow &window)
{
    QObject::connect(&hotkey, &GlobalHotkey::activated, &window, [&window] { toggle(window); });

    const auto setMainHotkey = [&] {
        registration.registerMainHotkey();
    };
    QObject::connect(&settings, &Settings::globalHotkeyChanged, &hotkey, setMainHotkey);
    setMainHotkey();

    const auto reload = [&] {
        registration.registerPluginHotkeys();
    };
    QObject::connect(&settings, &Settings::pluginHotkeyChanged, &hotkey, reload);
    QObject::connect(&settings, &Settings::pluginEnabledChanged, &hotkey, reload);
    QObject::connect(&hotkey, &GlobalHotkey::commandActivated, &window,
                     &MainWindow::activateCommand);
    reload();
}

void tellHotkeyOrigins(SettingsPlugin &settingsPlugin, const HotkeyRegistration &registration,
                       const platform::DesktopHotkeys *desktop)
{
    settingsPlugin.setHotkeyOrigins(
        [&registration](const QString &command) { return registration.origin(command); });
    if (desktop) {
        QObject::connect(desktop, &platform::DesktopHotkeys::changed, &settingsPlugin,
                         &SettingsPlugin::updateHotkeyHints);
    }
}

void restart()
{
    // Nothing waits for this process to end. If the new one comes up while this one is still the
    // primary instance, it ends at once like any second start.
    QProcess::startDetached(QCoreApplication::applicationFilePath(), {});
    QCoreApplication::quit();
}

void fillTrayMenu(QMenu &menu, MainWindow &window, const SettingsPlugin &settingsPlugin)
{
    const QAction *show = menu.addAction(QCoreApplication::translate("Main", "Show"));
    QObject::connect(show, &QAction::triggered, &window, &MainWindow::showAndActivate);

    const QAction *settings = menu.addAction(QCoreApplication::translate("Main", "Settings"));
    QObject::connect(settings, &QAction::triggered, &window, [&window, &settingsPlugin] {
        window.showAndActivate();
        window.openPluginView(settingsPlugin.command());
    });

    const QAction *restartAction = menu.addAction(QCoreApplication::translate("Main", "Restart"));
    QObject::connect(restartAction, &QAction::triggered, &window, restart);

    const QAction *quit = menu.addAction(QCoreApplication::translate("Main", "Quit"));
    QObject::connect(quit, &QAction::triggered, &window, &QCoreApplication::quit);
}

void showTray(QSystemTrayIcon &tray, QMenu &menu, MainWindow &window,
              const SettingsPlugin &settingsPlugin)
{
    tray.setToolTip(u"Vaskel"_s);
    fillTrayMenu(menu, window, settingsPlugin);
    tray.setContextMenu(&menu);
    QObject::connect(&tray, &QSystemTrayIcon::activated, &window,
                     [&window](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::Trigger) {
                             toggle(window);
                         }
                     });
    platform::refuseFocusOfTray();
    tray.setVisible(true);
}

void greet(QSystemTrayIcon &tray, const AppLauncher &launcher, const GlobalHotkey &hotkey,
           const Settings &settings)
{
    if (!launcher.isFirstStart()) {
        return;
    }
    const HotkeyState state = hotkey.isMainHotkeyRegistered() ? HotkeyState::Registered
                              : hotkey.isMainHotkeyHeld()     ? HotkeyState::Held
                                                              : HotkeyState::None;
    const QString message = firstStartMessage(settings.globalHotkey(), state);
    if (!message.isEmpty()) {
        // The message points at the icon, which gets its place in the tray after a moment.
        QTimer::singleShot(firstMessageDelay, &tray, [&tray, message] {
            if (QSystemTrayIcon::isSystemTrayAvailable()) {
                tray.showMessage(u"Vaskel"_s, message, tray.icon());
            }
        });
    }
}

/// Builds the program in the order in which its objects need each other, shows the window and
/// returns the event loop's exit code.
int run(SingleApplication &app, const std::optional<InstanceRequest> &request)
{
    // Not before QApplication, which sets the locale, and whose plug-ins may change the
    // environment: the library's thread reads both.
    platform::FontLibrary fonts;
    const QIcon appIcon = vaskelIcon();
    QGuiApplication::setWindowIcon(appIcon);
    QTranslator translator;
    installTranslation(translator);

    platform::ensureIconTheme(); // the launcher draws icons
    AppLauncher launcher;
    Settings settings;
    ThemeManager theme;
    GlobalHotkey hotkey;
    Updater updater;
    platform::ignoreMovesOfHiddenWindows();
    fonts.wait();
    connectTheme(app, theme, settings);
    QPixmapCache::setCacheLimit(pictureLimit);
    PluginManager plugins;
    SettingsPlugin *settingsPlugin =
        builtinplugins::registerAll(plugins, launcher, settings, hotkey);
    MainWindow window(&launcher, &plugins, &settings, &updater);
    window.setWindowIcon(appIcon);
    FloatIcon floatIcon(&settings, &theme, &window);
    showFloatIcon(floatIcon, settings);

    connectSecondStart(app, window);
    window.showAndActivate();
    if (request && request->verb == InstanceRequest::Verb::Query) {
        carryOut(*request, window);
    }
    const auto desktopHotkeys = platform::createDesktopHotkeys(window.windowHandle());
    HotkeyRegistration registration(&hotkey, &plugins, &settings, desktopHotkeys.get());
    connectHotkeys(hotkey, registration, settings, window);
    tellHotkeyOrigins(*settingsPlugin, registration, desktopHotkeys.get());
    QSystemTrayIcon tray(appIcon);
    QMenu trayMenu;
    showTray(tray, trayMenu, window, *settingsPlugin);
    greet(tray, launcher, hotkey, settings);
    return SingleApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    const CommandLine commandLine = CommandLine::parse(argc, argv);
    if (const std::optional<int> status = commandlineanswer::answer(commandLine, argc, argv)) {
        return *status;
    }
    commandlineanswer::keepQtArguments(commandLine, argc, argv);

    Logger::instance().init({});
    qInstallMessageHandler(startMessageHandler);
    platform::chooseWindowSystem();
    // Without a request, a second process of the same user notifies the first one and ends here.
    SingleApplication app(argc, argv, commandLine.request.has_value(),
                          SingleApplication::Mode::User, instancechannel::timeout,
                          instancechannel::instanceName);
    qInstallMessageHandler(qtMessageHandler);
    if (app.isSecondary()) { // another process was faster
        const QByteArray message = commandLine.request->toMessage();
        return app.sendMessage(message, instancechannel::timeout) ? exitstatus::succeeded
                                                                  : exitstatus::failed;
    }
    platform::unsetPrivateVariables();
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QuitFilter quitFilter;
    app.installEventFilter(&quitFilter);
    return run(app, commandLine.request);
}
