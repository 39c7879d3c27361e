// SPDX-License-Identifier: GPL-3.0-or-later
#include "hotkey/GlobalHotkey.h"

#include "hotkey/Keyboard.h"
#include "hotkey/QHotkeyHeader.h"
#include "support/TestProgram.h"

#include <QAbstractNativeEventFilter>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

class tst_GlobalHotkey : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void declaresItsSignalsInOrder();
    void hasNoHotkeyAtFirst();
    void emitsActivatedForTheMainHotkey();
    void replacesTheMainHotkey();
    void leavesNoMainHotkeyFor_data();
    void leavesNoMainHotkeyFor();
    void registersTheSameMainHotkeyAnew();
    void keepsTheOneMainHotkeyObject();
    void reportsAMainHotkeyThatIsTaken();
    void emitsTheCommandOfAPluginHotkey_data();
    void emitsTheCommandOfAPluginHotkey();
    void registersNoPluginHotkeyFor_data();
    void registersNoPluginHotkeyFor();
    void registersNoPluginHotkeyForAnUnreadableSequence();
    void sharesASequenceBetweenMainAndPlugin();
    void reportsAPluginHotkeyThatIsTakenAndClearsIt();
    void keepsTheOlderPluginHotkeyOfACommand();
    void clearsPluginHotkeysAndLeavesTheMainOne();
    void tellsWhetherTheMainHotkeyIsHeld();
    void tellsWhetherAPluginHotkeyIsHeld();
    void emitsFromTheEventLoop();
    void unregistersAllHotkeysWhenDestroyed();

private:
    qsizetype hotkeyCount() const { return m_hotkey->findChildren<QHotkey *>().size(); }
    bool isFree(const QString &sequence);

    std::unique_ptr<Keyboard> m_keyboard;
    std::unique_ptr<GlobalHotkey> m_hotkey;
};

namespace {

const QString space = u"Ctrl+Alt+Space"_s;
const QString letter = u"Ctrl+Alt+C"_s;

/// Reads a value at each key press that reaches the native event filters.
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
        if (Keyboard::isPress(message)) {
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
    m_keyboard = std::make_unique<Keyboard>();
}

void tst_GlobalHotkey::init()
{
    m_keyboard->reset();
    QTRY_VERIFY(m_keyboard->isReady());
    m_hotkey = std::make_unique<GlobalHotkey>();
}

void tst_GlobalHotkey::cleanup()
{
    m_hotkey.reset();
    m_keyboard->reset();
}

bool tst_GlobalHotkey::isFree(const QString &sequence)
{
    const bool isTaken = m_keyboard->grabHotkey(sequence);
    if (isTaken) {
        m_keyboard->releaseHotkey(sequence);
    }
    return isTaken;
}

void tst_GlobalHotkey::declaresItsSignalsInOrder()
{
    const QMetaObject &meta = GlobalHotkey::staticMetaObject;
    QByteArrayList signatures;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        signatures.append(meta.method(index).methodSignature());
    }
    QCOMPARE(signatures, QByteArrayList({"activated()", "commandActivated(QString)"}));
}

void tst_GlobalHotkey::hasNoHotkeyAtFirst()
{
    QCOMPARE(hotkeyCount(), 1);
    QVERIFY(!m_hotkey->findChild<QHotkey *>()->isRegistered());
    QVERIFY(m_hotkey->findChild<QHotkey *>()->shortcut().isEmpty());
}

void tst_GlobalHotkey::emitsActivatedForTheMainHotkey()
{
    QSignalSpy activated(m_hotkey.get(), &GlobalHotkey::activated);
    QSignalSpy command(m_hotkey.get(), &GlobalHotkey::commandActivated);

    QVERIFY(m_hotkey->setMainHotkey(space));
    m_keyboard->type(space);
    QTRY_COMPARE(activated.count(), 1);
    m_keyboard->type(space);
    QTRY_COMPARE(activated.count(), 2);
    QCOMPARE(command.count(), 0);
    QCOMPARE(m_keyboard->received(space), 0);
}

void tst_GlobalHotkey::replacesTheMainHotkey()
{
    QSignalSpy activated(m_hotkey.get(), &GlobalHotkey::activated);
    QVERIFY(m_hotkey->setMainHotkey(space));
    QVERIFY(m_hotkey->setMainHotkey(letter));

    QVERIFY(isFree(space));
    m_keyboard->type(space);
    m_keyboard->type(letter);
    QTRY_COMPARE(activated.count(), 1);
    QCOMPARE(m_keyboard->received(space), 1);
    QCOMPARE(m_keyboard->received(letter), 0);
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
    QVERIFY(m_hotkey->setMainHotkey(space));

    QVERIFY(!m_hotkey->setMainHotkey(sequence));
    QVERIFY(!m_hotkey->findChild<QHotkey *>()->isRegistered());
    QVERIFY(isFree(space));
    m_keyboard->type(space);
    QCOMPARE(m_keyboard->received(space), 1);
    QCoreApplication::processEvents();
    QCOMPARE(activated.count(), 0);
}

void tst_GlobalHotkey::registersTheSameMainHotkeyAnew()
{
    QSignalSpy activated(m_hotkey.get(), &GlobalHotkey::activated);
    QVERIFY(m_hotkey->setMainHotkey(space));
    const QHotkey *hotkey = m_hotkey->findChild<QHotkey *>();
    QList<bool> states;
    const QObject context; // the library emits the signal from its destructor, too
    connect(hotkey, &QHotkey::registeredChanged, &context, [&] {
        // The library emits the signal twice for a hotkey that it unregisters.
        if (states.isEmpty() || states.last() != hotkey->isRegistered()) {
            states.append(hotkey->isRegistered());
        }
    });

    QVERIFY(m_hotkey->setMainHotkey(space));
    QCOMPARE(states, (QList<bool>{false, true}));
    m_keyboard->type(space);
    QTRY_COMPARE(activated.count(), 1);
}

void tst_GlobalHotkey::keepsTheOneMainHotkeyObject()
{
    const QHotkey *before = m_hotkey->findChild<QHotkey *>();
    m_hotkey->setMainHotkey(space);
    m_hotkey->setMainHotkey(letter);
    QCOMPARE(hotkeyCount(), 1);
    QCOMPARE(m_hotkey->findChild<QHotkey *>(), before);
}

void tst_GlobalHotkey::reportsAMainHotkeyThatIsTaken()
{
    QVERIFY(m_keyboard->grabHotkey(space));
    QVERIFY(m_hotkey->setMainHotkey(letter));

    QVERIFY(!m_hotkey->setMainHotkey(space));
    QVERIFY2(isFree(letter), "the old hotkey does not come back");

    m_keyboard->releaseHotkey(space);
    QVERIFY2(isFree(space), "nothing tries again");
}

void tst_GlobalHotkey::emitsTheCommandOfAPluginHotkey_data()
{
    QTest::addColumn<QString>("command");

    QTest::newRow("a word") << u"calc"_s;
    QTest::newRow("upper case and blanks, as they stand") << u" Calc 1 "_s;
}

void tst_GlobalHotkey::emitsTheCommandOfAPluginHotkey()
{
    QFETCH(const QString, command);
    QSignalSpy activated(m_hotkey.get(), &GlobalHotkey::activated);
    QSignalSpy commandActivated(m_hotkey.get(), &GlobalHotkey::commandActivated);

    QVERIFY(m_hotkey->registerPluginHotkey(u"todo"_s, space));
    QVERIFY(m_hotkey->registerPluginHotkey(command, letter));
    m_keyboard->type(letter);
    QTRY_COMPARE(commandActivated.count(), 1);
    QCOMPARE(commandActivated.first().first().toString(), command);
    QCOMPARE(activated.count(), 0);
}

void tst_GlobalHotkey::registersNoPluginHotkeyFor_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("sequence");

    QTest::newRow("an empty sequence") << u"calc"_s << QString();
    QTest::newRow("an empty command") << QString() << letter;
}

void tst_GlobalHotkey::registersNoPluginHotkeyFor()
{
    QFETCH(const QString, command);
    QFETCH(const QString, sequence);

    QVERIFY(!m_hotkey->registerPluginHotkey(command, sequence));
    QCOMPARE(hotkeyCount(), 1);
    QVERIFY(isFree(letter));
}

void tst_GlobalHotkey::registersNoPluginHotkeyForAnUnreadableSequence()
{
    QVERIFY(!m_hotkey->registerPluginHotkey(u"calc"_s, u"Ctrl+Nonsense"_s));
}

void tst_GlobalHotkey::sharesASequenceBetweenMainAndPlugin()
{
    QSignalSpy activated(m_hotkey.get(), &GlobalHotkey::activated);
    QSignalSpy command(m_hotkey.get(), &GlobalHotkey::commandActivated);

    QVERIFY(m_hotkey->setMainHotkey(letter));
    QVERIFY(m_hotkey->registerPluginHotkey(u"calc"_s, letter));
    m_keyboard->type(letter);
    QTRY_COMPARE(activated.count(), 1);
    QTRY_COMPARE(command.count(), 1);

    m_hotkey->clearPluginHotkeys();
    m_keyboard->type(letter);
    QTRY_COMPARE(activated.count(), 2);
    QCOMPARE(command.count(), 1);
}

void tst_GlobalHotkey::reportsAPluginHotkeyThatIsTakenAndClearsIt()
{
    QVERIFY(m_keyboard->grabHotkey(letter));

    QVERIFY(!m_hotkey->registerPluginHotkey(u"calc"_s, letter));
    QCOMPARE(hotkeyCount(), 2);
    m_hotkey->clearPluginHotkeys();
    QCOMPARE(hotkeyCount(), 1);
}

void tst_GlobalHotkey::keepsTheOlderPluginHotkeyOfACommand()
{
    QSignalSpy command(m_hotkey.get(), &GlobalHotkey::commandActivated);
    QVERIFY(m_hotkey->registerPluginHotkey(u"calc"_s, letter));
    QVERIFY(m_hotkey->registerPluginHotkey(u"calc"_s, space));

    m_keyboard->type(letter);
    QTRY_COMPARE(command.count(), 1);
    m_keyboard->type(space);
    QTRY_COMPARE(command.count(), 2);
}

void tst_GlobalHotkey::clearsPluginHotkeysAndLeavesTheMainOne()
{
    QSignalSpy activated(m_hotkey.get(), &GlobalHotkey::activated);
    QSignalSpy command(m_hotkey.get(), &GlobalHotkey::commandActivated);
    QVERIFY(m_hotkey->setMainHotkey(space));
    QVERIFY(m_hotkey->registerPluginHotkey(u"calc"_s, letter));

    m_hotkey->clearPluginHotkeys();
    QCOMPARE(hotkeyCount(), 1);
    m_keyboard->type(letter);
    m_keyboard->type(space);
    QTRY_COMPARE(activated.count(), 1);
    QCOMPARE(command.count(), 0);
    QCOMPARE(m_keyboard->received(letter), 1);
    m_hotkey->clearPluginHotkeys();
}

void tst_GlobalHotkey::tellsWhetherTheMainHotkeyIsHeld()
{
    QVERIFY(m_keyboard->grabHotkey(space));
    QVERIFY(!m_hotkey->isMainHotkeyHeld());
    QVERIFY(!m_hotkey->isMainHotkeyRegistered());

    QVERIFY(!m_hotkey->setMainHotkey(space));
    QVERIFY(m_hotkey->isMainHotkeyHeld());
    QVERIFY(!m_hotkey->isMainHotkeyRegistered());
    QVERIFY(m_hotkey->setMainHotkey(letter));
    QVERIFY(!m_hotkey->isMainHotkeyHeld());
    QVERIFY(m_hotkey->isMainHotkeyRegistered());

    QVERIFY(!m_hotkey->setMainHotkey(space));
    QVERIFY(!m_hotkey->setMainHotkey(QString()));
    QVERIFY(!m_hotkey->isMainHotkeyHeld());
}

void tst_GlobalHotkey::tellsWhetherAPluginHotkeyIsHeld()
{
    QVERIFY(m_keyboard->grabHotkey(letter));
    QVERIFY(!m_hotkey->registerPluginHotkey(u"calc"_s, letter));
    QVERIFY(m_hotkey->registerPluginHotkey(u"todo"_s, space));
    QVERIFY(m_hotkey->isPluginHotkeyHeld(u"calc"_s));
    QVERIFY(!m_hotkey->isPluginHotkeyHeld(u"todo"_s));
    QVERIFY(!m_hotkey->isPluginHotkeyHeld(u"file"_s));
    m_hotkey->clearPluginHotkeys();
    QVERIFY(!m_hotkey->isPluginHotkeyHeld(u"calc"_s));
}

void tst_GlobalHotkey::emitsFromTheEventLoop()
{
    int count = 0;
    connect(m_hotkey.get(), &GlobalHotkey::activated, this, [&count] { ++count; });
    // The oldest filter is called last, so this one gets each press after QHotkey.
    const KeyPressFilter filter([&count] { return count; });
    QVERIFY(m_hotkey->setMainHotkey(space));

    m_keyboard->type(space);
    QTRY_COMPARE(count, 1);
    QCOMPARE(filter.values(), QList<int>{0});
}

void tst_GlobalHotkey::unregistersAllHotkeysWhenDestroyed()
{
    QVERIFY(m_hotkey->setMainHotkey(space));
    QVERIFY(m_hotkey->registerPluginHotkey(u"calc"_s, letter));
    QVERIFY(!isFree(space));
    QVERIFY(!isFree(letter));

    m_hotkey.reset();
    QVERIFY(isFree(space));
    QVERIFY(isFree(letter));
}

VASKEL_TEST(tst_GlobalHotkey, QApplication)
#include "tst_GlobalHotkey.moc"
