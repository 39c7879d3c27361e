// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/RegularFile.h"

#include "platform/AutoStart.h"
#include "platform/StartMenu.h"
#include "platform/linux/DefaultPrograms.h"
#include "platform/linux/InstalledIconThemes.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"
#include "tasks/TaskRepository.h"
#include "tasks/TaskStorage.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <algorithm>
#include <functional>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

/// A reader that waits for a pipe runs into the time limit of the test.
class tst_RegularFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testhome::reset(); }

    void followsASymbolicLinkToAFile();
    void refusesWhatIsNoFile_data();
    void refusesWhatIsNoFile();
    void noReaderWaitsForAPipe_data();
    void noReaderWaitsForAPipe();
};

namespace {

QString homePath(const QString &relativePath)
{
    return testhome::path() + u'/' + relativePath;
}

void makePipe(const QString &path)
{
    QDir().mkpath(QFileInfo(path).path());
    QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), S_IRWXU), 0);
}

void makeSocket(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    QVERIFY(size_t(name.size()) < sizeof(address.sun_path));
    std::copy(name.begin(), name.end(), address.sun_path);
    const int server = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    QCOMPARE(::bind(server, reinterpret_cast<const sockaddr *>(&address), sizeof(address)), 0);
    ::close(server);
}

} // namespace

void tst_RegularFile::followsASymbolicLinkToAFile()
{
    const QString target = testhome::writeFile(u"target"_s, "content");
    QVERIFY(QFile::link(target, homePath(u"link"_s)));
    QFile file(homePath(u"link"_s));
    QVERIFY(platform::openRegularFile(file));
    QCOMPARE(file.readAll(), "content");
}

void tst_RegularFile::refusesWhatIsNoFile_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("pipe") << homePath(u"pipe"_s);
    QTest::newRow("symbolic link to a pipe") << homePath(u"link"_s);
    QTest::newRow("socket") << homePath(u"socket"_s);
    QTest::newRow("endless device") << u"/dev/zero"_s;
    QTest::newRow("device without content") << u"/dev/null"_s;
    QTest::newRow("terminal") << u"/dev/tty"_s;
}

void tst_RegularFile::refusesWhatIsNoFile()
{
    QFETCH(QString, path);
    makePipe(homePath(u"pipe"_s));
    makeSocket(homePath(u"socket"_s));
    QVERIFY(QFile::link(homePath(u"pipe"_s), homePath(u"link"_s)));
    QVERIFY(QFileInfo::exists(path));
    QFile file(path);
    QVERIFY(!platform::openRegularFile(file));
    QVERIFY(!file.isOpen());
}

void tst_RegularFile::noReaderWaitsForAPipe_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<std::function<bool()>>("answersNothing");
    const auto row = [](const char *tag, const QString &path, const std::function<bool()> &reader) {
        QTest::newRow(tag) << homePath(path) << reader;
    };
    row("desktop entry", u"data/applications/a.desktop"_s, [] {
        const QString root = homePath(u"data/applications"_s);
        return platform::startMenuNames(root, {root + "/a.desktop"_L1}).isEmpty();
    });
    row("default programs", u"config/mimeapps.list"_s,
        [] { return platform::defaultPrograms("text/plain").isEmpty(); });
    row("associated programs", u"data/applications/mimeinfo.cache"_s,
        [] { return platform::associatedPrograms("text/plain").isEmpty(); });
    row("icon theme", u"icons/Any/index.theme"_s,
        [] { return !platform::isIconTheme({homePath(u"icons"_s)}, u"Any"_s); });
    row("tasks", u"todo.json"_s, [] {
        TaskRepository repository;
        return !TaskStorage(homePath(u"todo.json"_s)).load(&repository);
    });
    row("auto-start", u"config/autostart/Vaskel.desktop"_s, [] {
        platform::applyAutoStart(true);
        return QFileInfo(homePath(u"config/autostart/Vaskel.desktop"_s)).isFile();
    });
}

void tst_RegularFile::noReaderWaitsForAPipe()
{
    QFETCH(QString, path);
    QFETCH(std::function<bool()>, answersNothing);
    makePipe(path);
    QVERIFY(answersNothing());
}

VASKEL_TEST(tst_RegularFile, QCoreApplication)
#include "tst_RegularFile.moc"
