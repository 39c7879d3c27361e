// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/PortalHotkeys.h"

#include "PortalStandIn.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QJsonArray>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

#include <memory>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using platform::PortalHotkeys;

namespace {

using Hotkeys = QList<PortalHotkeys::Hotkey>;

const QString windowText = u"Show or hide the window"_s;
const Hotkeys mainHotkey = {{{}, u"Ctrl+Alt+Space"_s, windowText}};
const Hotkeys twoHotkeys = mainHotkey + Hotkeys{{u"calc"_s, u"Meta+F5"_s, u"The calculator"_s}};

const QString calcId = u"command-calc-LOGO+F5"_s;
const QString mainShortcut = u"toggle=CTRL+ALT+space"_s;
const QString twoShortcuts = u"toggle=CTRL+ALT+space command-calc-LOGO+F5=LOGO+F5"_s;

// What is called for two hotkeys.
const QStringList byTheBook = {u"Register vaskel"_s, "CreateSession vaskel "_L1 + twoShortcuts,
                               u"ListShortcuts"_s, "BindShortcuts x11 "_L1 + twoShortcuts};

QStringList warnings;
QtMessageHandler handleFurther = nullptr;

void recordWarnings(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (type == QtWarningMsg) {
        warnings.append(message);
    }
    handleFurther(type, context, message);
}

// Waits for a warning, which must be the only one.
bool warns(const QString &text)
{
    if (!QTest::qWaitFor([] { return !warnings.isEmpty(); }, 60'000)) {
        return false;
    }
    const QStringList all = std::exchange(warnings, {});
    return all.size() == 1 && all.first().contains(text);
}

const QString notBound = u"The desktop does not hold the hotkeys: "_s;
const QString unanswered = notBound + u"it has not answered yet"_s;

} // namespace

class tst_PortalHotkeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void holdsNothingAtFirst();
    void bindsByTheBook();
    void bindsWithASessionOfKde();
    void bindsWhatASessionOfKdeLeavesOut();
    void bindsAlwaysFromVersionTwoOn();
    void needsNoRegistry();
    void namesTheWindowOfItsQuestions();
    void staysUnboundWithoutAPortal_data();
    void staysUnboundWithoutAPortal();
    void staysUnboundIfRefused_data();
    void staysUnboundIfRefused();
    void takesALateAnswer_data();
    void takesALateAnswer();
    void ignoresAnErrorAfterTheAnswer_data();
    void ignoresAnErrorAfterTheAnswer();
    void survivesAPortalThatHangs_data();
    void survivesAPortalThatHangs();

    void reportsAHeldKeyOnce();
    void tellsTheHotkeysApart();
    void ignoresOtherPrograms();
    void followsTheTriggers();
    void hasNoTriggerOfAnUnboundHotkey();

    void bindsOthers();
    void otherKeysHaveAnotherId();
    void keepsTheSame();
    void givesAllBack();
    void bindsOthersInsteadOfThoseItAsksFor();
    void bindsAPortalThatStartsLater();
    void bindsAPortalThatReturns();
    void bindsAPortalThatReplacesAnother();
    void bindsAClosedSessionAgain();
    void givesUpASessionThatClosesAgainAndAgain();
    void aPressTakesTheClosuresBack();

    void configuresFromVersionTwoOn();
    void logsThatItCannotConfigure();

private:
    void make(std::chrono::milliseconds timeout = 60s);
    bool bind(const Hotkeys &hotkeys = twoHotkeys);
    void bindUnanswered(const QString &method);
    void send(const QString &signal, const QString &id)
    {
        m_portal.control(u"Send"_s, {signal, id});
    }
    /// Whether all that the stand-in has sent has arrived.
    bool isSettled();

    PortalStandIn m_portal;
    std::unique_ptr<QWindow> m_window;
    std::unique_ptr<PortalHotkeys> m_hotkeys;
    std::unique_ptr<QSignalSpy> m_activated;
    std::unique_ptr<QSignalSpy> m_commandActivated;
};

void tst_PortalHotkeys::init()
{
    testhome::reset();
    handleFurther = qInstallMessageHandler(recordWarnings);
    warnings.clear();
    m_window = std::make_unique<QWindow>();
    m_window->create();
    make();
}

void tst_PortalHotkeys::cleanup()
{
    m_hotkeys.reset();
    m_portal.end();
    qInstallMessageHandler(handleFurther);
    QCOMPARE(warnings, QStringList());
}

void tst_PortalHotkeys::make(std::chrono::milliseconds timeout)
{
    m_hotkeys = std::make_unique<PortalHotkeys>(m_window.get(), timeout);
    m_activated = std::make_unique<QSignalSpy>(m_hotkeys.get(), &PortalHotkeys::activated);
    m_commandActivated =
        std::make_unique<QSignalSpy>(m_hotkeys.get(), &PortalHotkeys::commandActivated);
}

bool tst_PortalHotkeys::bind(const Hotkeys &hotkeys)
{
    QSignalSpy changed(m_hotkeys.get(), &PortalHotkeys::changed);
    m_hotkeys->bind(hotkeys);
    return QTest::qWaitFor([&] { return !changed.isEmpty() && m_hotkeys->isBound(); }, 60'000);
}

// Binds with a portal that does not answer this method in time. Fails the test if no warning says
// so.
void tst_PortalHotkeys::bindUnanswered(const QString &method)
{
    make(1ms);
    m_hotkeys->bind(twoHotkeys);
    QVERIFY(warns(unanswered));
    QStringList calls;
    QTRY_VERIFY((calls += m_portal.calls()).join(u' ').contains(method));
    QVERIFY(!m_hotkeys->isBound());
}

// The signals of one sender arrive in order, so a new trigger arrives after all others.
bool tst_PortalHotkeys::isSettled()
{
    static int count = 0;
    const QString trigger = u"trigger %1"_s.arg(++count);
    m_portal.control(u"SetTrigger"_s, {u"toggle"_s, trigger});
    return QTest::qWaitFor([&] { return m_hotkeys->trigger({}) == trigger; }, 60'000);
}

void tst_PortalHotkeys::holdsNothingAtFirst()
{
    QVERIFY(m_portal.start());
    m_hotkeys->bind({});
    QVERIFY(!m_hotkeys->isBound());
    QVERIFY(!m_hotkeys->canConfigure());
    QVERIFY(!m_hotkeys->trigger({}));
    m_hotkeys->configure();
    QCOMPARE(m_portal.calls(), QStringList());
}

void tst_PortalHotkeys::bindsByTheBook()
{
    QVERIFY(m_portal.start());
    QVERIFY(bind());
    QCOMPARE(m_portal.calls(), byTheBook);
    QCOMPARE(m_hotkeys->trigger({}), u"CTRL+ALT+space"_s);
    QCOMPARE(m_hotkeys->trigger(u"calc"_s), u"LOGO+F5"_s);
    QVERIFY(!m_hotkeys->trigger(u"todo"_s));
}

void tst_PortalHotkeys::bindsWithASessionOfKde()
{
    QVERIFY(m_portal.start({{u"binds"_s, u"CreateSession"_s}}));
    QVERIFY(bind());
    QCOMPARE(m_portal.calls(), byTheBook.first(3));
    QCOMPARE(m_hotkeys->trigger({}), u"CTRL+ALT+space"_s);
    QCOMPARE(m_hotkeys->trigger(u"calc"_s), u"LOGO+F5"_s);
}

void tst_PortalHotkeys::bindsWhatASessionOfKdeLeavesOut()
{
    QVERIFY(m_portal.start({{u"binds"_s, u"CreateSession"_s}, {u"leaves"_s, QJsonArray{calcId}}}));
    QVERIFY(bind());
    QCOMPARE(m_portal.calls(), byTheBook);
}

void tst_PortalHotkeys::bindsAlwaysFromVersionTwoOn()
{
    QVERIFY(m_portal.start({{u"binds"_s, u"CreateSession"_s}, {u"version"_s, 2}}));
    QVERIFY(bind());
    QCOMPARE(m_portal.calls(), byTheBook);
}

void tst_PortalHotkeys::needsNoRegistry()
{
    QVERIFY(m_portal.start({{u"registry"_s, false}}));
    QVERIFY(bind());
    QCOMPARE(m_portal.calls(), byTheBook);
}

void tst_PortalHotkeys::namesTheWindowOfItsQuestions()
{
    QVERIFY(m_portal.start());
    m_window.reset();
    QVERIFY(bind(mainHotkey));
    QCOMPARE(m_portal.calls().last(), "BindShortcuts  "_L1 + mainShortcut);
}

void tst_PortalHotkeys::staysUnboundWithoutAPortal_data()
{
    QTest::addColumn<bool>("hasPortal");

    QTest::newRow("no portal") << false;
    QTest::newRow("a portal without hotkeys") << true;
}

void tst_PortalHotkeys::staysUnboundWithoutAPortal()
{
    QFETCH(const bool, hasPortal);
    QVERIFY(!hasPortal || m_portal.start({{u"version"_s, 0}}));
    const QSignalSpy changed(m_hotkeys.get(), &PortalHotkeys::changed);
    m_hotkeys->bind(twoHotkeys);
    QVERIFY(warns(notBound
                  + (hasPortal ? u"\"org.freedesktop.portal.GlobalShortcuts.UnknownProperty"_s
                               : u"\"org.freedesktop.DBus.Error.ServiceUnknown"_s)));
    QVERIFY(!m_hotkeys->isBound());
    QVERIFY(changed.isEmpty());
}

void tst_PortalHotkeys::staysUnboundIfRefused_data()
{
    QTest::addColumn<QJsonObject>("parameters");
    QTest::addColumn<QString>("line");

    const QStringList methods = {u"CreateSession"_s, u"ListShortcuts"_s, u"BindShortcuts"_s};
    for (const QString &method : methods) {
        for (const int response : {1, 2}) {
            const QString line = u"%1: the answer is %2"_s.arg(method).arg(response);
            QTest::addRow("%s", qPrintable(line))
                << QJsonObject{{u"responses"_s, QJsonObject{{method, response}}}} << line;
        }
        QTest::addRow("%s fails", qPrintable(method))
            << QJsonObject{{u"fails"_s, QJsonArray{method}}}
            << method + u": org.freedesktop.portal.Error.Failed: no such luck"_s;
    }
}

void tst_PortalHotkeys::staysUnboundIfRefused()
{
    QFETCH(const QJsonObject, parameters);
    QFETCH(const QString, line);
    QVERIFY(m_portal.start(parameters));
    const QSignalSpy changed(m_hotkeys.get(), &PortalHotkeys::changed);
    m_hotkeys->bind(twoHotkeys);
    QVERIFY(warns(notBound + u'"' + line));

    // An existing session is closed.
    QStringList calls;
    const bool hasSession = !line.startsWith("CreateSession"_L1);
    QTRY_VERIFY(
        (calls += m_portal.calls()).contains(hasSession ? u"Close session"_s : byTheBook.at(1)));
    QVERIFY(!m_hotkeys->isBound());
    QVERIFY(changed.isEmpty());
}

void tst_PortalHotkeys::takesALateAnswer_data()
{
    QTest::addColumn<QString>("method");

    QTest::newRow("CreateSession") << u"CreateSession"_s;
    QTest::newRow("ListShortcuts") << u"ListShortcuts"_s;
    QTest::newRow("BindShortcuts") << u"BindShortcuts"_s;
}

void tst_PortalHotkeys::takesALateAnswer()
{
    QFETCH(const QString, method);
    QVERIFY(m_portal.start({{u"waits"_s, QJsonArray{method}}}));
    bindUnanswered(method);
    QVERIFY(!QTest::currentTestFailed());
    m_portal.control(u"Answer"_s);
    QTRY_VERIFY(m_hotkeys->isBound());
    QCOMPARE(m_hotkeys->trigger(u"calc"_s), u"LOGO+F5"_s);
}

void tst_PortalHotkeys::ignoresAnErrorAfterTheAnswer_data()
{
    takesALateAnswer_data();
}

void tst_PortalHotkeys::ignoresAnErrorAfterTheAnswer()
{
    QFETCH(const QString, method);
    QVERIFY(m_portal.start({{u"fails_late"_s, QJsonArray{method}}}));
    QVERIFY(bind());
    QVERIFY(isSettled());
    QVERIFY(m_hotkeys->isBound());
    QCOMPARE(m_portal.calls(), byTheBook);
}

void tst_PortalHotkeys::survivesAPortalThatHangs_data()
{
    takesALateAnswer_data();
}

void tst_PortalHotkeys::survivesAPortalThatHangs()
{
    QFETCH(const QString, method);
    QVERIFY(m_portal.start({{u"hangs"_s, QJsonArray{method}}}));
    bindUnanswered(method);
    QVERIFY(!QTest::currentTestFailed());

    // It is replaced by one that answers.
    PortalStandIn other;
    QVERIFY(other.start());
    QTRY_VERIFY(m_hotkeys->isBound());
    QVERIFY(warns(unanswered)); // with that timeout, again
}

void tst_PortalHotkeys::reportsAHeldKeyOnce()
{
    QVERIFY(m_portal.start());
    QVERIFY(bind());
    for (int press = 1; press <= 3; ++press) {
        for (int repetition = 0; repetition < 5; ++repetition) {
            send(u"Activated"_s, u"toggle"_s);
        }
        QVERIFY(isSettled());
        QCOMPARE(m_activated->size(), press);
        send(u"Deactivated"_s, u"toggle"_s);
    }
}

void tst_PortalHotkeys::tellsTheHotkeysApart()
{
    QVERIFY(m_portal.start());
    QVERIFY(bind());
    send(u"Activated"_s, calcId);
    QTRY_COMPARE(m_commandActivated->size(), 1);
    QCOMPARE(m_commandActivated->first(), QVariantList{u"calc"_s});
    QVERIFY(m_activated->isEmpty());

    // While one hotkey is held, another one works.
    send(u"Activated"_s, u"toggle"_s);
    QTRY_COMPARE(m_activated->size(), 1);
    send(u"Activated"_s, u"command-unknown"_s);
    QVERIFY(isSettled());
    QCOMPARE(m_commandActivated->size(), 1);
    QCOMPARE(m_activated->size(), 1);
}

void tst_PortalHotkeys::ignoresOtherPrograms()
{
    QVERIFY(m_portal.start());
    QVERIFY(bind());
    const QString session = m_portal.control(u"Session"_s).value(0).toString();
    QDBusMessage signal =
        QDBusMessage::createSignal(u"/org/freedesktop/portal/desktop"_s,
                                   u"org.freedesktop.portal.GlobalShortcuts"_s, u"Activated"_s);
    signal << QVariant::fromValue(QDBusObjectPath(session)) << u"toggle"_s << qulonglong(0)
           << QVariantMap();
    QVERIFY(QDBusConnection::sessionBus().send(signal));
    // The bus passes the signal on before it answers this call.
    QDBusConnection::sessionBus().interface()->isServiceRegistered(u"a.b"_s);
    QVERIFY(isSettled());
    QVERIFY(m_activated->isEmpty());
}

void tst_PortalHotkeys::followsTheTriggers()
{
    QVERIFY(m_portal.start());
    QVERIFY(bind());
    const QSignalSpy changed(m_hotkeys.get(), &PortalHotkeys::changed);
    m_portal.control(u"SetTrigger"_s, {u"toggle"_s, u"Meta+Leertaste"_s});
    QTRY_COMPARE(m_hotkeys->trigger({}), u"Meta+Leertaste"_s);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(m_hotkeys->trigger(u"calc"_s), u"LOGO+F5"_s);
}

void tst_PortalHotkeys::hasNoTriggerOfAnUnboundHotkey()
{
    QVERIFY(m_portal.start({{u"leaves"_s, QJsonArray{calcId}}}));
    QVERIFY(bind());
    QCOMPARE(m_hotkeys->trigger({}), u"CTRL+ALT+space"_s);
    QVERIFY(!m_hotkeys->trigger(u"calc"_s));
}

void tst_PortalHotkeys::bindsOthers()
{
    QVERIFY(m_portal.start());
    QVERIFY(bind());
    m_portal.calls();
    QVERIFY(bind(mainHotkey));
    QCOMPARE(m_portal.calls(),
             QStringList({u"Close session"_s, u"Register vaskel"_s,
                          "CreateSession vaskel "_L1 + mainShortcut, u"ListShortcuts"_s,
                          "BindShortcuts x11 "_L1 + mainShortcut}));
    QVERIFY(!m_hotkeys->trigger(u"calc"_s));
    send(u"Activated"_s, u"toggle"_s);
    QTRY_COMPARE(m_activated->size(), 1);
}

void tst_PortalHotkeys::otherKeysHaveAnotherId()
{
    QVERIFY(m_portal.start());
    QVERIFY(bind({{{}, u"Ctrl+Alt+K"_s, windowText}}));
    QCOMPARE(m_portal.calls().last(), u"BindShortcuts x11 toggle-CTRL+ALT+k=CTRL+ALT+k"_s);
    QCOMPARE(m_hotkeys->trigger({}), u"CTRL+ALT+k"_s);
    send(u"Activated"_s, u"toggle-CTRL+ALT+k"_s);
    QTRY_COMPARE(m_activated->size(), 1);
}

void tst_PortalHotkeys::keepsTheSame()
{
    QVERIFY(m_portal.start());
    QVERIFY(bind());
    m_portal.calls();
    m_hotkeys->bind(twoHotkeys);
    QVERIFY(isSettled());
    QCOMPARE(m_portal.calls(), QStringList());
    QVERIFY(m_hotkeys->isBound());
}

void tst_PortalHotkeys::givesAllBack()
{
    QVERIFY(m_portal.start());
    QVERIFY(bind());
    m_portal.calls();
    m_hotkeys->bind({});
    QTRY_VERIFY(!m_hotkeys->isBound());
    QCOMPARE(m_portal.calls(), QStringList(u"Close session"_s));
    QVERIFY(!m_hotkeys->trigger({}));
}

void tst_PortalHotkeys::bindsOthersInsteadOfThoseItAsksFor()
{
    QVERIFY(m_portal.start({{u"waits"_s, QJsonArray{u"BindShortcuts"_s}}}));
    m_hotkeys->bind(twoHotkeys);
    QStringList calls;
    QTRY_COMPARE(calls += m_portal.calls(), byTheBook);
    m_hotkeys->bind(mainHotkey);
    const QString last = "BindShortcuts x11 "_L1 + mainShortcut;
    calls.clear();
    QTRY_VERIFY((calls += m_portal.calls()).contains(last));
    QCOMPARE(calls.first(2), QStringList({u"Close request"_s, u"Close session"_s}));
    m_portal.control(u"Answer"_s);
    QTRY_VERIFY(m_hotkeys->isBound());
    QCOMPARE(m_hotkeys->trigger({}), u"CTRL+ALT+space"_s);
    QVERIFY(!m_hotkeys->trigger(u"calc"_s));
}

void tst_PortalHotkeys::bindsAPortalThatStartsLater()
{
    m_hotkeys->bind(twoHotkeys);
    QVERIFY(warns(notBound));
    QVERIFY(m_portal.start());
    QTRY_VERIFY(m_hotkeys->isBound());
    QCOMPARE(m_portal.calls(), byTheBook);
}

void tst_PortalHotkeys::bindsAPortalThatReturns()
{
    QVERIFY(m_portal.start());
    QVERIFY(bind());
    for (int round = 1; round <= 2; ++round) {
        const QSignalSpy changed(m_hotkeys.get(), &PortalHotkeys::changed);
        const QVariantList older = m_portal.control(u"Session"_s);
        m_portal.end();
        QTRY_VERIFY(!m_hotkeys->isBound());
        QCOMPARE(changed.size(), 1);
        QVERIFY(m_portal.start());
        QTRY_VERIFY(m_hotkeys->isBound());
        QCOMPARE(changed.size(), 2);
        QCOMPARE(m_portal.calls(), byTheBook);
        QVERIFY(m_portal.control(u"Session"_s) != older);
        send(u"Activated"_s, u"toggle"_s); // held when the portal ends
        QTRY_COMPARE(m_activated->size(), round);
    }
}

void tst_PortalHotkeys::bindsAPortalThatReplacesAnother()
{
    QVERIFY(m_portal.start());
    QVERIFY(bind());
    PortalStandIn other;
    QVERIFY(other.start());
    QStringList calls;
    QTRY_COMPARE(calls += other.calls(), byTheBook);
    QTRY_VERIFY(m_hotkeys->isBound());
    other.control(u"Send"_s, {u"Activated"_s, u"toggle"_s});
    QTRY_COMPARE(m_activated->size(), 1);
}

void tst_PortalHotkeys::bindsAClosedSessionAgain()
{
    QVERIFY(m_portal.start());
    QVERIFY(bind());
    m_portal.calls();
    m_portal.control(u"CloseSession"_s);
    QStringList calls;
    QTRY_COMPARE(calls += m_portal.calls(), byTheBook);
    QVERIFY(isSettled());
    QVERIFY(m_hotkeys->isBound());
    send(u"Activated"_s, u"toggle"_s);
    QTRY_COMPARE(m_activated->size(), 1);
}

void tst_PortalHotkeys::givesUpASessionThatClosesAgainAndAgain()
{
    QVERIFY(m_portal.start());
    QVERIFY(bind());
    for (int closure = 1; closure <= 3; ++closure) {
        const QSignalSpy changed(m_hotkeys.get(), &PortalHotkeys::changed);
        m_portal.control(u"CloseSession"_s);
        QTRY_COMPARE(changed.size(), 1);
        QVERIFY(m_hotkeys->isBound());
    }
    m_portal.control(u"CloseSession"_s);
    QVERIFY(warns(notBound + u"\"it closes the session"_s));
    QVERIFY(!m_hotkeys->isBound());
}

void tst_PortalHotkeys::aPressTakesTheClosuresBack()
{
    QVERIFY(m_portal.start());
    QVERIFY(bind());
    for (int closure = 1; closure <= 5; ++closure) {
        const QSignalSpy changed(m_hotkeys.get(), &PortalHotkeys::changed);
        m_portal.control(u"CloseSession"_s);
        QTRY_COMPARE(changed.size(), 1);
        QVERIFY(m_hotkeys->isBound());
        send(u"Activated"_s, u"toggle"_s);
        QTRY_COMPARE(m_activated->size(), closure);
    }
}

void tst_PortalHotkeys::configuresFromVersionTwoOn()
{
    for (const int version : {1, 2}) {
        QVERIFY(m_portal.start({{u"version"_s, version}}));
        make();
        QVERIFY(bind());
        m_portal.calls();
        QCOMPARE(m_hotkeys->canConfigure(), version == 2);
        m_hotkeys->configure();
        QVERIFY(isSettled());
        QCOMPARE(m_portal.calls(),
                 version == 2 ? QStringList(u"ConfigureShortcuts vaskel x11"_s) : QStringList());
        m_hotkeys.reset();
        m_portal.end();
    }
}

void tst_PortalHotkeys::logsThatItCannotConfigure()
{
    QVERIFY(m_portal.start({{u"version"_s, 2}, {u"fails"_s, QJsonArray{u"ConfigureShortcuts"_s}}}));
    QVERIFY(bind());
    m_hotkeys->configure();
    QVERIFY(warns(u"The desktop does not show its hotkeys: \"org.freedesktop.portal.Error"_s));
    QVERIFY(m_hotkeys->isBound());
}

VASKEL_TEST(tst_PortalHotkeys, QGuiApplication)
#include "tst_PortalHotkeys.moc"
