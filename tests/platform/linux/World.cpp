// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/World.h"

#include "platform/linux/Plocate.h"
#include "support/RunningProcess.h"
#include "support/TestHome.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QObject>
#include <QUrl>
#include <QWindow>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <xcb/xcb.h>

using namespace Qt::StringLiterals;

namespace {

QString startedMark(const QString &path)
{
    return testhome::path() + "/started-"_L1 + QFileInfo(path).completeBaseName();
}

QString writeEntry(const QString &path, const QString &name, const QString &furtherLine = {})
{
    const QString entry = u"[Desktop Entry]\nType=Application\nName=%1\nExec=touch \"%2\"\n%3\n"_s;
    return testhome::writeFile(path.mid(testhome::path().size() + 1),
                               entry.arg(name, startedMark(path), furtherLine).toUtf8());
}

struct Free
{
    void operator()(void *data) const { std::free(data); }
};

/// Another client of the X server.
class OtherClient
{
public:
    OtherClient() = default;
    ~OtherClient() { xcb_disconnect(m_connection); }
    Q_DISABLE_COPY_MOVE(OtherClient)

    /// Owns the selection of the first screen's compositor, or gives it up.
    void setCompositing(bool isCompositing)
    {
        const QByteArray name("_NET_WM_CM_S0");
        const auto cookie = xcb_intern_atom(m_connection, false, uint16_t(name.size()), name);
        const std::unique_ptr<xcb_intern_atom_reply_t, Free> atom(
            xcb_intern_atom_reply(m_connection, cookie, nullptr));
        const xcb_window_t owner = isCompositing ? window() : xcb_window_t(XCB_WINDOW_NONE);
        xcb_set_selection_owner(m_connection, owner, atom->atom, XCB_CURRENT_TIME);
        // The server answers in order, so it has handled the request when it replies to this one.
        const std::unique_ptr<xcb_get_input_focus_reply_t, Free> reply(
            xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    }

    /// Whether the flag of WM_HINTS lets the window accept the focus, or there is no such property.
    bool acceptsFocus(xcb_window_t window)
    {
        constexpr uint32_t length = 2;
        constexpr uint32_t inputHint = 1;
        const auto cookie = xcb_get_property(m_connection, false, window, XCB_ATOM_WM_HINTS,
                                             XCB_ATOM_WM_HINTS, 0, length);
        const std::unique_ptr<xcb_get_property_reply_t, Free> reply(
            xcb_get_property_reply(m_connection, cookie, nullptr));
        if (!reply || reply->value_len < length) {
            return true;
        }
        const auto *hints = static_cast<uint32_t *>(xcb_get_property_value(reply.get()));
        return !(hints[0] & inputHint) || hints[1];
    }

private:
    xcb_window_t window()
    {
        if (!m_window) {
            m_window = xcb_generate_id(m_connection);
            const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
            xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, screen->root, 0, 0, 1,
                              1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        }
        return m_window;
    }

    xcb_connection_t *m_connection = xcb_connect(nullptr, nullptr);
    xcb_window_t m_window = XCB_WINDOW_NONE;
};

OtherClient &otherClient()
{
    static OtherClient client;
    return client;
}

class FileManager : public QObject
{
    Q_OBJECT

public:
    QStringList folders;

public Q_SLOTS:
    void show(const QUrl &url) { folders.append(url.toLocalFile()); }
};

FileManager fileManager;

const QByteArray searchPath = qgetenv("PATH");

} // namespace

namespace world {

void reset()
{
    testhome::reset();
    std::signal(SIGPIPE, SIG_DFL);
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus");
    qputenv(qPrintable(privateVariable()), "private");
    qunsetenv("XDG_CURRENT_DESKTOP");
    QDesktopServices::unsetUrlHandler(u"file"_s);
    fileManager.folders.clear();
    qputenv("PATH", searchPath);
}

QString install(int root, const QString &fileName, const QString &name)
{
    const QString folder = root == 0 ? u"/data"_s : u"/system"_s;
    return writeEntry(testhome::path() + folder + "/applications/"_L1 + fileName + ".desktop"_L1,
                      name);
}

QString installWithIcon(const QString &fileName)
{
    const QString iconPath = testhome::path() + "/icon.png"_L1;
    QImage image(32, 32, QImage::Format_RGB32);
    image.fill(Qt::red);
    image.save(iconPath);
    return writeEntry(install(0, fileName, fileName), fileName, "Icon="_L1 + iconPath);
}

bool readsStartMenuFiles()
{
    return true;
}

void hide(const QString &path)
{
    writeEntry(path, u"Hidden"_s, u"NoDisplay=true"_s);
}

void damage(const QString &path)
{
    testhome::writeFile(path.mid(testhome::path().size() + 1), "nonsense");
}

bool isStarted(const QString &path)
{
    return QFile::exists(startedMark(path));
}

bool startsAtLogIn()
{
    return QFile::exists(testhome::path() + "/config/autostart/Vaskel.desktop"_L1);
}

void registerAtLogIn()
{
    testhome::writeFile(u"config/autostart/Vaskel.desktop"_s, "by hand");
}

// Qt asks the desktop; without one it cannot notice a change.
bool preferColors(platform::ColorScheme)
{
    return false;
}

bool setCompositing(bool isCompositing)
{
    otherClient().setCompositing(isCompositing);
    return true;
}

bool setDesktopHoldsHotkeys(bool isHolding)
{
    qunsetenv("XDG_SESSION_TYPE");
    if (isHolding) {
        qputenv("WAYLAND_DISPLAY", "wayland-0");
    } else {
        qunsetenv("WAYLAND_DISPLAY");
    }
    return true;
}

bool mayHaveFocus(const QWindow &window)
{
    // The request of the program's own connection must have arrived.
    QGuiApplication::sync();
    return otherClient().acceptsFocus(xcb_window_t(window.winId()));
}

bool isStillRunning(qint64 process)
{
    return isRunning(process);
}

QString privateVariable()
{
    return u"NOTIFY_SOCKET"_s;
}

bool failsToWriteIntoAClosedPipe()
{
    std::array<int, 2> ends = {};
    if (pipe(ends.data()) != 0) {
        return false;
    }
    close(ends[0]);
    const bool fails = write(ends[1], "x", 1) == -1 && errno == EPIPE;
    close(ends[1]);
    return fails;
}

QString writtenIntoFile(platform::ConsoleStream stream, const std::function<void()> &write)
{
    const int number = stream == platform::ConsoleStream::Output ? STDOUT_FILENO : STDERR_FILENO;
    QFile file(testhome::path() + "/console"_L1);
    if (!file.open(QIODevice::ReadWrite | QIODevice::Truncate)) {
        return {};
    }
    std::fflush(nullptr);
    const int original = fcntl(number, F_DUPFD_CLOEXEC, 0);
    dup2(file.handle(), number);
    write();
    std::fflush(nullptr);
    dup2(original, number);
    close(original);
    file.seek(0);
    return QString::fromUtf8(file.readAll());
}

void installFileManager()
{
    QDesktopServices::setUrlHandler(u"file"_s, &fileManager, "show");
}

bool canLackFileManager()
{
    return true;
}

QStringList shownFolders()
{
    return fileManager.folders;
}

QStringList installIndex(const QStringList &fileNames)
{
    QStringList paths;
    for (const QString &fileName : fileNames) {
        paths.append(testhome::writeFile("files/"_L1 + fileName, {}));
    }
    plocate::install();
    plocate::updateSystemDatabase();
    return paths;
}

QString installIncompleteIndex(const QString &fileName)
{
    plocate::install();
    plocate::holdUpdater(plocate::realUpdater());
    return testhome::writeFile("files/"_L1 + fileName, {});
}

void completeIndex()
{
    plocate::releaseUpdater();
}

void breakIndex()
{
    plocate::replaceProgram("exit 2");
}

bool removeIndex()
{
    plocate::remove();
    return true;
}

QString changeableFolder()
{
    QString path = testhome::path() + "/changeable"_L1;
    QDir().mkpath(path);
    QFile::setPermissions(path, QFile::permissions(path) | QFile::WriteOther);
    return path;
}

// Root owns the usual folders, so it gives one away.
QString foreignFolder()
{
    if (geteuid() != 0) {
        return u"/"_s;
    }
    constexpr uid_t nobody = 65534;
    const QString path = testhome::path() + "/foreign"_L1;
    QDir().mkpath(path);
    return chown(QFile::encodeName(path).constData(), nobody, nobody) == 0 ? path : QString();
}

QString foreignFile()
{
    constexpr uid_t nobody = 65534;
    if (::geteuid() != 0) {
        return u"/etc/hostname"_s;
    }
    QString path = testhome::writeFile(u"tmp/foreign"_s, "foreign");
    return ::chown(QFile::encodeName(path).constData(), nobody, nobody) == 0 ? path : QString();
}

QString endlessFile()
{
    QString path = testhome::path() + "/tmp/pipe"_L1;
    if (::mkfifo(QFile::encodeName(path).constData(), S_IRWXU) != 0) {
        qFatal("cannot make the pipe %s", qUtf8Printable(path));
    }
    return path;
}

bool isUpdated(const QString &downloadPath, const QString &programPath)
{
    QFile program(programPath);
    return program.open(QIODevice::ReadOnly) && program.readAll() == newProgram()
           && QFile::exists(testhome::path() + "/new-program-runs"_L1)
           && !QFile::exists(downloadPath);
}

QByteArray newProgram()
{
    return "#!/bin/sh\n: >\"$HOME/new-program-runs\"\n";
}

} // namespace world

#include "World.moc"
