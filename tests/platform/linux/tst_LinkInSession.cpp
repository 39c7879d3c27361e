// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Link.h"

#include "Recording.h"
#include "platform/linux/GlibPointer.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTest>

#include <gio/gio.h>

using namespace Qt::StringLiterals;

/// openLink() with a session bus and a display.
class tst_LinkInSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void startsInXterm();
    void prefersTheCommandToDBus();
    void activatesAnEntryWithoutACommand();

private:
    const QByteArray m_path = qgetenv("PATH");
};

namespace {

// The parts of org.freedesktop.Application that these tests need.
class BusApplication
{
public:
    BusApplication();
    ~BusApplication();

    bool isOwner() const { return m_isOwner; }
    int activations() const { return m_activations; }

private:
    static void take(GDBusConnection *, const char *, const char *, const char *, const char *,
                     GVariant *, GDBusMethodInvocation *invocation, void *application);

    platform::ObjectPointer<GDBusConnection> m_bus;
    unsigned int m_registration = 0;
    bool m_isOwner = false;
    int m_activations = 0;
};

BusApplication::BusApplication()
    : m_bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr))
{
    if (!m_bus) {
        return;
    }
    const char *description =
        "<node><interface name='org.freedesktop.Application'><method name='Activate'>"
        "<arg type='a{sv}' direction='in'/></method></interface></node>";
    GDBusNodeInfo *node = g_dbus_node_info_new_for_xml(description, nullptr);
    const GDBusInterfaceVTable calls = {&take, nullptr, nullptr, {}};
    m_registration = g_dbus_connection_register_object(
        m_bus.get(), "/org/example/Recorder", node->interfaces[0], &calls, this, nullptr, nullptr);
    g_dbus_node_info_unref(node);
    GVariant *reply = g_dbus_connection_call_sync(
        m_bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "RequestName", g_variant_new("(su)", "org.example.Recorder", 0U), nullptr,
        G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
    m_isOwner = m_registration != 0 && reply;
    g_clear_pointer(&reply, g_variant_unref);
}

BusApplication::~BusApplication()
{
    if (m_registration != 0) {
        g_dbus_connection_unregister_object(m_bus.get(), m_registration);
    }
}

void BusApplication::take(GDBusConnection *, const char *, const char *, const char *, const char *,
                          GVariant *, GDBusMethodInvocation *invocation, void *application)
{
    ++static_cast<BusApplication *>(application)->m_activations;
    g_dbus_method_invocation_return_value(invocation, nullptr);
}

QString entryPath(const QByteArray &lines)
{
    return testhome::writeFile(u"data/applications/org.example.Recorder.desktop"_s,
                               "[Desktop Entry]\nType=Application\nName=Recorder\n" + lines);
}

QByteArray execLine()
{
    return "Exec=\"" + QFile::encodeName(recording::program()) + "\"\n";
}

} // namespace

void tst_LinkInSession::init()
{
    testhome::reset();
    recording::prepare();
    qputenv("PATH", m_path);
}

void tst_LinkInSession::startsInXterm()
{
    const QString xterm = QStandardPaths::findExecutable(u"xterm"_s);
    QVERIFY(!xterm.isEmpty());
    testhome::writeFile(u"bin/.keep"_s, {});
    QVERIFY(QFile::link(xterm, testhome::path() + "/bin/xterm"_L1));
    qputenv("PATH", testhome::path().toUtf8() + "/bin");
    QVERIFY(platform::openLink(entryPath(execLine() + "Terminal=true\n")));
    QTRY_VERIFY(!recording::record().isEmpty());
    const QJsonObject record = recording::record();
    QVERIFY(record.value("environment"_L1).toObject().contains("XTERM_VERSION"_L1));
    QVERIFY(
        record.value("files"_L1).toObject().value("0"_L1).toString().startsWith("/dev/pts/"_L1));
}

void tst_LinkInSession::prefersTheCommandToDBus()
{
    BusApplication application;
    QVERIFY(application.isOwner());
    QVERIFY(platform::openLink(entryPath(execLine() + "DBusActivatable=true\n")));
    QTRY_VERIFY(!recording::record().isEmpty());
    QCOMPARE(application.activations(), 0);
}

void tst_LinkInSession::activatesAnEntryWithoutACommand()
{
    BusApplication application;
    QVERIFY(application.isOwner());
    QVERIFY(platform::openLink(entryPath("DBusActivatable=true\n")));
    QTRY_COMPARE(application.activations(), 1);
}

VASKEL_TEST(tst_LinkInSession, QCoreApplication)
#include "tst_LinkInSession.moc"
