// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/SearchEngine.h"

#include <QUrl>

#include <algorithm>

QString webSearchUrl(const QString &engine, const QString &text)
{
    const auto *known =
        std::find_if(std::begin(searchEngines), std::end(searchEngines),
                     [&engine](const SearchEngine &each) { return each.name == engine; });
    const SearchEngine &chosen = known == std::end(searchEngines) ? defaultSearchEngine : *known;
    return chosen.query + QString::fromLatin1(QUrl::toPercentEncoding(text));
}
