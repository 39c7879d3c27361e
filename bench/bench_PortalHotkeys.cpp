// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the hotkeys of the desktop's portal cost the GUI thread at the start: the time until bind()
// returns, and the processor time of the thread from then on until they are bound. The portal is
// the stand-in of the tests.
#include "platform/linux/PortalHotkeys.h"

#include <QAbstractEventDispatcher>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QGuiApplication>
#include <QProcess>
#include <QTimer>

#include <benchmark/benchmark.h>

#include <chrono>
#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using platform::PortalHotkeys;

namespace {

const QList<PortalHotkeys::Hotkey> hotkeys = {
    {{}, u"Ctrl+Alt+Space"_s, u"Show or hide the window"_s},
    {u"calc"_s, u"Ctrl+Alt+C"_s, u"Show the command calc"_s},
    {u"todo"_s, u"Ctrl+Alt+T"_s, u"Show the command todo"_s},
};

/// Adds up the time in which the event loop of this thread does not wait for events.
class BusyTime : public QObject
{
public:
    BusyTime()
    {
        const auto *dispatcher = QAbstractEventDispatcher::instance();
        connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, &BusyTime::pause);
        connect(dispatcher, &QAbstractEventDispatcher::awake, this,
                [this] { m_begin = Clock::now(); });
    }

    std::chrono::duration<double, std::milli> sum()
    {
        pause();
        return m_sum;
    }

private:
    using Clock = std::chrono::steady_clock;

    void pause()
    {
        if (m_begin) {
            m_sum += Clock::now() - *m_begin;
            m_begin.reset();
        }
    }

    std::optional<Clock::time_point> m_begin = Clock::now();
    Clock::duration m_sum{};
};

/// Returns false after a minute.
template <typename Condition> bool waitFor(Condition condition)
{
    QTimer alarm;
    alarm.setSingleShot(true);
    alarm.start(1min);
    while (!condition()) {
        if (!alarm.isActive()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

bool startPortal(QProcess &portal)
{
    portal.setStandardOutputFile(QProcess::nullDevice());
    portal.start(u"/usr/bin/python3"_s, {u"-B"_s, u"-m"_s, u"dbusmock"_s, u"--session"_s,
                                         u"--template"_s, QStringLiteral(PORTAL_STAND_IN)});
    if (!portal.waitForStarted()) {
        return false;
    }
    // Like the program, where Qt has a connection to the bus long before.
    const QDBusConnectionInterface *bus = QDBusConnection::sessionBus().interface();
    QTimer poll; // for events
    poll.start(20ms);
    return waitFor(
        [&] { return bus->servicePid(u"org.freedesktop.portal.Desktop"_s) == portal.processId(); });
}

void measure(benchmark::State &state)
{
    std::chrono::duration<double, std::milli> total{};
    for ([[maybe_unused]] auto _ : state) {
        BusyTime busy;
        PortalHotkeys portal(nullptr);
        portal.bind(hotkeys);
        if (!waitFor([&] { return portal.isBound(); })) {
            state.SkipWithError("The hotkeys are not bound.");
            return;
        }
        total += busy.sum();
    }
    state.counters["value"] = total.count() / double(state.iterations());
    state.SetLabel("ms");
}

} // namespace

BENCHMARK(measure)->Name("portal/measured")->Iterations(1);

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    QProcess portal;
    if (!startPortal(portal)) {
        qFatal("The stand-in for the portal does not start.");
    }
    benchmark::RunSpecifiedBenchmarks();
    portal.terminate();
    portal.waitForFinished();
    return 0;
}
