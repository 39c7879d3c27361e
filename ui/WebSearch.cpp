// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/WebSearch.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

struct Engine
{
    QLatin1StringView name;
    QLatin1StringView query; ///< the address up to the search text
};

constexpr Engine engines[] = {
    {"Google"_L1, "https://www.google.com/search?q="_L1},
    {"Baidu"_L1, "https://www.baidu.com/s?wd="_L1},
    {"DuckDuckGo"_L1, "https://duckduckgo.com/?q="_L1},
};
constexpr auto defaultQuery = "https://www.bing.com/search?q="_L1;

} // namespace

QString webSearchUrl(const QString &engine, const QString &text)
{
    const QString encoded = QString::fromLatin1(QUrl::toPercentEncoding(text));
    for (const Engine &known : engines) {
        if (engine == known.name) {
            return known.query + encoded;
        }
    }
    return defaultQuery + encoded;
}
