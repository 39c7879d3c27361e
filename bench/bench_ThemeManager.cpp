// SPDX-License-Identifier: GPL-3.0-or-later
//
// The cost of a complete style sheet compared with a copy of its template.
#include "settings/ThemeManager.h"

#include <QFile>
#include <QGuiApplication>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

QString templateText()
{
    QFile file(u":/assets/style.qss"_s);
    return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void measured(benchmark::State &state)
{
    const ThemeManager theme;
    if (theme.styleSheet().isEmpty()) {
        state.SkipWithError("there is no template");
        return;
    }
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(theme.styleSheet());
    }
}

void measureFloor(benchmark::State &state)
{
    const QString text = templateText();
    if (text.isEmpty()) {
        state.SkipWithError("there is no template");
        return;
    }
    for ([[maybe_unused]] auto _ : state) {
        QString copy = text;
        copy.detach();
        benchmark::DoNotOptimize(copy);
    }
}

} // namespace

BENCHMARK(measured)->Name("styleSheet/measured");
BENCHMARK(measureFloor)->Name("styleSheet/floor");

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
