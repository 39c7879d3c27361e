// SPDX-License-Identifier: GPL-3.0-or-later
#include "hotkey/GlobalHotkey.h"

#include "compat/OtherClient.h"

#include <QAbstractNativeEventFilter>
#include <QHotkey>
#include <QSignalSpy>
#include <QTest>

#include <functional>
#include <memory>

#include <X11/keysym.h>
#include <xcb/xcb.h>

using namespace Qt::StringLiterals;

class tst_GlobalHotkey : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void hasNoHotkeyAtFirst();
    void tellsThePressOfTheMainHotkey();
    void replacesTheMainHotkey();
    void leavesNoMainHotkeyFor_data();
    void leavesNoMainHotkeyFor();
    void registersTheSameMainHotkeyAnew();
    void keepsTheOneMainHotkeyObject();
    void reportsAMainHotkeyThatIsTaken();
    void tellsTheCommandOfAPluginHotkey_data();
    void tellsTheCommandOfAPluginHotkey();
    void makesNoPluginHotkeyOf_data();
    void makesNoPluginHotkeyOf();
    void registersNoPluginHotkeyForAnUnreadableSequence();
    void sharesASequenceBetweenMainAndPlugin();
    void reportsAPluginHotkeyThatIsTakenAndClearsIt();
    void keepsTheOlderPluginHotkeyOfAWord();
    void clearsPluginHotkeysAndLeavesTheMainOne();
    void signalsFromTheEventLoopAlone();
    void releasesEverythingInTheEnd();

private:
    qsizetype hotkeyCount() const { return m_hotkey->findChildren<QHotkey *>().size(); }
    bool isFree(xcb_keysym_t symbol, quint16 modifiers);

    std::unique_ptr<OtherClient> m_other;
    std::unique_ptr<GlobalHotkey> m_hotkey;
};

namespace {

constexpr quint16 controlAlt = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;
const QList<xcb_keysym_t> pressSpace{XK_Control_L, XK_Alt_L, XK_space};
const QList<xcb_keysym_t> pressC{XK_Control_L, XK_Alt_L, XK_c};

/// Asks for a value at each key press that the native event filters are shown.
class KeyPressFilter : public QAbstractNativeEventFilter
{
public:
    explicit KeyPressFilter(std::function<int()> ask)
        : m_ask(std::move(ask))
    {
        QCoreApplication::instance()->installNativeEventFilter(this);
    }

    QList<int> values() const { return m_values; }

    bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override
    {
        if (static_cast<xcb_generic_event_t *>(message)->response_type == XCB_KEY_PRESS) {
            m_values.append(m_ask());
        }
        return false;
    }

private:
    std::function<int()> m_ask;
    QList<int> m_values;
};

} // namespace

void tst_GlobalHotkey::initTestCase()
{
    m_other = std::make_unique<OtherClient>();
}

void tst_GlobalHotkey::init()
{
    m_other->reset();
    QVERIFY(m_other->hasFocus());
    m_hotkey = std::make_unique<GlobalHotkey>();
}

void tst_GlobalHotkey::cleanup()
{
    m_hotkey.reset();
    m_other->reset();
}

bool tst_GlobalHotkey::isFree(xcb_keysym_t symbol, quint16 modifiers)
{
    const bool grabbed = m_other->grab(symbol, modifiers);
    if (grabbed) {
        m_other->ungrab(symbol, modifiers);
    }
    return grabbed;
}

void tst_GlobalHotkey::hasNoHotkeyAtFirst()
{
    QCOMPARE(hotkeyCount(), 1);
    QVERIFY(!m_hotkey->findChild<QHotkey *>()->isRegistered());
    QVERIFY(m_hotkey->findChild<QHotkey *>()->shortcut().isEmpty());
}

void tst_GlobalHotkey::tellsThePressOfTheMainHotkey()
{
    QSignalSpy activated(m_hotkey.get(), &GlobalHotkey::activated);
    QSignalSpy command(m_hotkey.get(), &GlobalHotkey::commandActivated);

    QVERIFY(m_hotkey->setMainHotkey(u"Ctrl+Alt+Space"_s));
    m_other->type(pressSpace);
    QTRY_COMPARE(activated.count(), 1);
    m_other->type(pressSpace);
    QTRY_COMPARE(activated.count(), 2);
    QCOMPARE(command.count(), 0);
    QCOMPARE(m_other->received(XK_space), 0);
}

void tst_GlobalHotkey::replacesTheMainHotkey()
{
    QSignalSpy activated(m_hotkey.get(), &GlobalHotkey::activated);
    QVERIFY(m_hotkey->setMainHotkey(u"Ctrl+Alt+Space"_s));
    QVERIFY(m_hotkey->setMainHotkey(u"Ctrl+Alt+C"_s));

    QVERIFY(isFree(XK_space, controlAlt));
    m_other->type(pressSpace);
    m_other->type(pressC);
    QTRY_COMPARE(activated.count(), 1);
    QCOMPARE(m_other->received(XK_space), 1);
    QCOMPARE(m_other->received(XK_c), 0);
}

void tst_GlobalHotkey::leavesNoMainHotkeyFor_data()
{
    QTest::addColumn<QString>("sequence");

    QTest::newRow("an empty sequence") << QString();
    QTest::newRow("an unreadable sequence") << u"Ctrl+Nonsense"_s;
}

void tst_GlobalHotkey::leavesNoMainHotkeyFor()
{
    QFETCH(const QString, sequence);
    QSignalSpy activated(m_hotkey.get(), &GlobalHotkey::activated);
    QVERIFY(m_hotkey->setMainHotkey(u"Ctrl+Alt+Space"_s));

    QVERIFY(!m_hotkey->setMainHotkey(sequence));
    QVERIFY(!m_hotkey->findChild<QHotkey *>()->isRegistered());
    QVERIFY(isFree(XK_space, controlAlt));
    m_other->type(pressSpace);
    QCOMPARE(m_other->received(XK_space), 1);
    QCoreApplication::processEvents();
    QCOMPARE(activated.count(), 0);
}

void tst_GlobalHotkey::registersTheSameMainHotkeyAnew()
{
    QSignalSpy activated(m_hotkey.get(), &GlobalHotkey::activated);
    QVERIFY(m_hotkey->setMainHotkey(u"Ctrl+Alt+Space"_s));
    QSignalSpy changed(m_hotkey->findChild<QHotkey *>(), &QHotkey::registeredChanged);

    QVERIFY(m_hotkey->setMainHotkey(u"Ctrl+Alt+Space"_s));
    QCOMPARE(QList<QVariantList>(changed), (QList<QVariantList>{{false}, {true}}));
    m_other->type(pressSpace);
    QTRY_COMPARE(activated.count(), 1);
}

void tst_GlobalHotkey::keepsTheOneMainHotkeyObject()
{
    const QHotkey *before = m_hotkey->findChild<QHotkey *>();
    m_hotkey->setMainHotkey(u"Ctrl+Alt+Space"_s);
    m_hotkey->setMainHotkey(u"Ctrl+Alt+C"_s);
    QCOMPARE(hotkeyCount(), 1);
    QCOMPARE(m_hotkey->findChild<QHotkey *>(), before);
}

void tst_GlobalHotkey::reportsAMainHotkeyThatIsTaken()
{
    QVERIFY(m_other->grab(XK_space, controlAlt));
    QVERIFY(m_hotkey->setMainHotkey(u"Ctrl+Alt+C"_s));

    QVERIFY(!m_hotkey->setMainHotkey(u"Ctrl+Alt+Space"_s));
    QVERIFY2(isFree(XK_c, controlAlt), "the old hotkey does not come back");

    m_other->ungrab(XK_space, controlAlt);
    QVERIFY2(isFree(XK_space, controlAlt), "nothing tries again");
}

void tst_GlobalHotkey::tellsTheCommandOfAPluginHotkey_data()
{
    QTest::addColumn<QString>("command");

    QTest::newRow("a word") << u"calc"_s;
    QTest::newRow("upper case and blanks, as they stand") << u" Calc 1 "_s;
}

void tst_GlobalHotkey::tellsTheCommandOfAPluginHotkey()
{
    QFETCH(const QString, command);
    QSignalSpy activated(m_hotkey.get(), &GlobalHotkey::activated);
    QSignalSpy commandActivated(m_hotkey.get(), &GlobalHotkey::commandActivated);

    QVERIFY(m_hotkey->registerPluginHotkey(u"todo"_s, u"Ctrl+Alt+Space"_s));
    QVERIFY(m_hotkey->registerPluginHotkey(command, u"Ctrl+Alt+C"_s));
    m_other->type(pressC);
    QTRY_COMPARE(commandActivated.count(), 1);
    QCOMPARE(commandActivated.first().first().toString(), command);
    QCOMPARE(activated.count(), 0);
}

void tst_GlobalHotkey::makesNoPluginHotkeyOf_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("sequence");

    QTest::newRow("an empty sequence") << u"calc"_s << QString();
    QTest::newRow("an empty command") << QString() << u"Ctrl+Alt+C"_s;
}

void tst_GlobalHotkey::makesNoPluginHotkeyOf()
{
    QFETCH(const QString, command);
    QFETCH(const QString, sequence);

    QVERIFY(!m_hotkey->registerPluginHotkey(command, sequence));
    QCOMPARE(hotkeyCount(), 1);
    QVERIFY(isFree(XK_c, controlAlt));
}

void tst_GlobalHotkey::registersNoPluginHotkeyForAnUnreadableSequence()
{
    QVERIFY(!m_hotkey->registerPluginHotkey(u"calc"_s, u"Ctrl+Nonsense"_s));
}

void tst_GlobalHotkey::sharesASequenceBetweenMainAndPlugin()
{
    QSignalSpy activated(m_hotkey.get(), &GlobalHotkey::activated);
    QSignalSpy command(m_hotkey.get(), &GlobalHotkey::commandActivated);

    QVERIFY(m_hotkey->setMainHotkey(u"Ctrl+Alt+C"_s));
    QVERIFY(m_hotkey->registerPluginHotkey(u"calc"_s, u"Ctrl+Alt+C"_s));
    m_other->type(pressC);
    QTRY_COMPARE(activated.count(), 1);
    QTRY_COMPARE(command.count(), 1);

    m_hotkey->clearPluginHotkeys();
    m_other->type(pressC);
    QTRY_COMPARE(activated.count(), 2);
    QCOMPARE(command.count(), 1);
}

void tst_GlobalHotkey::reportsAPluginHotkeyThatIsTakenAndClearsIt()
{
    QVERIFY(m_other->grab(XK_c, controlAlt));

    QVERIFY(!m_hotkey->registerPluginHotkey(u"calc"_s, u"Ctrl+Alt+C"_s));
    QCOMPARE(hotkeyCount(), 2);
    m_hotkey->clearPluginHotkeys();
    QCOMPARE(hotkeyCount(), 1);
}

void tst_GlobalHotkey::keepsTheOlderPluginHotkeyOfAWord()
{
    QSignalSpy command(m_hotkey.get(), &GlobalHotkey::commandActivated);
    QVERIFY(m_hotkey->registerPluginHotkey(u"calc"_s, u"Ctrl+Alt+C"_s));
    QVERIFY(m_hotkey->registerPluginHotkey(u"calc"_s, u"Ctrl+Alt+Space"_s));

    m_other->type(pressC);
    QTRY_COMPARE(command.count(), 1);
    m_other->type(pressSpace);
    QTRY_COMPARE(command.count(), 2);
}

void tst_GlobalHotkey::clearsPluginHotkeysAndLeavesTheMainOne()
{
    QSignalSpy activated(m_hotkey.get(), &GlobalHotkey::activated);
    QSignalSpy command(m_hotkey.get(), &GlobalHotkey::commandActivated);
    QVERIFY(m_hotkey->setMainHotkey(u"Ctrl+Alt+Space"_s));
    QVERIFY(m_hotkey->registerPluginHotkey(u"calc"_s, u"Ctrl+Alt+C"_s));

    m_hotkey->clearPluginHotkeys();
    QCOMPARE(hotkeyCount(), 1);
    m_other->type(pressC);
    m_other->type(pressSpace);
    QTRY_COMPARE(activated.count(), 1);
    QCOMPARE(command.count(), 0);
    QCOMPARE(m_other->received(XK_c), 1);
    m_hotkey->clearPluginHotkeys();
}

void tst_GlobalHotkey::signalsFromTheEventLoopAlone()
{
    int count = 0;
    connect(m_hotkey.get(), &GlobalHotkey::activated, this, [&count] { ++count; });
    // Of several filters the oldest comes last, so this one sees each press after QHotkey did.
    const KeyPressFilter filter([&count] { return count; });
    QVERIFY(m_hotkey->setMainHotkey(u"Ctrl+Alt+Space"_s));

    m_other->type(pressSpace);
    QTRY_COMPARE(count, 1);
    QCOMPARE(filter.values(), QList<int>{0});
}

void tst_GlobalHotkey::releasesEverythingInTheEnd()
{
    QVERIFY(m_hotkey->setMainHotkey(u"Ctrl+Alt+Space"_s));
    QVERIFY(m_hotkey->registerPluginHotkey(u"calc"_s, u"Ctrl+Alt+C"_s));
    QVERIFY(!isFree(XK_space, controlAlt));
    QVERIFY(!isFree(XK_c, controlAlt));

    m_hotkey.reset();
    QVERIFY(isFree(XK_space, controlAlt));
    QVERIFY(isFree(XK_c, controlAlt));
}

QTEST_MAIN(tst_GlobalHotkey)
#include "tst_GlobalHotkey.moc"
