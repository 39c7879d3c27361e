// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// A web search engine that the user can choose.
struct SearchEngine
{
    QLatin1StringView name;  ///< as it is stored, compared exactly, and shown untranslated
    QLatin1StringView query; ///< the address up to the search text
};

/// All engines, in the order in which the settings page lists them.
inline constexpr SearchEngine searchEngines[] = {
    {QLatin1StringView("Bing"), QLatin1StringView("https://www.bing.com/search?q=")},
    {QLatin1StringView("Google"), QLatin1StringView("https://www.google.com/search?q=")},
    {QLatin1StringView("Baidu"), QLatin1StringView("https://www.baidu.com/s?wd=")},
    {QLatin1StringView("DuckDuckGo"), QLatin1StringView("https://duckduckgo.com/?q=")},
};

/// The engine of a user who has chosen none, or one that is not in the list.
inline constexpr SearchEngine defaultSearchEngine = searchEngines[0];

/// The address at which the engine of that name searches the web for a text.
QString webSearchUrl(const QString &engine, const QString &text);
