// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// A web search engine that the user can choose.
struct SearchEngine
{
    QLatin1StringView name;  ///< stored, compared exactly, shown untranslated
    QLatin1StringView query; ///< address of a search, without the text at its end
};

/// All engines, in the order of the settings page.
inline constexpr SearchEngine searchEngines[] = {
    {QLatin1StringView("Bing"), QLatin1StringView("https://www.bing.com/search?q=")},
    {QLatin1StringView("Google"), QLatin1StringView("https://www.google.com/search?q=")},
    {QLatin1StringView("Baidu"), QLatin1StringView("https://www.baidu.com/s?wd=")},
    {QLatin1StringView("DuckDuckGo"), QLatin1StringView("https://duckduckgo.com/?q=")},
};

/// The engine if none is stored, or an unknown one.
inline constexpr SearchEngine defaultSearchEngine = searchEngines[0];

/// Returns the address of a web search for the text; an unknown engine gives the default one.
QString webSearchUrl(const QString &engine, const QString &text);
