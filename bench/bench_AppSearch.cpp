// SPDX-License-Identifier: GPL-3.0-or-later
//
// The cost of searchApps(), which AppLauncher::search calls, compared with the substring tests that
// any filter needs: the four stored texts of each entry, none of which matches.
#include "launcher/AppEntry.h"
#include "launcher/AppSearch.h"

#include <QList>
#include <QVariantList>

#include <benchmark/benchmark.h>

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr int entryCount = 10000;

// No name contains it, but many contain its first letters.
const QString query = u"archivist"_s;

/// Typical start-menu names: a vendor, a kind of program and a version, some in Chinese.
QString appName(int index)
{
    static const std::array vendors{u"Libre"_s,    u"Arctic"_s,  u"Open"_s, u"腾讯"_s,
                                    u"Blue Fox"_s, u"Kestrel"_s, u"网易"_s, u"Northern"_s};
    static const std::array kinds{u"Archive Manager"_s, u"Text Editor"_s, u"音乐"_s,
                                  u"Photo Studio"_s,    u"计算器"_s,      u"Terminal"_s,
                                  u"Media Player"_s,    u"文件管理器"_s,  u"Archiver"_s,
                                  u"Web Browser"_s};
    return u"%1 %2 %3"_s.arg(vendors[index % vendors.size()], kinds[index / 7 % kinds.size()])
        .arg(index);
}

/// The catalogue of a start menu with twenty subfolders.
QList<AppEntry> makeCatalogue()
{
    QList<AppEntry> entries;
    for (int index = 0; index < entryCount; ++index) {
        const QString path =
            u"/usr/share/applications/Group %1/%2.desktop"_s.arg(index % 20).arg(index);
        entries.append(AppEntry(appName(index), path, u"Start Menu / Group %1"_s.arg(index % 20),
                                u"/tmp/Vaskel/icons/%1.png"_s.arg(index)));
    }
    return entries;
}

// Created in main(). Both benchmarks read it: a copy would be closer together in memory and faster.
const QList<AppEntry> *catalogue = nullptr;

void measured(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state) {
        QVariantList records = searchApps(*catalogue, query);
        benchmark::DoNotOptimize(records);
    }
}

void measureFloor(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state) {
        int found = 0;
        for (const AppEntry &entry : *catalogue) {
            found += entry.lowerName.indexOf(query, 0, Qt::CaseSensitive) != -1;
            found += entry.lowerDescription.indexOf(query, 0, Qt::CaseSensitive) != -1;
            found += entry.pinyin.indexOf(query, 0, Qt::CaseSensitive) != -1;
            found += entry.pinyinInitials.indexOf(query, 0, Qt::CaseSensitive) != -1;
        }
        benchmark::DoNotOptimize(found);
    }
}

} // namespace

BENCHMARK(measured)->Name("search_no_match/measured");
BENCHMARK(measureFloor)->Name("search_no_match/floor");

int main(int argc, char *argv[])
{
    benchmark::Initialize(&argc, argv);
    const QList<AppEntry> made = makeCatalogue();
    if (!searchApps(made, query).isEmpty()) {
        qFatal("an entry holds the query");
    }
    catalogue = &made;
    benchmark::RunSpecifiedBenchmarks();
    catalogue = nullptr;
    return 0;
}
