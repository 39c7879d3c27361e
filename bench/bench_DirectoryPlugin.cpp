// SPDX-License-Identifier: GPL-3.0-or-later
//
// The cost of "cd" for a large folder with cached icons, from the search to the painted rows. The
// floor reads the same folder and gives a bare list the same texts and icons.
#include "BenchHome.h"
#include "core/PluginManager.h"
#include "core/ResultRecord.h"
#include "launcher/AppLauncher.h"
#include "plugins/DirectoryPlugin.h"
#include "settings/Settings.h"
#include "ui/CommandLineEdit.h"
#include "ui/MainWindow.h"
#include "update/Updater.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int fileCount = 10000;

struct Row
{
    QString text;
    QString icon;
};

void writeFiles(const QString &folder)
{
    QDir().mkpath(folder);
    for (int index = 0; index < fileCount; ++index) {
        QFile file(folder + u"/Document %1.txt"_s.arg(index));
        if (!file.open(QIODevice::WriteOnly)) {
            qFatal("cannot write the folder");
        }
    }
}

std::vector<Row> rowsOf(const QString &folder)
{
    std::vector<Row> rows;
    const QVariantList records = DirectoryPlugin().query(folder).mid(1);
    for (const QVariant &record : records) {
        const QVariantMap fields = record.toMap();
        rows.push_back({recordTitle(fields) + u'\n' + recordSubtitle(fields), recordIcon(fields)});
        if (!QFile::exists(rows.back().icon)) {
            qFatal("a file has no icon");
        }
    }
    return rows;
}

void measured(benchmark::State &state, AppLauncher &launcher, const QString &folder)
{
    Settings settings;
    PluginManager plugins;
    plugins.setSettings(&settings);
    plugins.registerPlugin(new DirectoryPlugin(&plugins));
    Updater updater;
    MainWindow window(&launcher, &plugins, &settings, &updater);
    window.show();
    window.findChild<CommandLineEdit *>()->setText("cd "_L1 + folder);
    while (state.KeepRunning()) {
        QMetaObject::invokeMethod(&window, "performSearch");
        QCoreApplication::processEvents();
    }
    if (window.findChild<QListWidget *>()->count() != fileCount + 1) {
        qFatal("the list does not show the files");
    }
}

void measureFloor(benchmark::State &state, const QString &folder, const std::vector<Row> &rows)
{
    QListWidget list;
    list.resize(720, 344);
    list.setIconSize(QSize(40, 40));
    list.setUniformItemSizes(true);
    list.show();
    while (state.KeepRunning()) {
        const QFileInfoList entries = QDir(folder).entryInfoList(
            QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot, QDir::DirsFirst);
        benchmark::DoNotOptimize(entries.size());
        list.clear();
        for (const Row &row : rows) {
            list.addItem(new QListWidgetItem(QIcon(row.icon), row.text));
        }
        list.setCurrentRow(0);
        QCoreApplication::processEvents();
    }
}

} // namespace

int main(int argc, char *argv[])
{
    benchmark::Initialize(&argc, argv);
    const QTemporaryDir home;
    useHome(home.path());
    const QString folder = home.path() + "/documents"_L1;
    writeFiles(folder);
    const QApplication app(argc, argv);

    AppLauncher launcher;
    const std::vector<Row> rows = rowsOf(folder); // the first listing, which draws the icons

    benchmark::RegisterBenchmark("DirectoryPlugin.list/measured", [&](benchmark::State &state) {
        measured(state, launcher, folder);
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("DirectoryPlugin.list/floor", [&](benchmark::State &state) {
        measureFloor(state, folder, rows);
    })->Unit(benchmark::kMillisecond);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
