// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/Settings.h"

#include "support/FakePlatform.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"
#include "update/FileSizeLimit.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSettings>
#include <QTest>
#include <QTranslator>

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QString storeFile = u"config/Vaskel/Vaskel.conf"_s;

// A store in which no key has its default value.
const QByteArray fullStore = "[General]\n"
                             "appLaunchRequiresDoubleClick=false\n"
                             "autoHideOnFocusLoss=true\n"
                             "autoStart=true\n"
                             "floatIconX=12\n"
                             "floatIconY=-34\n"
                             "globalHotkey=Meta+Space\n"
                             "pluginAutoEnter=true\n"
                             "searchEngine=Google\n"
                             "showAllAppsWhenSearchEmpty=false\n"
                             "showFloatIcon=false\n"
                             "theme=dark\n"
                             "\n"
                             "[pluginHotkeys]\n"
                             "calc=Ctrl+F2\n"
                             "\n"
                             "[plugins]\n"
                             "calc=false\n";

QVariant stored(const QString &key)
{
    return QSettings(u"Vaskel"_s, u"Vaskel"_s).value(key);
}

QStringList storedKeys()
{
    return QSettings(u"Vaskel"_s, u"Vaskel"_s).allKeys();
}

void store(const QString &key, const QVariant &value)
{
    QSettings(u"Vaskel"_s, u"Vaskel"_s).setValue(key, value);
}

// The contents of the store, as text: a registry has no bool, and a file no number.
QVariantMap content()
{
    QVariantMap texts;
    for (const QString &key : storedKeys()) {
        texts.insert(key, stored(key).toString());
    }
    return texts;
}

QVariantMap asTexts(QVariantMap values)
{
    for (QVariant &value : values) {
        value = value.toString();
    }
    return values;
}

QByteArray storeOnDisk()
{
    QFile file(testhome::path() + u'/' + storeFile);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QVariantMap everyValueOf(const Settings &settings)
{
    return {
        {u"appLaunchRequiresDoubleClick"_s, settings.appLaunchRequiresDoubleClick()},
        {u"autoHideOnFocusLoss"_s, settings.autoHideOnFocusLoss()},
        {u"autoStart"_s, settings.autoStart()},
        {u"floatIconX"_s, settings.floatIconPos().x()},
        {u"floatIconY"_s, settings.floatIconPos().y()},
        {u"globalHotkey"_s, settings.globalHotkey()},
        {u"pluginAutoEnter"_s, settings.pluginAutoEnter()},
        {u"pluginHotkeys/calc"_s, settings.pluginHotkey(u"calc"_s)},
        {u"plugins/calc"_s, settings.isPluginEnabled(u"calc"_s)},
        {u"searchEngine"_s, settings.searchEngine()},
        {u"showAllAppsWhenSearchEmpty"_s, settings.showAllAppsWhenSearchEmpty()},
        {u"showFloatIcon"_s, settings.showFloatIcon()},
        {u"theme"_s, settings.theme()},
    };
}

QVariantMap everyDefault()
{
    return {
        {u"appLaunchRequiresDoubleClick"_s, true},
        {u"autoHideOnFocusLoss"_s, false},
        {u"autoStart"_s, false},
        {u"floatIconX"_s, -1},
        {u"floatIconY"_s, -1},
        {u"globalHotkey"_s, u"Ctrl+Alt+Space"_s},
        {u"pluginAutoEnter"_s, false},
        {u"pluginHotkeys/calc"_s, u""_s},
        {u"plugins/calc"_s, true},
        {u"searchEngine"_s, u"Bing"_s},
        {u"showAllAppsWhenSearchEmpty"_s, true},
        {u"showFloatIcon"_s, true},
        {u"theme"_s, u"system"_s},
    };
}

QVariantMap everyValueOfTheFullStore()
{
    return {
        {u"appLaunchRequiresDoubleClick"_s, false},
        {u"autoHideOnFocusLoss"_s, true},
        {u"autoStart"_s, true},
        {u"floatIconX"_s, 12},
        {u"floatIconY"_s, -34},
        {u"globalHotkey"_s, u"Meta+Space"_s},
        {u"pluginAutoEnter"_s, true},
        {u"pluginHotkeys/calc"_s, u"Ctrl+F2"_s},
        {u"plugins/calc"_s, false},
        {u"searchEngine"_s, u"Google"_s},
        {u"showAllAppsWhenSearchEmpty"_s, false},
        {u"showFloatIcon"_s, false},
        {u"theme"_s, u"dark"_s},
    };
}

// The defaults in the table of docs/SETTINGS.md. A row may have several keys.
QVariantMap documentedDefaults()
{
    QFile file(QStringLiteral(SOURCE_FOLDER "/docs/SETTINGS.md"));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    static const QRegularExpression row(u"^\\| (`[^|]+) \\| ([^|]+) \\|"_s,
                                        QRegularExpression::MultilineOption);
    static const QRegularExpression quoted(u"`([^`]+)`"_s);
    QVariantMap defaults;
    for (const QRegularExpressionMatch &line : row.globalMatch(QString::fromUtf8(file.readAll()))) {
        for (const QRegularExpressionMatch &key : quoted.globalMatch(line.captured(1))) {
            defaults.insert(key.captured(1), line.captured(2).remove(u'`'));
        }
    }
    return defaults;
}

void fillStore()
{
    const QVariantMap texts = asTexts(everyValueOfTheFullStore());
    for (auto text = texts.cbegin(); text != texts.cend(); ++text) {
        store(text.key(), text.value());
    }
}

// The start and the end of the value of a key in the full store.
struct ValueRange
{
    QString key;
    qsizetype begin = 0;
    qsizetype end = 0;
};

QList<ValueRange> valuesInTheFullStore()
{
    QList<ValueRange> ranges;
    QString group;
    qsizetype lineBegin = 0;
    for (const QByteArray &line : fullStore.split('\n')) {
        const qsizetype equals = line.indexOf('=');
        if (equals >= 0) {
            ranges.append({group + QString::fromLatin1(line.first(equals)), lineBegin + equals + 1,
                           lineBegin + line.size()});
        } else if (line.startsWith("[plugin")) {
            group = QString::fromLatin1(line.mid(1).chopped(1)) + u'/';
        }
        lineBegin += line.size() + 1;
    }
    return ranges;
}

// The first key with a wrong value in a full store that was truncated to this size.
QString firstWrongKey(const Settings &settings, qsizetype size)
{
    const QVariantMap values = everyValueOf(settings);
    for (const ValueRange &range : valuesInTheFullStore()) {
        const bool cutInside = range.begin <= size && size < range.end;
        const QVariantMap expected =
            size < range.begin ? everyDefault() : everyValueOfTheFullStore();
        if (!cutInside && values.value(range.key) != expected.value(range.key)) {
            return range.key;
        }
    }
    return {};
}

// A language in which every text differs from the English one.
class ForeignTranslator : public QTranslator
{
public:
    using QTranslator::QTranslator;

    bool isEmpty() const override { return false; }
    QString translate(const char *, const char *source, const char *, int) const override
    {
        return u'x' + QString::fromLatin1(source);
    }
};

// Records the signals of a Settings in order, as "signal" or "signal(argument)".
class SignalLog : public QObject
{
public:
    explicit SignalLog(Settings *settings)
    {
        follow(settings, &Settings::globalHotkeyChanged, &Settings::searchEngineChanged,
               &Settings::pluginAutoEnterChanged, &Settings::pluginEnabledChanged,
               &Settings::pluginHotkeyChanged, &Settings::autoStartChanged, &Settings::themeChanged,
               &Settings::showFloatIconChanged, &Settings::autoHideOnFocusLossChanged,
               &Settings::appLaunchRequiresDoubleClickChanged,
               &Settings::showAllAppsWhenSearchEmptyChanged);
    }

    QStringList lines;

private:
    template <typename... Signals> void follow(Settings *settings, Signals... signalPointers)
    {
        (followOne(settings, signalPointers), ...);
    }

    void followOne(Settings *settings, void (Settings::*signal)())
    {
        const QString name = QString::fromLatin1(QMetaMethod::fromSignal(signal).name());
        connect(settings, signal, this, [this, name] { lines.append(name); });
    }

    void followOne(Settings *settings, void (Settings::*signal)(const QString &))
    {
        const QString name = QString::fromLatin1(QMetaMethod::fromSignal(signal).name());
        connect(settings, signal, this, [this, name](const QString &argument) {
            lines.append(name + u'(' + argument + u')');
        });
    }
};

QStringList methodsOf(const QMetaObject &meta, QMetaMethod::MethodType type)
{
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.methodType() == type && method.access() == QMetaMethod::Public) {
            methods.append(QString::fromLatin1(method.typeName()) + u' '
                           + QString::fromLatin1(method.methodSignature()));
        }
    }
    return methods;
}

} // namespace

class tst_Settings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void declaresItsSignalsInOrder();
    void declaresItsPropertiesInOrder();
    void declaresItsInvokableMethods();
    void answersThroughTheMetaObject();

    void keepsItsStoreUnderItsOwnName();
    void leavesTheWritingToTheEventLoop();
    void createsNothingByReading();
    void documentHasEachKeyAndDefault();
    void readsEveryKeyOfAFullStore();
    void writesEveryKey();
    void keepsEveryKeyInOneFile();

    void storesAPreference_data();
    void storesAPreference();
    void emitsAfterTheWrite_data();
    void emitsAfterTheWrite();
    void ignoresTheStoredValue_data();
    void ignoresTheStoredValue();
    void ignoresTheDefaultOfAFreshStore_data();
    void ignoresTheDefaultOfAFreshStore();
    void keepsTheKeyThatReturnsToItsDefault_data();
    void keepsTheKeyThatReturnsToItsDefault();
    void readsTheStoreAtEachCall_data();
    void readsTheStoreAtEachCall();
    void comparesTextsExactly_data();
    void comparesTextsExactly();

    void storesEachPluginUnderItsName_data();
    void storesEachPluginUnderItsName();
    void ignoresTheStoredSwitch();
    void keepsAHotkeyForEachPlugin_data();
    void keepsAHotkeyForEachPlugin();
    void keepsTheKeyOfAnEmptiedHotkey();
    void ignoresTheStoredPluginHotkey();
    void emitsPluginSignalsAfterTheWrite();

    void readsTheHotkeyFromTheOlderKeys_data();
    void readsTheHotkeyFromTheOlderKeys();
    void readsTheOlderKeysInPortableForm();
    void prefersTheHotkeyToTheOlderKeys_data();
    void prefersTheHotkeyToTheOlderKeys();
    void ignoresTheHotkeyThatTheOlderKeysYield();
    void keepsTheOlderKeysBesideANewHotkey();

    void keepsTheFloatIconPosition_data();
    void keepsTheFloatIconPosition();
    void writesAnUnchangedFloatIconPosition();
    void readsEachFloatIconCoordinateByItself();
    void keepsTheWindowPosition_data();
    void keepsTheWindowPosition();
    void hasNoWindowPosition_data();
    void hasNoWindowPosition();

    void appliesAutoStartAtConstruction_data();
    void appliesAutoStartAtConstruction();
    void appliesAutoStartBetweenWriteAndSignal();
    void ignoresTheAutoStartThatWasLastAskedFor();
    void comparesAutoStartWithWhatWasAskedFor();

    void convertsValuesOfAnotherType_data();
    void convertsValuesOfAnotherType();
    void survivesADamagedStore_data();
    void survivesADamagedStore();
    void readsATruncatedStoreAsFarAsItGoes();
    void writesATruncatedStoreWithoutFurtherLoss();
    void survivesRandomStores();
    void survivesAFolderInPlaceOfTheStore();
    void savesOnceTheStoreCanBeWritten();
    void keepsTheStoreOnAFullDisk_data();
    void keepsTheStoreOnAFullDisk();

private:
    void addPreferenceRows(const QStringList &exceptFor = {});
};

void tst_Settings::init()
{
    testhome::reset();
    fakePlatform() = FakePlatform();
}

void tst_Settings::declaresItsSignalsInOrder()
{
    QCOMPARE(methodsOf(Settings::staticMetaObject, QMetaMethod::Signal),
             QStringList({
                 u"void globalHotkeyChanged()"_s,
                 u"void searchEngineChanged()"_s,
                 u"void pluginAutoEnterChanged()"_s,
                 u"void pluginEnabledChanged(QString)"_s,
                 u"void pluginHotkeyChanged(QString)"_s,
                 u"void autoStartChanged()"_s,
                 u"void themeChanged()"_s,
                 u"void showFloatIconChanged()"_s,
                 u"void autoHideOnFocusLossChanged()"_s,
                 u"void appLaunchRequiresDoubleClickChanged()"_s,
                 u"void showAllAppsWhenSearchEmptyChanged()"_s,
             }));
}

void tst_Settings::declaresItsPropertiesInOrder()
{
    const QMetaObject &meta = Settings::staticMetaObject;
    QStringList properties;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        QVERIFY2(property.isReadable() && property.isWritable(), property.name());
        QCOMPARE(property.notifySignal().methodSignature(),
                 QByteArray(property.name()) + "Changed()");
        properties.append(QString::fromLatin1(property.typeName()) + u' '
                          + QString::fromLatin1(property.name()));
    }
    QCOMPARE(properties, QStringList({
                             u"QString globalHotkey"_s,
                             u"QString searchEngine"_s,
                             u"bool pluginAutoEnter"_s,
                             u"bool autoStart"_s,
                             u"QString theme"_s,
                             u"bool showFloatIcon"_s,
                             u"bool autoHideOnFocusLoss"_s,
                             u"bool appLaunchRequiresDoubleClick"_s,
                             u"bool showAllAppsWhenSearchEmpty"_s,
                         }));
}

void tst_Settings::declaresItsInvokableMethods()
{
    QCOMPARE(methodsOf(Settings::staticMetaObject, QMetaMethod::Method),
             QStringList({
                 u"bool isPluginEnabled(QString)"_s,
                 u"void setPluginEnabled(QString,bool)"_s,
                 u"bool pluginAutoEnter()"_s,
                 u"void setPluginAutoEnter(bool)"_s,
                 u"QPoint floatIconPos()"_s,
                 u"void setFloatIconPos(QPoint)"_s,
             }));
}

void tst_Settings::answersThroughTheMetaObject()
{
    Settings settings;
    QVERIFY(QMetaObject::invokeMethod(&settings, "setPluginEnabled", Q_ARG(QString, u"calc"_s),
                                      Q_ARG(bool, false)));
    bool enabled = true;
    QVERIFY(QMetaObject::invokeMethod(&settings, "isPluginEnabled", Q_RETURN_ARG(bool, enabled),
                                      Q_ARG(QString, u"calc"_s)));
    QVERIFY(!enabled);

    QVERIFY(QMetaObject::invokeMethod(&settings, "setPluginAutoEnter", Q_ARG(bool, true)));
    bool autoEnter = false;
    QVERIFY(QMetaObject::invokeMethod(&settings, "pluginAutoEnter", Q_RETURN_ARG(bool, autoEnter)));
    QVERIFY(autoEnter);

    QVERIFY(QMetaObject::invokeMethod(&settings, "setFloatIconPos", Q_ARG(QPoint, QPoint(3, 4))));
    QPoint pos;
    QVERIFY(QMetaObject::invokeMethod(&settings, "floatIconPos", Q_RETURN_ARG(QPoint, pos)));
    QCOMPARE(pos, QPoint(3, 4));
}

void tst_Settings::keepsItsStoreUnderItsOwnName()
{
    {
        Settings settings;
        settings.setTheme(u"dark"_s);
        settings.setPluginEnabled(u"calc"_s, false);
    }
    QCOMPARE(storeOnDisk(), QByteArray("[General]\ntheme=dark\n\n[plugins]\ncalc=false\n"));
    QCOMPARE(
        QDir(testhome::path() + "/config"_L1).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
        QStringList(u"Vaskel"_s));
    QCOMPARE(QDir(testhome::path() + "/config/Vaskel"_L1).entryList(QDir::Files),
             QStringList(u"Vaskel.conf"_s));
}

void tst_Settings::leavesTheWritingToTheEventLoop()
{
    Settings settings;
    settings.setTheme(u"dark"_s);
    QCOMPARE(storeOnDisk(), QByteArray());
    QTRY_COMPARE(storeOnDisk(), QByteArray("[General]\ntheme=dark\n"));
}

void tst_Settings::createsNothingByReading()
{
    {
        const Settings settings;
        QCOMPARE(everyValueOf(settings), everyDefault());
        QVERIFY(settings.isPluginEnabled(u"no such plugin"_s));
        QCOMPARE(settings.pluginHotkey(u"no such plugin"_s), QString());
        QCOMPARE(storedKeys(), QStringList());
    }
    QVERIFY(!QFileInfo::exists(testhome::path() + u'/' + storeFile));
}

void tst_Settings::documentHasEachKeyAndDefault()
{
    QVariantMap expected = asTexts(everyDefault());
    for (const QString &key : {u"floatIconX"_s, u"floatIconY"_s, u"windowPosition"_s}) {
        expected.insert(key, u"none"_s);
    }
    expected.insert(u"plugins/app"_s, expected.take(u"plugins/calc"_s));
    expected.remove(u"pluginHotkeys/calc"_s);
    expected.insert(u"pluginHotkeys/app"_s, u"none"_s);
    QCOMPARE(documentedDefaults(), expected);
}

void tst_Settings::readsEveryKeyOfAFullStore()
{
    fillStore();
    {
        const Settings settings;
        QCOMPARE(everyValueOf(settings), everyValueOfTheFullStore());
    }
    QCOMPARE(content(), asTexts(everyValueOfTheFullStore()));
}

void tst_Settings::writesEveryKey()
{
    {
        Settings settings;
        settings.setAppLaunchRequiresDoubleClick(false);
        settings.setAutoHideOnFocusLoss(true);
        settings.setAutoStart(true);
        settings.setFloatIconPos({12, -34});
        settings.setGlobalHotkey(u"Meta+Space"_s);
        settings.setPluginAutoEnter(true);
        settings.setPluginHotkey(u"calc"_s, u"Ctrl+F2"_s);
        settings.setPluginEnabled(u"calc"_s, false);
        settings.setSearchEngine(u"Google"_s);
        settings.setShowAllAppsWhenSearchEmpty(false);
        settings.setShowFloatIcon(false);
        settings.setTheme(u"dark"_s);
    }
    QCOMPARE(content(), asTexts(everyValueOfTheFullStore()));
}

void tst_Settings::keepsEveryKeyInOneFile()
{
    writesEveryKey();
    QCOMPARE(storeOnDisk(), fullStore);
}

void tst_Settings::addPreferenceRows(const QStringList &exceptFor)
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("initial");
    QTest::addColumn<QVariant>("other");
    const QVariantMap defaults = everyDefault();
    const QVariantMap others = everyValueOfTheFullStore();
    const QMetaObject &meta = Settings::staticMetaObject;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QString key = QString::fromLatin1(meta.property(i).name());
        if (!exceptFor.contains(key)) {
            QTest::addRow("%s", qPrintable(key)) << key << defaults.value(key) << others.value(key);
        }
    }
}

void tst_Settings::storesAPreference_data()
{
    addPreferenceRows();
}

void tst_Settings::storesAPreference()
{
    QFETCH(QString, key);
    QFETCH(QVariant, initial);
    QFETCH(QVariant, other);
    Settings settings;
    const SignalLog log(&settings);
    QCOMPARE(settings.property(key.toLatin1()), initial);
    QVERIFY(settings.setProperty(key.toLatin1(), other));
    QCOMPARE(settings.property(key.toLatin1()), other);
    QCOMPARE(stored(key).toString(), other.toString());
    QCOMPARE(storedKeys(), QStringList(key));
    QCOMPARE(log.lines, QStringList(key + "Changed"_L1));
}

void tst_Settings::emitsAfterTheWrite_data()
{
    addPreferenceRows();
}

void tst_Settings::emitsAfterTheWrite()
{
    QFETCH(QString, key);
    QFETCH(QVariant, other);
    Settings settings;
    QVariant storedAtSignal;
    QVariant readAtSignal;
    const auto look = [&] {
        storedAtSignal = stored(key);
        readAtSignal = settings.property(key.toLatin1());
    };
    for (const auto signal :
         {&Settings::globalHotkeyChanged, &Settings::searchEngineChanged,
          &Settings::pluginAutoEnterChanged, &Settings::autoStartChanged, &Settings::themeChanged,
          &Settings::showFloatIconChanged, &Settings::autoHideOnFocusLossChanged,
          &Settings::appLaunchRequiresDoubleClickChanged,
          &Settings::showAllAppsWhenSearchEmptyChanged}) {
        connect(&settings, signal, this, look);
    }
    settings.setProperty(key.toLatin1(), other);
    QCOMPARE(storedAtSignal.toString(), other.toString());
    QCOMPARE(readAtSignal, other);
}

void tst_Settings::ignoresTheStoredValue_data()
{
    addPreferenceRows();
}

void tst_Settings::ignoresTheStoredValue()
{
    QFETCH(QString, key);
    QFETCH(QVariant, other);
    // The setter would write a bool, so a text that stays shows that it has not written.
    fillStore();
    Settings settings;
    const SignalLog log(&settings);
    QVERIFY(settings.setProperty(key.toLatin1(), other));
    QCOMPARE(stored(key).typeId(), int(QMetaType::QString));
    QCOMPARE(log.lines, QStringList());
    QTest::qWait(0);
    QCOMPARE(content(), asTexts(everyValueOfTheFullStore()));
}

void tst_Settings::ignoresTheDefaultOfAFreshStore_data()
{
    addPreferenceRows();
}

void tst_Settings::ignoresTheDefaultOfAFreshStore()
{
    QFETCH(QString, key);
    QFETCH(QVariant, initial);
    Settings settings;
    const SignalLog log(&settings);
    QVERIFY(settings.setProperty(key.toLatin1(), initial));
    QCOMPARE(storedKeys(), QStringList());
    QCOMPARE(log.lines, QStringList());
}

void tst_Settings::keepsTheKeyThatReturnsToItsDefault_data()
{
    addPreferenceRows();
}

void tst_Settings::keepsTheKeyThatReturnsToItsDefault()
{
    QFETCH(QString, key);
    QFETCH(QVariant, initial);
    QFETCH(QVariant, other);
    Settings settings;
    const SignalLog log(&settings);
    settings.setProperty(key.toLatin1(), other);
    settings.setProperty(key.toLatin1(), initial);
    QCOMPARE(storedKeys(), QStringList(key));
    QCOMPARE(stored(key).toString(), initial.toString());
    QCOMPARE(log.lines, QStringList({QString(key + "Changed"_L1), QString(key + "Changed"_L1)}));
}

void tst_Settings::readsTheStoreAtEachCall_data()
{
    addPreferenceRows({u"autoStart"_s});
}

void tst_Settings::readsTheStoreAtEachCall()
{
    QFETCH(QString, key);
    QFETCH(QVariant, initial);
    QFETCH(QVariant, other);
    Settings settings;
    const SignalLog log(&settings);
    store(key, other);
    QCOMPARE(settings.property(key.toLatin1()), other);
    settings.setProperty(key.toLatin1(), other);
    QCOMPARE(log.lines, QStringList());
    settings.setProperty(key.toLatin1(), initial);
    QCOMPARE(stored(key).toString(), initial.toString());
    QCOMPARE(log.lines, QStringList(key + "Changed"_L1));
}

void tst_Settings::comparesTextsExactly_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::newRow("other case of an engine") << u"searchEngine"_s << u"bing"_s;
    QTest::newRow("other case of a theme") << u"theme"_s << u"System"_s;
    QTest::newRow("blank behind a theme") << u"theme"_s << u"system "_s;
    QTest::newRow("empty theme") << u"theme"_s << u""_s;
    QTest::newRow("other case of a hotkey") << u"globalHotkey"_s << u"ctrl+alt+space"_s;
    QTest::newRow("other order of a hotkey") << u"globalHotkey"_s << u"Alt+Ctrl+Space"_s;
    QTest::newRow("empty hotkey") << u"globalHotkey"_s << u""_s;
    QTest::newRow("other script") << u"searchEngine"_s << u"百度"_s;
    QTest::newRow("signs that the file escapes") << u"searchEngine"_s << u"@a, \"b\"; \\c=%d\n"_s;
}

void tst_Settings::comparesTextsExactly()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    {
        Settings settings;
        const SignalLog log(&settings);
        QVERIFY(settings.setProperty(key.toLatin1(), value));
        QCOMPARE(log.lines, QStringList(key + "Changed"_L1));
        QVERIFY(settings.setProperty(key.toLatin1(), value));
        QCOMPARE(log.lines.count(), 1);
    }
    QCOMPARE(content(), (QVariantMap{{key, value}}));
    const Settings settings;
    QCOMPARE(settings.property(key.toLatin1()).toString(), value);
}

void tst_Settings::storesEachPluginUnderItsName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("plugin") << u"calc"_s;
    QTest::newRow("upper case is another name") << u"CALC"_s;
    QTest::newRow("other script") << u"计算"_s;
    QTest::newRow("blank inside") << u"my calc"_s;
}

void tst_Settings::storesEachPluginUnderItsName()
{
    QFETCH(QString, name);
    Settings settings;
    const SignalLog log(&settings);
    QVERIFY(settings.isPluginEnabled(name));
    settings.setPluginEnabled(name, false);
    QVERIFY(!settings.isPluginEnabled(name));
    QVERIFY(settings.isPluginEnabled(u"todo"_s));
    QCOMPARE(storedKeys(), QStringList(u"plugins/"_s + name));
    QCOMPARE(stored(u"plugins/"_s + name).toString(), u"false"_s);
    settings.setPluginEnabled(name, true);
    QVERIFY(settings.isPluginEnabled(name));
    QCOMPARE(stored(u"plugins/"_s + name).toString(), u"true"_s);
    const QString line = u"pluginEnabledChanged(%1)"_s.arg(name);
    QCOMPARE(log.lines, QStringList({line, line}));
}

void tst_Settings::ignoresTheStoredSwitch()
{
    Settings settings;
    const SignalLog log(&settings);
    settings.setPluginEnabled(u"calc"_s, true);
    QCOMPARE(storedKeys(), QStringList());

    store(u"plugins/calc"_s, u"false"_s);
    settings.setPluginEnabled(u"calc"_s, false);
    QCOMPARE(stored(u"plugins/calc"_s), QVariant(u"false"_s));
    QCOMPARE(log.lines, QStringList());
}

void tst_Settings::keepsAHotkeyForEachPlugin_data()
{
    storesEachPluginUnderItsName_data();
}

void tst_Settings::keepsAHotkeyForEachPlugin()
{
    QFETCH(QString, name);
    Settings settings;
    const SignalLog log(&settings);
    QCOMPARE(settings.pluginHotkey(name), QString());
    settings.setPluginHotkey(name, u"Ctrl+F2"_s);
    QCOMPARE(settings.pluginHotkey(name), u"Ctrl+F2"_s);
    QCOMPARE(settings.pluginHotkey(u"todo"_s), QString());
    QCOMPARE(storedKeys(), QStringList(u"pluginHotkeys/"_s + name));
    QCOMPARE(stored(u"pluginHotkeys/"_s + name), QVariant(u"Ctrl+F2"_s));
    QCOMPARE(log.lines, QStringList(u"pluginHotkeyChanged(%1)"_s.arg(name)));
}

void tst_Settings::keepsTheKeyOfAnEmptiedHotkey()
{
    {
        Settings settings;
        const SignalLog log(&settings);
        settings.setPluginHotkey(u"calc"_s, u"Ctrl+F2"_s);
        settings.setPluginHotkey(u"calc"_s, QString());
        QCOMPARE(log.lines.count(), 2);
    }
    QCOMPARE(content(), (QVariantMap{{u"pluginHotkeys/calc"_s, u""_s}}));
    const Settings settings;
    QCOMPARE(settings.pluginHotkey(u"calc"_s), QString());
}

void tst_Settings::ignoresTheStoredPluginHotkey()
{
    Settings settings;
    const SignalLog log(&settings);
    settings.setPluginHotkey(u"calc"_s, u""_s);
    QCOMPARE(storedKeys(), QStringList());

    store(u"pluginHotkeys/calc"_s, QByteArray("Ctrl+F2"));
    settings.setPluginHotkey(u"calc"_s, u"Ctrl+F2"_s);
    QCOMPARE(stored(u"pluginHotkeys/calc"_s).typeId(), int(QMetaType::QByteArray));
    QCOMPARE(log.lines, QStringList());
    settings.setPluginHotkey(u"calc"_s, u"ctrl+F2"_s);
    QCOMPARE(log.lines, QStringList(u"pluginHotkeyChanged(calc)"_s));
}

void tst_Settings::emitsPluginSignalsAfterTheWrite()
{
    Settings settings;
    bool enabledAtSignal = true;
    QString hotkeyAtSignal;
    connect(&settings, &Settings::pluginEnabledChanged, this,
            [&](const QString &name) { enabledAtSignal = settings.isPluginEnabled(name); });
    connect(&settings, &Settings::pluginHotkeyChanged, this,
            [&](const QString &name) { hotkeyAtSignal = settings.pluginHotkey(name); });
    settings.setPluginEnabled(u"calc"_s, false);
    settings.setPluginHotkey(u"calc"_s, u"Ctrl+F2"_s);
    QVERIFY(!enabledAtSignal);
    QCOMPARE(hotkeyAtSignal, u"Ctrl+F2"_s);
}

void tst_Settings::readsTheHotkeyFromTheOlderKeys_data()
{
    QTest::addColumn<QVariant>("modifiers");
    QTest::addColumn<QVariant>("key");
    QTest::addColumn<QString>("sequence");
    QTest::newRow("neither key") << QVariant() << QVariant() << u"Ctrl+Alt+Space"_s;
    QTest::newRow("modifiers alone") << QVariant(0x4000000) << QVariant() << u"Ctrl+Space"_s;
    QTest::newRow("key alone") << QVariant() << QVariant(0x41) << u"Ctrl+Alt+A"_s;
    QTest::newRow("no modifier") << QVariant(0) << QVariant(0x41) << u"A"_s;
    QTest::newRow("shift") << QVariant(0x2000000) << QVariant(0x41) << u"Shift+A"_s;
    QTest::newRow("meta") << QVariant(0x10000000) << QVariant(0x41) << u"Meta+A"_s;
    QTest::newRow("all modifiers")
        << QVariant(0x1E000000) << QVariant(0x20) << u"Meta+Ctrl+Alt+Shift+Space"_s;
    for (int i = 1; i <= 12; ++i) {
        QTest::addRow("virtual key of F%d", i)
            << QVariant(0x4000000) << QVariant(0x6F + i) << u"Ctrl+F%1"_s.arg(i);
    }
    QTest::newRow("below the function keys")
        << QVariant(0x4000000) << QVariant(0x6F) << u"Ctrl+O"_s;
    QTest::newRow("above the function keys")
        << QVariant(0x4000000) << QVariant(0x7C) << u"Ctrl+|"_s;
    QTest::newRow("function key as a Qt key")
        << QVariant(0x4000000) << QVariant(0x1000031) << u"Ctrl+F2"_s;
    QTest::newRow("numbers as text")
        << QVariant(u"67108864"_s) << QVariant(u"113"_s) << u"Ctrl+F2"_s;
    QTest::newRow("modifiers that are no number")
        << QVariant(u"Ctrl"_s) << QVariant(0x71) << u"F2"_s;
}

void tst_Settings::readsTheHotkeyFromTheOlderKeys()
{
    QFETCH(QVariant, modifiers);
    QFETCH(QVariant, key);
    QFETCH(QString, sequence);
    if (modifiers.isValid()) {
        store(u"hotkeyModifiers"_s, modifiers);
    }
    if (key.isValid()) {
        store(u"hotkeyKey"_s, key);
    }
    const QVariantMap before = content();
    {
        const Settings settings;
        QCOMPARE(settings.globalHotkey(), sequence);
        QCOMPARE(settings.globalHotkey(), sequence);
        QVERIFY(!storedKeys().contains(u"globalHotkey"_s));
    }
    QCOMPARE(content(), before);
}

void tst_Settings::readsTheOlderKeysInPortableForm()
{
    ForeignTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const Settings settings;
    QCOMPARE(settings.globalHotkey(), u"Ctrl+Alt+Space"_s);
}

void tst_Settings::prefersTheHotkeyToTheOlderKeys_data()
{
    QTest::addColumn<QString>("sequence");
    QTest::newRow("hotkey") << u"Meta+Space"_s;
    QTest::newRow("empty hotkey stays empty") << u""_s;
    QTest::newRow("what is no hotkey stays too") << u"nonsense"_s;
}

void tst_Settings::prefersTheHotkeyToTheOlderKeys()
{
    QFETCH(QString, sequence);
    store(u"hotkeyModifiers"_s, 0x4000000);
    store(u"hotkeyKey"_s, 0x71);
    store(u"globalHotkey"_s, sequence);
    const Settings settings;
    QCOMPARE(settings.globalHotkey(), sequence);
}

void tst_Settings::ignoresTheHotkeyThatTheOlderKeysYield()
{
    store(u"hotkeyModifiers"_s, 0x4000000);
    store(u"hotkeyKey"_s, 0x71);
    Settings settings;
    const SignalLog log(&settings);
    settings.setGlobalHotkey(u"Ctrl+F2"_s);
    QVERIFY(!storedKeys().contains(u"globalHotkey"_s));
    QCOMPARE(log.lines, QStringList());
}

void tst_Settings::keepsTheOlderKeysBesideANewHotkey()
{
    store(u"hotkeyModifiers"_s, 0x4000000);
    store(u"hotkeyKey"_s, 0x71);
    {
        Settings settings;
        const SignalLog log(&settings);
        settings.setGlobalHotkey(u"Ctrl+Alt+Space"_s);
        QCOMPARE(settings.globalHotkey(), u"Ctrl+Alt+Space"_s);
        QCOMPARE(log.lines, QStringList(u"globalHotkeyChanged"_s));
    }
    QCOMPARE(content(), (QVariantMap{{u"globalHotkey"_s, u"Ctrl+Alt+Space"_s},
                                     {u"hotkeyKey"_s, u"113"_s},
                                     {u"hotkeyModifiers"_s, u"67108864"_s}}));
}

void tst_Settings::keepsTheFloatIconPosition_data()
{
    QTest::addColumn<QPoint>("pos");
    QTest::newRow("on the first screen") << QPoint(100, 200);
    QTest::newRow("origin") << QPoint(0, 0);
    QTest::newRow("left of and above the first screen") << QPoint(-1900, -20);
    QTest::newRow("as never placed") << QPoint(-1, -1);
}

void tst_Settings::keepsTheFloatIconPosition()
{
    QFETCH(QPoint, pos);
    Settings settings;
    const SignalLog log(&settings);
    settings.setFloatIconPos(pos);
    QCOMPARE(settings.floatIconPos(), pos);
    QCOMPARE(storedKeys(), QStringList({u"floatIconX"_s, u"floatIconY"_s}));
    QCOMPARE(stored(u"floatIconX"_s), QVariant(pos.x()));
    QCOMPARE(stored(u"floatIconY"_s), QVariant(pos.y()));
    QCOMPARE(log.lines, QStringList());
}

void tst_Settings::writesAnUnchangedFloatIconPosition()
{
    store(u"floatIconX"_s, u"3"_s);
    store(u"floatIconY"_s, u"4"_s);
    Settings settings;
    const SignalLog log(&settings);
    QCOMPARE(settings.floatIconPos(), QPoint(3, 4));
    settings.setFloatIconPos({3, 4});
    QCOMPARE(stored(u"floatIconX"_s).typeId(), int(QMetaType::Int));
    QCOMPARE(stored(u"floatIconY"_s).typeId(), int(QMetaType::Int));
    QCOMPARE(log.lines, QStringList());
}

void tst_Settings::readsEachFloatIconCoordinateByItself()
{
    store(u"floatIconX"_s, 5);
    const Settings settings;
    QCOMPARE(settings.floatIconPos(), QPoint(5, -1));
    store(u"floatIconY"_s, 6);
    QCOMPARE(settings.floatIconPos(), QPoint(5, 6));
}

void tst_Settings::keepsTheWindowPosition_data()
{
    QTest::addColumn<QPoint>("position");
    QTest::newRow("on the first screen") << QPoint(100, 200);
    QTest::newRow("origin") << QPoint(0, 0);
    QTest::newRow("left of and above the first screen") << QPoint(-1900, -20);
    QTest::newRow("one pixel off") << QPoint(-1, -1);
}

void tst_Settings::keepsTheWindowPosition()
{
    QFETCH(QPoint, position);
    {
        Settings settings;
        const SignalLog log(&settings);
        settings.setWindowPosition(position);
        QCOMPARE(settings.windowPosition(), position);
        QCOMPARE(storedKeys(), QStringList(u"windowPosition"_s));
        QCOMPARE(log.lines, QStringList());
    }
    const Settings settings;
    QCOMPARE(settings.windowPosition(), position);
}

void tst_Settings::hasNoWindowPosition_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("no key") << QByteArray();
    QTest::newRow("empty") << QByteArray("windowPosition=");
    QTest::newRow("a text") << QByteArray("windowPosition=abc");
    QTest::newRow("a number") << QByteArray("windowPosition=7");
    QTest::newRow("a list") << QByteArray("windowPosition=1, 2");
    QTest::newRow("a size") << QByteArray("windowPosition=@Size(1 2)");
    QTest::newRow("half a point") << QByteArray("windowPosition=@Point(1)");
    QTest::newRow("invalid") << QByteArray("windowPosition=@Invalid()");
}

void tst_Settings::hasNoWindowPosition()
{
    QFETCH(QByteArray, line);
    testhome::writeFile(storeFile, "[General]\n" + line + "\n");
    const Settings settings;
    QCOMPARE(settings.windowPosition(), std::nullopt);
    QCOMPARE(storedKeys(), line.isEmpty() ? QStringList() : QStringList(u"windowPosition"_s));
}

void tst_Settings::appliesAutoStartAtConstruction_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("fresh store removes") << QVariant() << false;
    QTest::newRow("off removes") << QVariant(false) << false;
    QTest::newRow("on registers") << QVariant(true) << true;
    QTest::newRow("off as text") << QVariant(u"false"_s) << false;
    QTest::newRow("on as text") << QVariant(u"true"_s) << true;
    QTest::newRow("one") << QVariant(1) << true;
    QTest::newRow("list") << QVariant(QStringList({u"true"_s, u"true"_s})) << false;
}

void tst_Settings::appliesAutoStartAtConstruction()
{
    QFETCH(QVariant, value);
    QFETCH(bool, enabled);
    if (value.isValid()) {
        store(u"autoStart"_s, value);
    }
    const QVariantMap before = content();
    {
        const Settings settings;
        QCOMPARE(settings.autoStart(), enabled);
        QCOMPARE(fakePlatform().autoStartCalls, QList<bool>{enabled});
    }
    QCOMPARE(fakePlatform().autoStartCalls.count(), 1);
    QCOMPARE(content(), before);
}

void tst_Settings::appliesAutoStartBetweenWriteAndSignal()
{
    Settings settings;
    QStringList steps;
    const auto state = [&settings] {
        return u"%1 %2"_s.arg(settings.autoStart()).arg(stored(u"autoStart"_s).toString());
    };
    fakePlatform().duringAutoStartCall = [&] {
        steps.append(u"applied "_s + state());
    };
    connect(&settings, &Settings::autoStartChanged, this,
            [&] { steps.append(u"emitted "_s + state()); });
    settings.setAutoStart(true);
    settings.setAutoStart(false);
    QCOMPARE(steps, QStringList({u"applied 1 true"_s, u"emitted 1 true"_s, u"applied 0 false"_s,
                                 u"emitted 0 false"_s}));
    QCOMPARE(fakePlatform().autoStartCalls, QList<bool>({false, true, false}));
}

void tst_Settings::ignoresTheAutoStartThatWasLastAskedFor()
{
    Settings settings;
    const SignalLog log(&settings);
    settings.setAutoStart(true);
    settings.setAutoStart(true);
    QCOMPARE(fakePlatform().autoStartCalls, QList<bool>({false, true}));
    QCOMPARE(log.lines, QStringList(u"autoStartChanged"_s));
}

void tst_Settings::comparesAutoStartWithWhatWasAskedFor()
{
    Settings settings;
    const SignalLog log(&settings);
    store(u"autoStart"_s, true);
    QVERIFY(!settings.autoStart());
    settings.setAutoStart(false);
    QCOMPARE(stored(u"autoStart"_s).toString(), u"true"_s);
    QCOMPARE(log.lines, QStringList());
    settings.setAutoStart(true);
    QVERIFY(settings.autoStart());
    QCOMPARE(fakePlatform().autoStartCalls, QList<bool>({false, true}));
    QCOMPARE(log.lines, QStringList(u"autoStartChanged"_s));
}

void tst_Settings::convertsValuesOfAnotherType_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");
    const auto addRow = [](const QByteArray &line, const QVariant &value) {
        const QString key = QString::fromLatin1(line.first(line.indexOf('='))).replace(u'\\', u'/');
        QTest::addRow("%s", line.constData()) << line << key << value;
    };
    for (const char *no : {"false", "FALSE", "0", "", "\"\"", "true, true", "@Point(1 1)",
                           "@Invalid()", "@ByteArray(false)", "@Variant(\\0\\0\\0\\x7f)"}) {
        addRow(QByteArray("showFloatIcon=") + no, false);
        addRow(QByteArray("plugins\\calc=") + no, false);
    }
    for (const char *yes : {"true", "1", "yes", "off", "-1", "0.0", "@Nonsense(0)"}) {
        addRow(QByteArray("autoHideOnFocusLoss=") + yes, true);
        addRow(QByteArray("pluginAutoEnter=") + yes, true);
    }
    addRow("appLaunchRequiresDoubleClick=a, b", false);
    addRow("showAllAppsWhenSearchEmpty=a, b", false);
    addRow("autoStart=a, b", false);

    for (const QByteArray key : {"theme", "searchEngine", "globalHotkey", "pluginHotkeys\\calc"}) {
        addRow(key + "=42", u"42"_s);
        addRow(key + "=true", u"true"_s);
        addRow(key + "=", u""_s);
        addRow(key + "=a, b", u""_s);
        addRow(key + "=@Invalid()", u""_s);
        addRow(key + "=@Size(1 2)", u""_s);
        addRow(key + "=@ByteArray(bytes)", u"bytes"_s);
        addRow(key + "=@Variant(\\0\\0\\0\\x7f)", u""_s);
    }
    for (const QByteArray key : {"floatIconX", "floatIconY"}) {
        addRow(key + "=abc", 0);
        addRow(key + "=", 0);
        addRow(key + "=7a", 0);
        addRow(key + "=1.5", 0);
        addRow(key + "=true", 0);
        addRow(key + "=1, 2", 0);
        addRow(key + "=@Point(1 2)", 0);
        addRow(key + "=@Invalid()", 0);
        addRow(key + "=\"8\"", 8);
    }
}

void tst_Settings::convertsValuesOfAnotherType()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    if (line.contains("@Variant")) {
        QTest::ignoreMessage(QtWarningMsg, "QVariant::load: unknown user type with name .");
    }
    testhome::writeFile(storeFile, "[General]\nkept=a\n" + line + "\nalsoKept=b\n");
    QVariantMap expected = everyDefault();
    expected.insert(key, value);
    {
        Settings settings;
        QCOMPARE(everyValueOf(settings), expected);
        settings.setPluginEnabled(u"another"_s, false);
    }
    QCOMPARE(stored(u"kept"_s), QVariant(u"a"_s));
    QCOMPARE(stored(u"alsoKept"_s), QVariant(u"b"_s));
    QVERIFY(storedKeys().contains(key));
}

void tst_Settings::survivesADamagedStore_data()
{
    QTest::addColumn<QByteArray>("damage");
    QByteArray allBytes;
    for (int byte = 0; byte < 256; ++byte) {
        // A value with an open quote extends to the end of the file.
        if (byte != '"') {
            allBytes.append(char(byte));
        }
    }
    QTest::newRow("text") << QByteArray("This is not a store.");
    QTest::newRow("no key") << QByteArray("=value");
    QTest::newRow("signs alone") << QByteArray("===;;;]]]%%%");
    QTest::newRow("zeros") << QByteArray(4096, '\0');
    QTest::newRow("every byte but the quote") << allBytes;
    QTest::newRow("invalid UTF-8") << QByteArray("key=\xff\xfe\xc3\x28\xed\xa0\x80");
    QTest::newRow("invalid escapes") << QByteArray("%zz=\\xzz\\u\\8\\");
    QTest::newRow("line of 4 MB") << QByteArray(4 * 1024 * 1024, 'x');
    QTest::newRow("value of 4 MB") << "key=" + QByteArray(4 * 1024 * 1024, 'x');
    QTest::newRow("key in 10,000 groups") << QByteArray("a\\").repeated(10000) + "key=1";
    QTest::newRow("100,000 lines") << QByteArray("nonsense\n").repeated(100000);
    QTest::newRow("open group") << QByteArray("[plugins");
    QTest::newRow("list in a serialised value that claims 2^32 entries")
        << QByteArray("key=@Variant(\\0\\0\\0\\t\\0\\xff\\xff\\xff\\xfe)");
    QTest::newRow("text in a serialised value that claims 4 GB")
        << QByteArray("key=@Variant(\\0\\0\\0\\n\\0\\xff\\xff\\xff\\xf0)");
}

void tst_Settings::survivesADamagedStore()
{
    QFETCH(QByteArray, damage);
    testhome::writeFile(storeFile,
                        fullStore + '\n' + damage + "\n\n[pluginHotkeys]\ntodo=Ctrl+F3\n");
    {
        Settings settings;
        QCOMPARE(everyValueOf(settings), everyValueOfTheFullStore());
        QCOMPARE(settings.pluginHotkey(u"todo"_s), u"Ctrl+F3"_s);
        settings.setSearchEngine(u"Baidu"_s);
    }
    QVERIFY(storeOnDisk().contains("searchEngine=Baidu\n"));

    QVariantMap expected = everyValueOfTheFullStore();
    expected.insert(u"searchEngine"_s, u"Baidu"_s);
    const Settings settings;
    QCOMPARE(everyValueOf(settings), expected);
    QCOMPARE(settings.pluginHotkey(u"todo"_s), u"Ctrl+F3"_s);
}

void tst_Settings::readsATruncatedStoreAsFarAsItGoes()
{
    QCOMPARE(valuesInTheFullStore().count(), everyDefault().count());
    for (qsizetype size = 0; size <= fullStore.size(); ++size) {
        testhome::reset();
        testhome::writeFile(storeFile, fullStore.first(size));
        const Settings settings;
        QCOMPARE(std::pair(size, firstWrongKey(settings, size)), std::pair(size, QString()));
    }
}

void tst_Settings::writesATruncatedStoreWithoutFurtherLoss()
{
    // Each write waits for the disk, so try every eleventh size only.
    constexpr int step = 11;
    for (qsizetype size = 0; size <= fullStore.size(); size += step) {
        testhome::reset();
        testhome::writeFile(storeFile, fullStore.first(size));
        Settings().setPluginEnabled(u"another"_s, false);
        const Settings settings;
        QVERIFY(!settings.isPluginEnabled(u"another"_s));
        QVERIFY(storeOnDisk().contains("another=false\n"));
        QCOMPARE(std::pair(size, firstWrongKey(settings, size)), std::pair(size, QString()));
    }
}

void tst_Settings::survivesRandomStores()
{
    QRandomGenerator random(20240101);
    for (int i = 0; i < 300; ++i) {
        testhome::reset();
        QByteArray content = fullStore;
        for (int hits = 1 + random.bounded(20); hits > 0; --hits) {
            content[random.bounded(content.size())] = char(random.bounded(256));
        }
        testhome::writeFile(storeFile, content);
        Settings settings;
        everyValueOf(settings); // must not crash
        // Each write waits for the disk, so write in every fiftieth round only.
        if (i % 50 == 0) {
            settings.setTheme(u"after"_s);
            QVERIFY2(Settings().theme() == "after"_L1, content);
        }
    }
}

void tst_Settings::survivesAFolderInPlaceOfTheStore()
{
    QVERIFY(QDir().mkpath(testhome::path() + u'/' + storeFile));
    Settings settings;
    const SignalLog log(&settings);
    QCOMPARE(everyValueOf(settings), everyDefault());
    settings.setTheme(u"dark"_s);
    QCOMPARE(log.lines, QStringList(u"themeChanged"_s));
    QTest::qWait(0);
    QVERIFY(QFileInfo(testhome::path() + u'/' + storeFile).isDir());
}

void tst_Settings::savesOnceTheStoreCanBeWritten()
{
    // Root may write to a write-protected file, but not to a folder in its place.
    const QString path = testhome::path() + u'/' + storeFile;
    QVERIFY(QDir().mkpath(path));
    Settings settings;
    settings.setTheme(u"light"_s);
    QVERIFY(!settings.writeUnsaved());
    QCOMPARE(settings.theme(), u"light"_s);

    QVERIFY(QDir().rmdir(path));
    QVERIFY(settings.writeUnsaved());
    QTRY_COMPARE(stored(u"theme"_s), u"light"_s);
    QVERIFY(QFileInfo(path).isFile());
}

void tst_Settings::keepsTheStoreOnAFullDisk_data()
{
    QTest::addColumn<int>("room"); // for each file, in bytes
    QTest::newRow("nothing") << 0;
    QTest::newRow("the lock file") << 250; // that QSettings writes beside the store
    QTest::newRow("a part of the store") << 1000;
    QTest::newRow("all but the new value") << 2000 + int(fullStore.size());
}

void tst_Settings::keepsTheStoreOnAFullDisk()
{
    QFETCH(const int, room);
    const QByteArray before = fullStore + "[more]\nnote=" + QByteArray(2000, 'n') + '\n';
    testhome::writeFile(storeFile, before);
    QVariantMap expected = everyValueOfTheFullStore();
    {
        Settings settings;
        const SignalLog log(&settings);
        {
            const FileSizeLimit disk(room);
            settings.setTheme(u"light"_s);
            settings.setFloatIconPos({5, 6});
            settings.setWindowPosition({7, 8});
            QTest::qWait(0);
            QCOMPARE(storeOnDisk(), before);
        }
        QCOMPARE(log.lines, QStringList(u"themeChanged"_s));
        QCOMPARE(settings.windowPosition(), QPoint(7, 8));
        expected.insert({{u"theme"_s, u"light"_s}, {u"floatIconX"_s, 5}, {u"floatIconY"_s, 6}});
        QCOMPARE(everyValueOf(settings), expected);

        settings.setSearchEngine(u"Baidu"_s);
        expected.insert(u"searchEngine"_s, u"Baidu"_s);
        QTRY_VERIFY(storeOnDisk() != before);
    }
    QCOMPARE(QDir(testhome::path() + "/config/Vaskel"_L1).entryList(QDir::Files),
             QStringList(u"Vaskel.conf"_s));
    const Settings settings;
    QCOMPARE(everyValueOf(settings), expected);
    QCOMPARE(settings.windowPosition(), QPoint(7, 8));
    QCOMPARE(stored(u"more/note"_s).toString().size(), 2000);
}

VASKEL_TEST(tst_Settings, QCoreApplication)
#include "tst_Settings.moc"
