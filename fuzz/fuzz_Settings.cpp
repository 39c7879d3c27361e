// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/Settings.h"

#include "fuzz/Fuzz.h"
#include "settings/SearchEngine.h"
#include "settings/ThemeManager.h"
#include "support/TestHome.h"

#include <QUrl>
#include <QUrlQuery>

#include <algorithm>

using namespace Qt::StringLiterals;

// The input is the content of the settings file.

namespace {

using fuzz::check;

void checkSearch(const QString &engine, const QString &text)
{
    const QUrl url(webSearchUrl(engine, text), QUrl::StrictMode);
    check(url.isValid() && url.scheme() == "https"_L1, "a web search without a valid address");
    const QString address = url.toString(QUrl::RemoveQuery);
    const bool isKnown = std::any_of(
        std::begin(searchEngines), std::end(searchEngines), [&](const SearchEngine &each) {
            return QUrl(each.query).toString(QUrl::RemoveQuery) == address;
        });
    check(isKnown, "a web search at another address");
    const auto items = QUrlQuery(url).queryItems(QUrl::FullyEncoded);
    // Not decoded by QUrl, which leaves some characters encoded. A half of a surrogate pair has no
    // form in an address.
    check(items.size() == 1
              && QByteArray::fromPercentEncoding(items.first().second.toLatin1()) == text.toUtf8(),
          "a web search for another text");
}

// Setting a preference to the value that it has changes nothing.
void checkSetters(Settings &settings)
{
    int changes = 0;
    const auto count = [&changes] {
        ++changes;
    };
    QObject::connect(&settings, &Settings::globalHotkeyChanged, &settings, count);
    QObject::connect(&settings, &Settings::searchEngineChanged, &settings, count);
    QObject::connect(&settings, &Settings::themeChanged, &settings, count);
    QObject::connect(&settings, &Settings::showFloatIconChanged, &settings, count);
    QObject::connect(&settings, &Settings::pluginEnabledChanged, &settings, count);
    QObject::connect(&settings, &Settings::pluginHotkeyChanged, &settings, count);
    QObject::connect(&settings, &Settings::pluginAutoEnterChanged, &settings, count);
    QObject::connect(&settings, &Settings::autoHideOnFocusLossChanged, &settings, count);
    settings.setGlobalHotkey(settings.globalHotkey());
    settings.setSearchEngine(settings.searchEngine());
    settings.setTheme(settings.theme());
    settings.setShowFloatIcon(settings.showFloatIcon());
    settings.setPluginEnabled(u"calc"_s, settings.isPluginEnabled(u"calc"_s));
    settings.setPluginHotkey(u"calc"_s, settings.pluginHotkey(u"calc"_s));
    settings.setPluginAutoEnter(settings.pluginAutoEnter());
    settings.setAutoHideOnFocusLoss(settings.autoHideOnFocusLoss());
    check(changes == 0, "a preference changes when it is set to its value");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    fuzz::startApplication(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray content = fuzz::bytesOf(data, size);
    // Such a value may be of any Qt type, for which Qt allocates any amount of memory.
    if (content.contains("@Variant")) {
        return -1;
    }
    static const QString path = testhome::writeFile(u"config/Vaskel/Vaskel.conf"_s, {});
    fuzz::writeFile(path, content);
    Settings settings;
    checkSearch(settings.searchEngine(), settings.theme() + settings.globalHotkey());
    ThemeManager theme;
    theme.setTheme(settings.theme());
    check(theme.theme() == settings.theme(), "a theme of another name");
    static_cast<void>(settings.pluginHotkey(u"cd"_s));
    static_cast<void>(settings.floatIconPos());
    static_cast<void>(settings.windowPosition());
    checkSetters(settings);
    return 0;
}
