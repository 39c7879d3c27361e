// SPDX-License-Identifier: GPL-3.0-or-later
//
// Linked into the program that the end-to-end tests run, and into no other. If the variable
// VASKEL_TEST_WATCHDOG names a file, writes a line to it for each iteration of the event loop that
// took much of the thread's processor time, not counting the queries of plugins: the milliseconds,
// and the last event with its receiver. The reader of the file knows the limit.
#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QMetaEnum>
#include <QThread>
#include <QVariantList>

#include <cstdio>
#include <ctime>

class PluginManager;

namespace {

constexpr double noteworthy = 10; // milliseconds

// Unlike the time of a clock, this does not grow while other processes have the processor.
double threadMilliseconds()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

double queryMilliseconds = 0;

class EventLoopWatchdog : public QObject
{
public:
    EventLoopWatchdog(const char *path, QCoreApplication *app);
    ~EventLoopWatchdog() override { std::fclose(m_file); }
    Q_DISABLE_COPY_MOVE(EventLoopWatchdog)

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void beginIteration();

    std::FILE *const m_file;
    double m_begin = -1; // negative outside exec()
    const char *m_receiver = "";
    int m_event = 0;
};

EventLoopWatchdog::EventLoopWatchdog(const char *path, QCoreApplication *app)
    : QObject(app)
    , m_file(std::fopen(path, "a"))
{
    if (!m_file) {
        qFatal("cannot open the file of the watchdog");
    }
    const QAbstractEventDispatcher *dispatcher = QAbstractEventDispatcher::instance();
    const auto begin = [this] {
        beginIteration();
    };
    connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, begin);
    connect(dispatcher, &QAbstractEventDispatcher::awake, this, begin);
    app->installEventFilter(this);
}

bool EventLoopWatchdog::eventFilter(QObject *watched, QEvent *event)
{
    m_receiver = watched->metaObject()->className();
    m_event = event->type();
    return false;
}

// A nested loop, such as that of a menu, ends the iteration that has begun it: from then on the
// program answers the user.
void EventLoopWatchdog::beginIteration()
{
    const double taken = threadMilliseconds() - m_begin - queryMilliseconds;
    if (m_begin >= 0 && taken > noteworthy) {
        const char *name = QMetaEnum::fromType<QEvent::Type>().valueToKey(m_event);
        std::fprintf(m_file, "%.1f ms until %s of %s\n", taken, name ? name : "an event",
                     m_receiver);
        std::fflush(m_file);
    }
    queryMilliseconds = 0;
    m_begin = QThread::currentThread()->loopLevel() > 0 ? threadMilliseconds() : -1;
}

void startWatchdog()
{
    const QByteArray path = qgetenv("VASKEL_TEST_WATCHDOG");
    if (!path.isEmpty()) {
        new EventLoopWatchdog(path.constData(), QCoreApplication::instance());
    }
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(startWatchdog)

// The linker's option --wrap directs the calls of PluginManager::queryCommand to the first
// function, and the calls of the second one to the original.
#define QUERY_COMMAND "_ZN13PluginManager12queryCommandERK7QStringS2_"
QVariantList watchedQuery(PluginManager *manager, const QString &command,
                          const QString &arguments) __asm__("__wrap_" QUERY_COMMAND);
QVariantList originalQuery(PluginManager *manager, const QString &command,
                           const QString &arguments) __asm__("__real_" QUERY_COMMAND);

QVariantList watchedQuery(PluginManager *manager, const QString &command, const QString &arguments)
{
    const double begin = threadMilliseconds();
    QVariantList records = originalQuery(manager, command, arguments);
    queryMilliseconds += threadMilliseconds() - begin;
    return records;
}
