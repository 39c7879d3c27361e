// SPDX-License-Identifier: GPL-3.0-or-later
//
// The cost of AppLauncher::search compared with the substring tests that any filter needs: the four
// stored texts of each entry, none of which matches.
#include "BenchHome.h"
#include "launcher/AppLauncher.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <array>

using namespace Qt::StringLiterals;

/// Gives access to the stored texts; copies would be closer together in memory and faster to read.
class AppLauncherBench
{
public:
    static const QList<AppEntry> &entries(const AppLauncher &launcher) { return launcher.m_apps; }
};

namespace {

constexpr int entryCount = 10000;
constexpr int builtinCount = 8;

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

/// Creates a start menu of real desktop entries in the temporary home.
void writeStartMenu(const QString &home)
{
    for (int index = 0; index < entryCount; ++index) {
        const QString folder = home + u"/data/applications/Group %1"_s.arg(index % 20);
        QDir().mkpath(folder);
        QFile file(folder + u"/%1.desktop"_s.arg(index));
        if (!file.open(QIODevice::WriteOnly)) {
            qFatal("cannot write the start menu");
        }
        file.write("[Desktop Entry]\nType=Application\nExec=true\nName=" + appName(index).toUtf8()
                   + '\n');
    }
}

// Created in main(), after the application object.
const AppLauncher *launcher = nullptr;

void measured(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state) {
        QVariantList records = launcher->search(query);
        benchmark::DoNotOptimize(records);
    }
}

void measureFloor(benchmark::State &state)
{
    const QList<AppEntry> &entries = AppLauncherBench::entries(*launcher);
    for ([[maybe_unused]] auto _ : state) {
        int found = 0;
        for (const AppEntry &entry : entries) {
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
    const QTemporaryDir home;
    useHome(home.path());
    writeStartMenu(home.path());
    const QApplication app(argc, argv);

    const AppLauncher made;
    const qsizetype entries = AppLauncherBench::entries(made).size();
    if (entries != entryCount + builtinCount || !made.search(query).isEmpty()) {
        qFatal("the catalogue holds %lld entries", qlonglong(entries));
    }
    launcher = &made;
    benchmark::RunSpecifiedBenchmarks();
    launcher = nullptr;
    return 0;
}
