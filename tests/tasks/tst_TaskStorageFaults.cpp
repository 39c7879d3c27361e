// SPDX-License-Identifier: GPL-3.0-or-later
#include "tasks/TaskStorage.h"

#include "support/TestProgram.h"
#include "tasks/TaskFile.h"
#include "tasks/TaskRepository.h"
#include "tasks/TaskService.h"

#include <QDir>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <linux/capability.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

void fill(TaskRepository &repository, int count, int noteLength = 100)
{
    for (int i = 0; i < count; ++i) {
        Task task;
        task.id = QString::number(i);
        task.title = u"one of %1"_s.arg(count);
        task.note = QString(noteLength, u'n');
        repository.addTask(task);
    }
}

QByteArray contentOf(const TaskRepository &repository)
{
    return QJsonDocument(repository.toJson()).toJson(QJsonDocument::Compact);
}

QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

/// A number in memory that is shared with a child process.
class SharedNumber
{
public:
    SharedNumber()
        : m_number(static_cast<volatile int *>(
            mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)))
    {
    }

    ~SharedNumber() { munmap(const_cast<int *>(m_number), sizeof(int)); }

    Q_DISABLE_COPY_MOVE(SharedNumber)

    volatile int &value() { return *m_number; }

private:
    volatile int *m_number;
};

/// Limits the size of files that this process writes while it exists. Like on a full disk, a write
/// stops there, and the next one fails. Needs no privileges.
class FullDisk
{
public:
    explicit FullDisk(rlim_t size)
        : m_oldHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_oldLimit);
        const rlimit limit{size, m_oldLimit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_oldLimit);
        std::signal(SIGXFSZ, m_oldHandler);
    }

    Q_DISABLE_COPY_MOVE(FullDisk)

private:
    void (*m_oldHandler)(int);
    rlimit m_oldLimit;
};

/// Mounts a small disk on a folder while it exists; only this process sees it.
class SmallDisk
{
public:
    SmallDisk(const QString &folder, int bytes)
        : m_folder(QFile::encodeName(folder))
        , m_isMounted(enterNamespace()
                      && mount("tmpfs", m_folder.constData(), "tmpfs", 0,
                               QByteArray("size=" + QByteArray::number(bytes)).constData())
                             == 0)
    {
    }

    ~SmallDisk()
    {
        if (m_isMounted) {
            umount2(m_folder.constData(), MNT_DETACH);
        }
    }

    Q_DISABLE_COPY_MOVE(SmallDisk)

    /// False if the system allows no mounts.
    bool isMounted() const { return m_isMounted; }

private:
    static bool enterNamespace()
    {
        const uint user = getuid();
        const uint group = getgid();
        if (unshare(CLONE_NEWNS) != 0) {
            // Without privileges a user namespace grants them; map each id to itself.
            if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0 || !write("/proc/self/setgroups", "deny")
                || !write("/proc/self/uid_map", u"%1 %1 1"_s.arg(user).toLatin1())
                || !write("/proc/self/gid_map", u"%1 %1 1"_s.arg(group).toLatin1())) {
                return false;
            }
        }
        return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    }

    static bool write(const char *path, const QByteArray &text)
    {
        QFile file(QString::fromLatin1(path));
        return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)
               && file.write(text) == text.size();
    }

    QByteArray m_folder;
    bool m_isMounted;
};

/// Makes a folder read-only while it exists. Drops the capability by which root ignores
/// permissions.
class ReadOnlyFolder
{
public:
    explicit ReadOnlyFolder(const QString &path)
        : m_path(path)
    {
        syscall(SYS_capget, &m_header, m_oldRights);
        __user_cap_data_struct rights[2] = {m_oldRights[0], m_oldRights[1]};
        rights[0].effective &= ~(1U << CAP_DAC_OVERRIDE);
        syscall(SYS_capset, &m_header, rights);
        QFile::setPermissions(m_path, QFile::ReadOwner | QFile::ExeOwner);
    }

    ~ReadOnlyFolder()
    {
        QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        syscall(SYS_capset, &m_header, m_oldRights);
    }

    Q_DISABLE_COPY_MOVE(ReadOnlyFolder)

private:
    QString m_path;
    __user_cap_header_struct m_header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct m_oldRights[2];
};

} // namespace

class tst_TaskStorageFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void survivesBeingKilledAtAnyMoment();
    void keepsTheOldFileOnAFullDisk_data();
    void keepsTheOldFileOnAFullDisk();
    void keepsWorkingOnAFullDisk();
    void keepsWorkingOnASmallFullDisk();
    void keepsWorkingWithAReadOnlyFolder();

private:
    const TaskStorage m_storage{taskfile::path()};
};

void tst_TaskStorageFaults::init()
{
    testhome::reset();
}

void tst_TaskStorageFaults::survivesBeingKilledAtAnyMoment()
{
    // A folder in memory makes a thousand rounds take seconds only.
    const QTemporaryDir folder(QFileInfo(u"/dev/shm"_s).isWritable() ? u"/dev/shm/tasks-XXXXXX"_s
                                                                     : QString());
    QFile file(folder.filePath(u"todo.json"_s));
    const TaskStorage storage(file.fileName());
    TaskRepository oldTasks;
    fill(oldTasks, 3);
    TaskRepository newTasks;
    fill(newTasks, 20, 10000);
    SharedNumber saving;
    const auto save = [&](const TaskRepository &tasks) {
        saving.value() = 1;
        const bool isSaved = storage.save(&tasks);
        saving.value() = 0;
        return isSaved;
    };

    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 20; ++i) {
        QVERIFY(save(newTasks) && save(oldTasks));
    }
    const auto microseconds = quint32(timer.nsecsElapsed() / 1000 / 20);

    // On a busy machine, many children are killed before they begin.
    constexpr int manyRounds = 20000;
    QHash<QByteArray, int> found{{contentOf(oldTasks), 0}, {contentOf(newTasks), 0}};
    int killedWithinASave = 0;
    for (int i = 0; i < 1000 || (killedWithinASave <= 500 && i < manyRounds); ++i) {
        const pid_t child = fork();
        QVERIFY(child >= 0);
        if (child == 0) {
            for (;;) {
                save(newTasks);
                save(oldTasks);
            }
        }
        usleep(QRandomGenerator::global()->bounded(2 * microseconds));
        QCOMPARE(kill(child, SIGKILL), 0);
        QCOMPARE(waitpid(child, nullptr, 0), child);

        killedWithinASave += saving.value();
        saving.value() = 0;
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray content = file.readAll();
        file.close();
        QVERIFY2(found.contains(content), content.constData());
        ++found[content];
    }

    qInfo("%d old, %d new, %d killed within a save", found[contentOf(oldTasks)],
          found[contentOf(newTasks)], killedWithinASave);
    QVERIFY(found[contentOf(oldTasks)] > 0);
    QVERIFY(found[contentOf(newTasks)] > 0);
    QVERIFY(killedWithinASave > 500);
}

void tst_TaskStorageFaults::keepsTheOldFileOnAFullDisk_data()
{
    QTest::addColumn<int>("taskCount");
    QTest::addColumn<int>("percent");       // of the file that fits on the disk
    for (const int taskCount : {1, 1000}) { // less and more than Qt buffers
        for (const int percent : {0, 1, 50, 99}) {
            QTest::addRow("%d tasks, room for %d %%", taskCount, percent) << taskCount << percent;
        }
    }
}

void tst_TaskStorageFaults::keepsTheOldFileOnAFullDisk()
{
    QFETCH(const int, taskCount);
    QFETCH(const int, percent);
    const TaskRepository none;
    QVERIFY(m_storage.save(&none));
    TaskRepository tasks;
    fill(tasks, taskCount);
    {
        const FullDisk disk(contentOf(tasks).size() * percent / 100);
        QVERIFY(!m_storage.save(&tasks));
    }
    QCOMPARE(taskfile::bytes(), "[]"_ba);
    QCOMPARE(filesIn(testhome::appDataPath()), QStringList{u"todo.json"_s});

    QVERIFY(m_storage.save(&tasks));
    QCOMPARE(taskfile::bytes(), contentOf(tasks));
}

void tst_TaskStorageFaults::keepsWorkingOnAFullDisk()
{
    TaskService service;
    const QString first = service.createTask(u"first"_s);
    const QByteArray stored = taskfile::bytes();
    QString second;
    {
        const FullDisk disk(10);
        second = service.createTask(u"second"_s);
        service.setCompleted(first, true);
    }
    QVERIFY(service.repository()->contains(second));
    QVERIFY(service.repository()->task(first).completed);
    QCOMPARE(taskfile::bytes(), stored);

    service.deleteTask(first);
    QCOMPARE(taskfile::tasksByTitle().keys(), QStringList{u"second"_s});
}

void tst_TaskStorageFaults::keepsWorkingOnASmallFullDisk()
{
    constexpr int size = 64 * 1024;
    const SmallDisk disk(testhome::appDataPath(), size);
    if (!disk.isMounted()) {
        QSKIP("This system lets no test mount a disk.");
    }
    TaskService service;
    const QString first = service.createTask(u"first"_s);
    const QByteArray stored = taskfile::bytes();
    QVERIFY(stored.contains("first"));

    // The first note exceeds the whole disk, the second one what the old file leaves of it.
    for (const int length : {2 * size, size - int(stored.size())}) {
        service.updateNote(first, QString(length, u'n'));
        QCOMPARE(service.repository()->task(first).note.size(), length);
        QCOMPARE(taskfile::bytes(), stored);
        QCOMPARE(filesIn(testhome::appDataPath()), QStringList{u"todo.json"_s});
    }

    service.updateNote(first, u"short"_s);
    QCOMPARE(taskfile::tasksByTitle().value(u"first"_s).value("note"_L1).toString(), u"short"_s);
}

void tst_TaskStorageFaults::keepsWorkingWithAReadOnlyFolder()
{
    TaskService service;
    const QString first = service.createTask(u"first"_s);
    const QByteArray stored = taskfile::bytes();
    const QString warning = u"Cannot write task storage: \"%1\""_s.arg(taskfile::path());
    {
        const ReadOnlyFolder folder(testhome::appDataPath());
        QTest::ignoreMessage(QtWarningMsg, qPrintable(warning));
        service.setCompleted(first, true);
        QTest::ignoreMessage(QtWarningMsg, qPrintable(warning));
        QVERIFY(!m_storage.save(service.repository()));
    }
    QVERIFY(service.repository()->task(first).completed);
    QCOMPARE(taskfile::bytes(), stored);

    service.persist();
    QVERIFY(taskfile::tasksByTitle().value(u"first"_s).value("completed"_L1).toBool());
}

VASKEL_TEST(tst_TaskStorageFaults, QCoreApplication)
#include "tst_TaskStorageFaults.moc"
