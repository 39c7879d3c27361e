// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/PluginManager.h"

#include "core/ArgumentsAction.h"
#include "core/IPlugin.h"
#include "settings/Settings.h"
#include "support/FakePlatform.h"
#include "support/FileContent.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QMetaMethod>
#include <QPointer>
#include <QTest>
#include <QTranslator>
#include <QUrl>
#include <QWidget>

using namespace Qt::StringLiterals;
using filecontent::contentOf;

namespace {

// Records its calls in order and answers from its fields.
class RecordingPlugin : public IPlugin
{
    Q_OBJECT

public:
    explicit RecordingPlugin(QString command, QStringList aliases = {}, QObject *parent = nullptr)
        : IPlugin(parent)
        , m_command(std::move(command))
        , m_aliases(std::move(aliases))
    {
    }

    QString command() const override { return m_command; }
    QStringList aliases() const override { return m_aliases; }
    QString description() const override { return u"All about "_s + m_command; }

    QVariantList query(const QString &args) override
    {
        queries.append(args);
        return {QVariantMap{{u"title"_s, u"Row of "_s + m_command}}};
    }

    bool execute(const QVariantMap &action) override
    {
        actions.append(action);
        return executeResult;
    }

    bool hasView() const override { return withView; }
    void setViewCommand(const QString &command) override { viewCalls.append(command); }

    QWidget *createView() override
    {
        viewCalls.append(u"createView"_s);
        return view;
    }

    bool executeResult = true;
    bool withView = false;
    QWidget *view = nullptr;
    QStringList queries;
    QVariantList actions;
    QStringList viewCalls;

private:
    QString m_command;
    QStringList m_aliases;
};

// A plugin whose arguments have an action.
class NotePlugin : public RecordingPlugin, public ArgumentsAction
{
    Q_OBJECT

public:
    using RecordingPlugin::RecordingPlugin;

    QVariantMap actionForArguments(const QString &args) const override
    {
        return {{u"type"_s, u"note"_s}, {u"data"_s, args}, {u"plugin"_s, command()}};
    }
};

// Records the messages of the process in order during its lifetime.
class MessageLog
{
public:
    MessageLog()
        : m_previous(qInstallMessageHandler(append))
    {
        s_lines.clear();
    }
    ~MessageLog() { qInstallMessageHandler(m_previous); }
    Q_DISABLE_COPY_MOVE(MessageLog)

    QStringList lines() const { return s_lines; }

private:
    static void append(QtMsgType type, const QMessageLogContext &, const QString &message)
    {
        const QString level = type == QtDebugMsg     ? u"debug"_s
                              : type == QtWarningMsg ? u"warning"_s
                                                     : u"other"_s;
        s_lines.append(level + u' ' + message);
    }

    static inline QStringList s_lines;
    QtMessageHandler m_previous;
};

// Replaces the browser of the desktop during its lifetime.
class UrlRecorder : public QObject
{
    Q_OBJECT

public:
    UrlRecorder() { QDesktopServices::setUrlHandler(u"vaskel-test"_s, this, "open"); }
    ~UrlRecorder() override { QDesktopServices::unsetUrlHandler(u"vaskel-test"_s); }

    QList<QUrl> urls;

public Q_SLOTS:
    void open(const QUrl &url) { urls.append(url); }
};

class ContextTranslator : public QTranslator
{
public:
    using QTranslator::QTranslator;

    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return u"<%1|%2>"_s.arg(QString::fromLatin1(context), QString::fromLatin1(source));
    }
};

QVariantMap actionOf(const QString &type, const QVariant &data = {}, const QVariant &plugin = {})
{
    QVariantMap action{{u"type"_s, type}};
    if (data.isValid()) {
        action.insert(u"data"_s, data);
    }
    if (plugin.isValid()) {
        action.insert(u"plugin"_s, plugin);
    }
    return action;
}

QVariantList rowOf(const QString &command)
{
    return {QVariantMap{{u"title"_s, u"Row of "_s + command}}};
}

QVariantList noticeFor(const QString &command)
{
    return {QVariantMap{
        {u"title"_s, u"Plugin disabled"_s},
        {u"subtitle"_s, command + u" plugin has been disabled in settings"_s},
        {u"icon"_s, u""_s},
        {u"action"_s, QVariantMap{{u"type"_s, u"none"_s}, {u"plugin"_s, command}}},
    }};
}

QStringList sorted(QStringList list)
{
    list.sort();
    return list;
}

QString clipboardText()
{
    return QGuiApplication::clipboard()->text();
}

// A program that writes its number of arguments, its parent process and its folder.
QString installRecorder(const QString &name)
{
    QString path = testhome::writeFile(name, "#!/bin/sh\n"
                                             "{ echo $#; echo $PPID; pwd; } > \"$0.part\"\n"
                                             "mv \"$0.part\" \"$0.ran\"\n");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
}

} // namespace

class tst_PluginManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void startsEmpty();
    void registersCommandAndAliases();
    void ignoresNull();
    void logsEachCommandAtRegistration();
    void normalisesCommandsAtRegistration_data();
    void normalisesCommandsAtRegistration();
    void skipsBlankCommandsWithoutAMessage_data();
    void skipsBlankCommandsWithoutAMessage();
    void keepsTheFirstPluginOfACommand();
    void detectsConflictsInNormalisedForm();
    void warnsOfACommandThatAPluginRepeats();
    void ownsOnlyItsChildren();

    void configurablePluginsAreEachOnceByCommand();
    void looksUpCommands_data();
    void looksUpCommands();

    void queriesWithTheUntouchedArguments_data();
    void queriesWithTheUntouchedArguments();
    void logsAnUnknownCommandUnchanged();

    void asksForTheActionOfTheUntouchedArguments();
    void hasNoActionForOtherArguments_data();
    void hasNoActionForOtherArguments();

    void executesNothingWithoutAType_data();
    void executesNothingWithoutAType();
    void routesAnActionByItsPlugin_data();
    void routesAnActionByItsPlugin();
    void returnsTheResultOfThePlugin();
    void launchesADetachedProcess_data();
    void launchesADetachedProcess();
    void doesNotSplitTheProgramToLaunch();
    void launchesACommandFromTheSystem();
    void launchesOnlyByTheExactType();
    void reportsAProgramThatCannotStart();
    void opensUrls_data();
    void opensUrls();
    void reportsAUrlThatCannotBeOpened();
    void copiesToTheClipboard_data();
    void copiesToTheClipboard();
    void ignoresUnknownActions_data();
    void ignoresUnknownActions();

    void setsTheViewCommandBeforeItAsksForThePage_data();
    void setsTheViewCommandBeforeItAsksForThePage();
    void asksForThePageEachTime();
    void returnsNoPageForAnUnknownCommand_data();
    void returnsNoPageForAnUnknownCommand();
    void returnsNoPageOfAPluginWithoutOne();
    void returnsThePageEvenIfThePluginDeniesIt();

    void answersWithTheNoticeWhenDisabled();
    void looksUpTheSwitchByTheTypedCommand_data();
    void looksUpTheSwitchByTheTypedCommand();
    void enablesEveryPluginWithoutSettings();
    void followsTheSwitchAtEachQuery();
    void executesForADisabledPlugin();
    void returnsThePageOfADisabledPlugin();
    void logsAnUnknownDisabledCommand();
    void translatesTheNotice();

    void autoEntersOnlyIfAllConditionsHold_data();
    void autoEntersOnlyIfAllConditionsHold();
    void autoEntersByTheSwitchOfTheTypedCommand();
    void autoEntersForNoUnknownCommand_data();
    void autoEntersForNoUnknownCommand();

    void declaresItsMethodsInOrder();
    void answersThroughTheMetaObject();
};

void tst_PluginManager::init()
{
    testhome::reset();
    QGuiApplication::clipboard()->setText(u"untouched"_s);
}

void tst_PluginManager::startsEmpty()
{
    const MessageLog log;
    const PluginManager manager;
    QCOMPARE(manager.commands(), QStringList());
    QVERIFY(!manager.parent());
    QCOMPARE(log.lines(), QStringList());
}

void tst_PluginManager::registersCommandAndAliases()
{
    PluginManager manager;
    RecordingPlugin set(u"set"_s, {u"user"_s, u"plugin"_s});
    RecordingPlugin calc(u"calc"_s);
    manager.registerPlugin(&set);
    manager.registerPlugin(&calc);

    QCOMPARE(sorted(manager.commands()),
             QStringList({u"calc"_s, u"plugin"_s, u"set"_s, u"user"_s}));
    for (const QString &command : {u"set"_s, u"user"_s, u"plugin"_s}) {
        QCOMPARE(manager.pluginForCommand(command), &set);
    }
    QCOMPARE(manager.pluginForCommand(u"calc"_s), &calc);
}

void tst_PluginManager::ignoresNull()
{
    const MessageLog log;
    PluginManager manager;
    manager.registerPlugin(nullptr);
    QCOMPARE(manager.commands(), QStringList());
    QCOMPARE(log.lines(), QStringList());
}

void tst_PluginManager::logsEachCommandAtRegistration()
{
    PluginManager manager;
    RecordingPlugin set(u"Set"_s, {u"user "_s, u"plugin"_s});
    const MessageLog log;
    manager.registerPlugin(&set);
    QCOMPARE(log.lines(), QStringList({
                              u"debug Plugin registered: \"set\" - \"All about Set\""_s,
                              u"debug Plugin registered: \"user\" - \"All about Set\""_s,
                              u"debug Plugin registered: \"plugin\" - \"All about Set\""_s,
                          }));
}

void tst_PluginManager::normalisesCommandsAtRegistration_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("normalised");
    QTest::newRow("plain stays") << u"calc"_s << u"calc"_s;
    QTest::newRow("upper case is lowered") << u"CaLC"_s << u"calc"_s;
    QTest::newRow("blanks around are removed") << u"  calc "_s << u"calc"_s;
    QTest::newRow("tab and line feed are removed") << u"\tcalc\n"_s << u"calc"_s;
    QTest::newRow("wide blank is removed") << u"\u3000calc"_s << u"calc"_s;
    QTest::newRow("inner blank stays") << u"my calc"_s << u"my calc"_s;
    QTest::newRow("other scripts are lowered") << u"ÄΩ算"_s << u"äω算"_s;
}

void tst_PluginManager::normalisesCommandsAtRegistration()
{
    QFETCH(QString, command);
    QFETCH(QString, normalised);

    PluginManager byCommand;
    RecordingPlugin plugin(command);
    byCommand.registerPlugin(&plugin);
    QCOMPARE(byCommand.commands(), QStringList(normalised));
    QCOMPARE(byCommand.pluginForCommand(normalised), &plugin);

    PluginManager byAlias;
    RecordingPlugin alias(u"x"_s, {command});
    byAlias.registerPlugin(&alias);
    QCOMPARE(byAlias.pluginForCommand(normalised), &alias);
}

void tst_PluginManager::skipsBlankCommandsWithoutAMessage_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QStringList>("aliases");
    QTest::addColumn<QStringList>("keys");
    QTest::newRow("empty command") << u""_s << QStringList() << QStringList();
    QTest::newRow("blank command") << u" \t"_s << QStringList() << QStringList();
    QTest::newRow("blank command with an alias")
        << u" "_s << QStringList(u"alias"_s) << QStringList(u"alias"_s);
    QTest::newRow("blank aliases")
        << u"calc"_s << QStringList({u""_s, u"  "_s}) << QStringList(u"calc"_s);
}

void tst_PluginManager::skipsBlankCommandsWithoutAMessage()
{
    QFETCH(QString, command);
    QFETCH(QStringList, aliases);
    QFETCH(QStringList, keys);

    PluginManager manager;
    RecordingPlugin plugin(command, aliases);
    const MessageLog log;
    manager.registerPlugin(&plugin);
    QCOMPARE(manager.commands(), keys);
    QCOMPARE(log.lines().count(), keys.count());
}

void tst_PluginManager::keepsTheFirstPluginOfACommand()
{
    PluginManager manager;
    RecordingPlugin first(u"set"_s, {u"user"_s});
    RecordingPlugin second(u"todo"_s, {u"user"_s, u"task"_s});
    manager.registerPlugin(&first);
    const MessageLog log;
    manager.registerPlugin(&second);

    QCOMPARE(manager.pluginForCommand(u"user"_s), &first);
    QCOMPARE(manager.pluginForCommand(u"todo"_s), &second);
    QCOMPARE(manager.pluginForCommand(u"task"_s), &second);
    QCOMPARE(log.lines(), QStringList({
                              u"debug Plugin registered: \"todo\" - \"All about todo\""_s,
                              u"warning Plugin command conflict: \"user\""_s,
                              u"debug Plugin registered: \"task\" - \"All about todo\""_s,
                          }));
}

void tst_PluginManager::detectsConflictsInNormalisedForm()
{
    PluginManager manager;
    RecordingPlugin first(u"calc"_s);
    RecordingPlugin second(u" CALC "_s);
    manager.registerPlugin(&first);
    const MessageLog log;
    manager.registerPlugin(&second);
    QCOMPARE(manager.pluginForCommand(u"calc"_s), &first);
    QCOMPARE(manager.commands(), QStringList(u"calc"_s));
    QCOMPARE(log.lines(), QStringList(u"warning Plugin command conflict: \"calc\""_s));
}

void tst_PluginManager::warnsOfACommandThatAPluginRepeats()
{
    PluginManager manager;
    RecordingPlugin plugin(u"calc"_s, {u"Calc"_s});
    const MessageLog log;
    manager.registerPlugin(&plugin);
    QCOMPARE(manager.pluginForCommand(u"calc"_s), &plugin);
    QCOMPARE(log.lines(), QStringList({
                              u"debug Plugin registered: \"calc\" - \"All about calc\""_s,
                              u"warning Plugin command conflict: \"calc\""_s,
                          }));
}

void tst_PluginManager::ownsOnlyItsChildren()
{
    RecordingPlugin other(u"other"_s);
    QPointer<RecordingPlugin> child;
    {
        PluginManager manager;
        child = new RecordingPlugin(u"child"_s, {}, &manager);
        manager.registerPlugin(child);
        manager.registerPlugin(&other);
        QVERIFY(!other.parent());
    }
    QVERIFY(!child);
    QCOMPARE(other.command(), u"other"_s);
}

void tst_PluginManager::configurablePluginsAreEachOnceByCommand()
{
    PluginManager manager;
    RecordingPlugin todo(u"todo"_s, {u"a"_s});
    RecordingPlugin set(u"set"_s, {u"user"_s, u"plugin"_s});
    RecordingPlugin file(u"File"_s, {u"open"_s});
    RecordingPlugin calc(u"calc"_s);
    for (IPlugin *plugin : {&todo, &set, &file, &calc}) {
        manager.registerPlugin(plugin);
    }
    QCOMPARE(manager.configurablePlugins(), (QList<IPlugin *>{&todo, &calc, &file}));
}

// Whether each operation finds the plugin of "calc" by this command.
void tst_PluginManager::looksUpCommands_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<bool>("known");
    QTest::addColumn<bool>("knownToQuery");
    QTest::newRow("as registered") << u"calc"_s << true << true;
    QTest::newRow("upper case") << u"CALC"_s << true << true;
    QTest::newRow("blank in front") << u" calc"_s << false << true;
    QTest::newRow("blank behind") << u"calc "_s << false << true;
    QTest::newRow("upper case between blanks") << u"  CALC\t"_s << false << true;
    QTest::newRow("first letters only") << u"cal"_s << false << false;
    QTest::newRow("one letter more") << u"calcs"_s << false << false;
    QTest::newRow("inner blank") << u"ca lc"_s << false << false;
    QTest::newRow("empty") << u""_s << false << false;
    QTest::newRow("blank") << u" "_s << false << false;
}

void tst_PluginManager::looksUpCommands()
{
    QFETCH(QString, command);
    QFETCH(bool, known);
    QFETCH(bool, knownToQuery);

    PluginManager manager;
    Settings settings;
    settings.setPluginAutoEnter(true);
    manager.setSettings(&settings);
    QWidget page;
    RecordingPlugin calc(u"calc"_s);
    calc.withView = true;
    calc.view = &page;
    manager.registerPlugin(&calc);

    QCOMPARE(manager.pluginForCommand(command), known ? &calc : nullptr);
    QCOMPARE(manager.viewForCommand(command), known ? &page : nullptr);
    QCOMPARE(manager.commandDescription(command), known ? u"All about calc"_s : QString());
    QCOMPARE(manager.autoEnterForCommand(command), known);
    QCOMPARE(manager.executeAction(actionOf(u"some"_s, {}, command)), known);
    QCOMPARE(manager.queryCommand(command, QString()),
             knownToQuery ? rowOf(u"calc"_s) : QVariantList());
}

void tst_PluginManager::queriesWithTheUntouchedArguments_data()
{
    QTest::addColumn<QString>("args");
    QTest::newRow("empty") << u""_s;
    QTest::newRow("expression") << u"1 + 2"_s;
    QTest::newRow("blanks around") << u"  1\t"_s;
    QTest::newRow("upper case") << u"SIN(1)"_s;
}

void tst_PluginManager::queriesWithTheUntouchedArguments()
{
    QFETCH(QString, args);
    PluginManager manager;
    RecordingPlugin calc(u"calc"_s);
    manager.registerPlugin(&calc);
    const MessageLog log;
    QCOMPARE(manager.queryCommand(u"calc"_s, args), rowOf(u"calc"_s));
    QCOMPARE(calc.queries, QStringList(args));
    QCOMPARE(log.lines(), QStringList());
}

void tst_PluginManager::logsAnUnknownCommandUnchanged()
{
    PluginManager manager;
    const MessageLog log;
    QCOMPARE(manager.queryCommand(u" NoSuch "_s, u"1"_s), QVariantList());
    QCOMPARE(log.lines(), QStringList(u"debug Unknown command: \" NoSuch \""_s));
}

void tst_PluginManager::asksForTheActionOfTheUntouchedArguments()
{
    PluginManager manager;
    auto *plugin = new NotePlugin(u"note"_s, {u"memo"_s}, &manager);
    manager.registerPlugin(plugin);
    for (const QString &command : {u"note"_s, u"NOTE"_s, u"memo"_s}) {
        const QVariantMap action = manager.actionForArguments(command, u"  two  words "_s);
        QCOMPARE(action, actionOf(u"note"_s, u"  two  words "_s, u"note"_s));
        QVERIFY(manager.executeAction(action));
        QCOMPARE(plugin->actions.takeLast(), QVariant(action));
    }
    QVERIFY(plugin->queries.isEmpty());
}

void tst_PluginManager::hasNoActionForOtherArguments_data()
{
    QTest::addColumn<QString>("command");
    QTest::newRow("plugin without such an action") << u"plain"_s;
    QTest::newRow("disabled command") << u"note"_s;
    QTest::newRow("unknown command") << u"gone"_s;
    QTest::newRow("no command") << QString();
}

void tst_PluginManager::hasNoActionForOtherArguments()
{
    QFETCH(const QString, command);
    Settings settings;
    settings.setPluginEnabled(u"note"_s, false);
    PluginManager manager;
    manager.setSettings(&settings);
    manager.registerPlugin(new NotePlugin(u"note"_s, {u"memo"_s}, &manager));
    manager.registerPlugin(new RecordingPlugin(u"plain"_s, {}, &manager));
    QCOMPARE(manager.actionForArguments(command, u"text"_s), QVariantMap());
    QVERIFY(!manager.actionForArguments(u"memo"_s, u"text"_s).isEmpty());
}

void tst_PluginManager::executesNothingWithoutAType_data()
{
    QTest::addColumn<QVariantMap>("action");
    QTest::newRow("empty map") << QVariantMap();
    QTest::newRow("missing type") << QVariantMap{{u"data"_s, u"x"_s}, {u"plugin"_s, u"calc"_s}};
    QTest::newRow("empty type") << actionOf(u""_s, u"x"_s, u"calc"_s);
    QTest::newRow("type under another case")
        << QVariantMap{{u"Type"_s, u"copy"_s}, {u"data"_s, u"x"_s}, {u"plugin"_s, u"calc"_s}};
    QTest::newRow("type that is no text")
        << QVariantMap{{u"type"_s, QVariantMap()}, {u"data"_s, u"x"_s}, {u"plugin"_s, u"calc"_s}};
}

void tst_PluginManager::executesNothingWithoutAType()
{
    QFETCH(QVariantMap, action);
    PluginManager manager;
    RecordingPlugin calc(u"calc"_s);
    manager.registerPlugin(&calc);
    const MessageLog log;
    QVERIFY(!manager.executeAction(action));
    QCOMPARE(calc.actions, QVariantList());
    QCOMPARE(clipboardText(), u"untouched"_s);
    QCOMPARE(log.lines(), QStringList());
}

void tst_PluginManager::routesAnActionByItsPlugin_data()
{
    QTest::addColumn<QVariantMap>("action");
    for (const QString &type : {u"launch"_s, u"openUrl"_s, u"copy"_s, u"openFolder"_s,
                                u"openFile"_s, u"navigate"_s, u"none"_s, u"anything"_s}) {
        QTest::addRow("%s", qPrintable(type)) << actionOf(type, u"vaskel-test:x"_s, u"set"_s);
    }
    QTest::newRow("by an alias") << actionOf(u"copy"_s, u"x"_s, u"user"_s);
    QTest::newRow("in upper case") << actionOf(u"copy"_s, u"x"_s, u"SET"_s);
    QTest::newRow("without data") << actionOf(u"copy"_s, {}, u"set"_s);
    QTest::newRow("with keys of its own")
        << QVariantMap{{u"type"_s, u"x"_s}, {u"plugin"_s, u"set"_s}, {u"more"_s, 7}};
}

void tst_PluginManager::routesAnActionByItsPlugin()
{
    QFETCH(QVariantMap, action);
    PluginManager manager;
    RecordingPlugin set(u"set"_s, {u"user"_s});
    RecordingPlugin calc(u"calc"_s);
    manager.registerPlugin(&set);
    manager.registerPlugin(&calc);
    const UrlRecorder browser;

    QVERIFY(manager.executeAction(action));
    QCOMPARE(set.actions, QVariantList{action});
    QCOMPARE(calc.actions, QVariantList());
    QCOMPARE(clipboardText(), u"untouched"_s);
    QCOMPARE(browser.urls, QList<QUrl>());
}

void tst_PluginManager::returnsTheResultOfThePlugin()
{
    PluginManager manager;
    RecordingPlugin calc(u"calc"_s);
    manager.registerPlugin(&calc);
    const QVariantMap action = actionOf(u"copy"_s, u"x"_s, u"calc"_s);
    QVERIFY(manager.executeAction(action));
    calc.executeResult = false;
    QVERIFY(!manager.executeAction(action));
    QCOMPARE(calc.actions.count(), 2);
    QCOMPARE(clipboardText(), u"untouched"_s);
}

void tst_PluginManager::launchesADetachedProcess_data()
{
    QTest::addColumn<QVariant>("plugin");
    QTest::newRow("no plugin") << QVariant();
    QTest::newRow("empty plugin") << QVariant(u""_s);
    QTest::newRow("unknown plugin") << QVariant(u"nosuch"_s);
    QTest::newRow("plugin between blanks") << QVariant(u" calc "_s);
}

void tst_PluginManager::launchesADetachedProcess()
{
    QFETCH(QVariant, plugin);
    PluginManager manager;
    RecordingPlugin calc(u"calc"_s);
    manager.registerPlugin(&calc);
    const QString recorder = installRecorder(u"bin/record it"_s);

    QVERIFY(manager.executeAction(actionOf(u"launch"_s, recorder, plugin)));
    QTRY_VERIFY(QFile::exists(recorder + ".ran"_L1));
    const QList<QByteArray> record = contentOf(recorder + ".ran"_L1).value().trimmed().split('\n');
    QCOMPARE(record.count(), 3);
    QCOMPARE(record.at(0), QByteArray("0"));
    QVERIFY(record.at(1) != QByteArray::number(QCoreApplication::applicationPid()));
    QCOMPARE(QString::fromLocal8Bit(record.at(2)), QDir::currentPath());
    QCOMPARE(calc.actions, QVariantList());
}

void tst_PluginManager::doesNotSplitTheProgramToLaunch()
{
    PluginManager manager;
    const QString recorder = installRecorder(u"bin/record"_s);
    QVERIFY(!manager.executeAction(actionOf(u"launch"_s, QString(recorder + " argument"_L1))));
    QVERIFY(!QFile::exists(recorder + ".ran"_L1));
}

// On Windows, the system would look for a bare command in the current folder first.
void tst_PluginManager::launchesACommandFromTheSystem()
{
    PluginManager manager;
    const QString recorder = installRecorder(u"bin/record"_s);
    fakePlatform().programFiles = {{u"record"_s, recorder}};
    QVERIFY(manager.executeAction(actionOf(u"launch"_s, u"record"_s)));
    QTRY_VERIFY(QFile::exists(recorder + ".ran"_L1));
    fakePlatform().programFiles = {};
}

void tst_PluginManager::launchesOnlyByTheExactType()
{
    PluginManager manager;
    const QString recorder = installRecorder(u"bin/record"_s);
    for (const QString &type : {u"Launch"_s, u"LAUNCH"_s, u"launch "_s, u"openFile"_s, u"open"_s}) {
        QVERIFY2(!manager.executeAction(actionOf(type, recorder)), qPrintable(type));
    }
}

void tst_PluginManager::reportsAProgramThatCannotStart()
{
    PluginManager manager;
    QVERIFY(!manager.executeAction(
        actionOf(u"launch"_s, QString(testhome::path() + "/no-such-program"_L1))));
}

void tst_PluginManager::opensUrls_data()
{
    QTest::addColumn<QString>("data");
    QTest::addColumn<QByteArray>("encoded");
    QTest::addColumn<QVariant>("plugin");
    QTest::newRow("plain") << u"vaskel-test://host/path?q=1"_s
                           << QByteArray("vaskel-test://host/path?q=1") << QVariant();
    QTest::newRow("blank is encoded")
        << u"vaskel-test://host/a b?q=c d"_s << QByteArray("vaskel-test://host/a%20b?q=c%20d")
        << QVariant();
    QTest::newRow("escapes are kept") << u"vaskel-test://host/?q=1%2B2%26"_s
                                      << QByteArray("vaskel-test://host/?q=1%2B2%26") << QVariant();
    QTest::newRow("lone percent sign is encoded")
        << u"vaskel-test://host/?q=100%"_s << QByteArray("vaskel-test://host/?q=100%25")
        << QVariant();
    QTest::newRow("unknown plugin")
        << u"vaskel-test://host/"_s << QByteArray("vaskel-test://host/") << QVariant(u"nosuch"_s);
}

void tst_PluginManager::opensUrls()
{
    QFETCH(QString, data);
    QFETCH(QByteArray, encoded);
    QFETCH(QVariant, plugin);
    PluginManager manager;
    const UrlRecorder browser;
    QVERIFY(manager.executeAction(actionOf(u"openUrl"_s, data, plugin)));
    QCOMPARE(browser.urls.count(), 1);
    QCOMPARE(browser.urls.constFirst().toEncoded(), encoded);
}

void tst_PluginManager::reportsAUrlThatCannotBeOpened()
{
    PluginManager manager;
    QVERIFY(!manager.executeAction(actionOf(u"openUrl"_s, u"vaskel-test://host:no-port/"_s)));
}

void tst_PluginManager::copiesToTheClipboard_data()
{
    QTest::addColumn<QVariant>("data");
    QTest::addColumn<QVariant>("plugin");
    QTest::addColumn<QString>("text");
    QTest::newRow("no plugin") << QVariant(u"3"_s) << QVariant() << u"3"_s;
    QTest::newRow("unknown plugin") << QVariant(u"3"_s) << QVariant(u"nosuch"_s) << u"3"_s;
    QTest::newRow("blanks and lines") << QVariant(u" a\nb "_s) << QVariant() << u" a\nb "_s;
    QTest::newRow("number") << QVariant(42) << QVariant() << u"42"_s;
}

void tst_PluginManager::copiesToTheClipboard()
{
    QFETCH(QVariant, data);
    QFETCH(QVariant, plugin);
    QFETCH(QString, text);
    PluginManager manager;
    QVERIFY(manager.executeAction(actionOf(u"copy"_s, data, plugin)));
    QCOMPARE(clipboardText(), text);
}

void tst_PluginManager::ignoresUnknownActions_data()
{
    QTest::addColumn<QVariantMap>("action");
    for (const QString &type : {u"launch"_s, u"openUrl"_s, u"copy"_s}) {
        QTest::addRow("%s without data", qPrintable(type)) << actionOf(type);
        QTest::addRow("%s with empty data", qPrintable(type)) << actionOf(type, u""_s);
        QTest::addRow("%s with data that is no text", qPrintable(type))
            << actionOf(type, QVariantMap{{u"x"_s, 1}});
    }
    for (const QString &type :
         {u"Launch"_s, u"openurl"_s, u"OPENURL"_s, u"Copy"_s, u" copy"_s, u"openFolder"_s,
          u"openFile"_s, u"navigate"_s, u"none"_s, u"plugin"_s, u"quit"_s}) {
        QTest::addRow("type '%s'", qPrintable(type)) << actionOf(type, u"vaskel-test:x"_s);
    }
    QTest::newRow("unknown type of an unknown plugin")
        << actionOf(u"navigate"_s, u"vaskel-test:x"_s, u"nosuch"_s);
}

void tst_PluginManager::ignoresUnknownActions()
{
    QFETCH(QVariantMap, action);
    PluginManager manager;
    RecordingPlugin calc(u"calc"_s);
    manager.registerPlugin(&calc);
    const UrlRecorder browser;
    const MessageLog log;
    QVERIFY(!manager.executeAction(action));
    QCOMPARE(calc.actions, QVariantList());
    QCOMPARE(browser.urls, QList<QUrl>());
    QCOMPARE(clipboardText(), u"untouched"_s);
    QCOMPARE(log.lines(), QStringList());
}

void tst_PluginManager::setsTheViewCommandBeforeItAsksForThePage_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("told");
    QTest::newRow("command") << u"set"_s << u"set"_s;
    QTest::newRow("alias") << u"user"_s << u"user"_s;
    QTest::newRow("command in upper case") << u"SET"_s << u"set"_s;
    QTest::newRow("alias in mixed case") << u"Plugin"_s << u"plugin"_s;
}

void tst_PluginManager::setsTheViewCommandBeforeItAsksForThePage()
{
    QFETCH(QString, command);
    QFETCH(QString, told);
    PluginManager manager;
    QWidget page;
    RecordingPlugin set(u"set"_s, {u"user"_s, u"plugin"_s});
    set.view = &page;
    set.withView = true;
    manager.registerPlugin(&set);
    QCOMPARE(manager.viewForCommand(command), &page);
    QCOMPARE(set.viewCalls, QStringList({told, u"createView"_s}));
}

void tst_PluginManager::asksForThePageEachTime()
{
    PluginManager manager;
    QWidget page;
    RecordingPlugin set(u"set"_s, {u"user"_s});
    set.view = &page;
    manager.registerPlugin(&set);
    QCOMPARE(manager.viewForCommand(u"set"_s), &page);
    QCOMPARE(manager.viewForCommand(u"user"_s), &page);
    QCOMPARE(set.viewCalls, QStringList({u"set"_s, u"createView"_s, u"user"_s, u"createView"_s}));
}

void tst_PluginManager::returnsNoPageForAnUnknownCommand_data()
{
    QTest::addColumn<QString>("command");
    QTest::newRow("unknown") << u"nosuch"_s;
    QTest::newRow("empty") << u""_s;
    QTest::newRow("between blanks") << u" set "_s;
}

void tst_PluginManager::returnsNoPageForAnUnknownCommand()
{
    QFETCH(QString, command);
    PluginManager manager;
    QWidget page;
    RecordingPlugin set(u"set"_s);
    set.view = &page;
    manager.registerPlugin(&set);
    const MessageLog log;
    QVERIFY(!manager.viewForCommand(command));
    QCOMPARE(set.viewCalls, QStringList());
    QCOMPARE(log.lines(), QStringList());
}

void tst_PluginManager::returnsNoPageOfAPluginWithoutOne()
{
    PluginManager manager;
    RecordingPlugin calc(u"calc"_s);
    manager.registerPlugin(&calc);
    QVERIFY(!manager.viewForCommand(u"calc"_s));
    QCOMPARE(calc.viewCalls, QStringList({u"calc"_s, u"createView"_s}));
}

void tst_PluginManager::returnsThePageEvenIfThePluginDeniesIt()
{
    PluginManager manager;
    QWidget page;
    RecordingPlugin plugin(u"set"_s);
    plugin.view = &page;
    plugin.withView = false;
    manager.registerPlugin(&plugin);
    QCOMPARE(manager.viewForCommand(u"set"_s), &page);
}

void tst_PluginManager::answersWithTheNoticeWhenDisabled()
{
    PluginManager manager;
    Settings settings;
    settings.setPluginEnabled(u"calc"_s, false);
    manager.setSettings(&settings);
    RecordingPlugin calc(u"calc"_s);
    manager.registerPlugin(&calc);
    const MessageLog log;
    const QVariantList rows = manager.queryCommand(u" CALC "_s, u"1+2"_s);
    QCOMPARE(rows, noticeFor(u"calc"_s));
    QCOMPARE(rows.constFirst().toMap().value(u"icon"_s).typeId(), int(QMetaType::QString));
    QCOMPARE(calc.queries, QStringList());
    QCOMPARE(log.lines(), QStringList());
}

void tst_PluginManager::looksUpTheSwitchByTheTypedCommand_data()
{
    QTest::addColumn<QString>("switchedOff");
    QTest::addColumn<QString>("command");
    QTest::addColumn<bool>("notice");
    QTest::newRow("command off, command typed") << u"set"_s << u"set"_s << true;
    QTest::newRow("command off, alias typed") << u"set"_s << u"user"_s << false;
    QTest::newRow("alias off, alias typed") << u"user"_s << u"user"_s << true;
    QTest::newRow("alias off, alias typed in upper case") << u"user"_s << u"USER "_s << true;
    QTest::newRow("alias off, command typed") << u"user"_s << u"set"_s << false;
    QTest::newRow("alias off, other alias typed") << u"user"_s << u"plugin"_s << false;
}

void tst_PluginManager::looksUpTheSwitchByTheTypedCommand()
{
    QFETCH(QString, switchedOff);
    QFETCH(QString, command);
    QFETCH(bool, notice);
    PluginManager manager;
    Settings settings;
    settings.setPluginEnabled(switchedOff, false);
    manager.setSettings(&settings);
    RecordingPlugin set(u"set"_s, {u"user"_s, u"plugin"_s});
    manager.registerPlugin(&set);
    QCOMPARE(manager.queryCommand(command, QString()),
             notice ? noticeFor(switchedOff) : rowOf(u"set"_s));
}

void tst_PluginManager::enablesEveryPluginWithoutSettings()
{
    Settings settings;
    settings.setPluginEnabled(u"calc"_s, false);
    PluginManager manager;
    RecordingPlugin calc(u"calc"_s);
    manager.registerPlugin(&calc);
    QCOMPARE(manager.queryCommand(u"calc"_s, QString()), rowOf(u"calc"_s));

    manager.setSettings(&settings);
    QCOMPARE(manager.queryCommand(u"calc"_s, QString()), noticeFor(u"calc"_s));
    manager.setSettings(nullptr);
    QCOMPARE(manager.queryCommand(u"calc"_s, QString()), rowOf(u"calc"_s));
}

void tst_PluginManager::followsTheSwitchAtEachQuery()
{
    PluginManager manager;
    Settings settings;
    manager.setSettings(&settings);
    RecordingPlugin calc(u"calc"_s);
    manager.registerPlugin(&calc);
    QCOMPARE(manager.queryCommand(u"calc"_s, QString()), rowOf(u"calc"_s));
    settings.setPluginEnabled(u"calc"_s, false);
    QCOMPARE(manager.queryCommand(u"calc"_s, QString()), noticeFor(u"calc"_s));
    settings.setPluginEnabled(u"calc"_s, true);
    QCOMPARE(manager.queryCommand(u"calc"_s, QString()), rowOf(u"calc"_s));
}

void tst_PluginManager::executesForADisabledPlugin()
{
    PluginManager manager;
    Settings settings;
    settings.setPluginEnabled(u"calc"_s, false);
    manager.setSettings(&settings);
    RecordingPlugin calc(u"calc"_s);
    manager.registerPlugin(&calc);
    QVERIFY(manager.executeAction(actionOf(u"copy"_s, u"3"_s, u"calc"_s)));
    QCOMPARE(calc.actions.count(), 1);
}

void tst_PluginManager::returnsThePageOfADisabledPlugin()
{
    PluginManager manager;
    Settings settings;
    settings.setPluginEnabled(u"set"_s, false);
    manager.setSettings(&settings);
    QWidget page;
    RecordingPlugin set(u"set"_s);
    set.view = &page;
    manager.registerPlugin(&set);
    QCOMPARE(manager.viewForCommand(u"set"_s), &page);
}

void tst_PluginManager::logsAnUnknownDisabledCommand()
{
    PluginManager manager;
    Settings settings;
    settings.setPluginEnabled(u"nosuch"_s, false);
    manager.setSettings(&settings);
    const MessageLog log;
    QCOMPARE(manager.queryCommand(u"nosuch"_s, QString()), QVariantList());
    QCOMPARE(log.lines(), QStringList(u"debug Unknown command: \"nosuch\""_s));
}

void tst_PluginManager::translatesTheNotice()
{
    PluginManager manager;
    Settings settings;
    settings.setPluginEnabled(u"calc"_s, false);
    manager.setSettings(&settings);
    RecordingPlugin calc(u"calc"_s);
    manager.registerPlugin(&calc);

    ContextTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const QVariantMap row = manager.queryCommand(u"calc"_s, QString()).value(0).toMap();
    QCOMPARE(row.value(u"title"_s).toString(), u"<PluginManager|Plugin disabled>"_s);
    QCOMPARE(row.value(u"subtitle"_s).toString(),
             u"calc<PluginManager| plugin has been disabled in settings>"_s);
}

void tst_PluginManager::autoEntersOnlyIfAllConditionsHold_data()
{
    QTest::addColumn<bool>("withView");
    QTest::addColumn<bool>("withSettings");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("autoEnter");
    for (int bits = 0; bits < 16; ++bits) {
        const bool withView = bits & 1;
        const bool withSettings = bits & 2;
        const bool enabled = bits & 4;
        const bool autoEnter = bits & 8;
        QTest::addRow("%s page, %s settings, %s, preference %s", withView ? "with" : "no",
                      withSettings ? "with" : "no", enabled ? "enabled" : "disabled",
                      autoEnter ? "on" : "off")
            << withView << withSettings << enabled << autoEnter;
    }
}

void tst_PluginManager::autoEntersOnlyIfAllConditionsHold()
{
    QFETCH(bool, withView);
    QFETCH(bool, withSettings);
    QFETCH(bool, enabled);
    QFETCH(bool, autoEnter);
    PluginManager manager;
    Settings settings;
    settings.setPluginEnabled(u"todo"_s, enabled);
    settings.setPluginAutoEnter(autoEnter);
    manager.setSettings(withSettings ? &settings : nullptr);
    RecordingPlugin todo(u"todo"_s);
    todo.withView = withView;
    manager.registerPlugin(&todo);

    const bool expected = withView && withSettings && enabled && autoEnter;
    QCOMPARE(manager.autoEnterForCommand(u"todo"_s), expected);
    QCOMPARE(manager.autoEnterForCommand(u"TODO"_s), expected);
    QCOMPARE(todo.viewCalls, QStringList());
}

void tst_PluginManager::autoEntersByTheSwitchOfTheTypedCommand()
{
    PluginManager manager;
    Settings settings;
    settings.setPluginAutoEnter(true);
    settings.setPluginEnabled(u"set"_s, false);
    manager.setSettings(&settings);
    RecordingPlugin set(u"set"_s, {u"user"_s});
    set.withView = true;
    manager.registerPlugin(&set);
    QVERIFY(!manager.autoEnterForCommand(u"set"_s));
    QVERIFY(manager.autoEnterForCommand(u"user"_s));
    QVERIFY(manager.autoEnterForCommand(u"User"_s));

    settings.setPluginEnabled(u"user"_s, false);
    QVERIFY(!manager.autoEnterForCommand(u"User"_s));
}

void tst_PluginManager::autoEntersForNoUnknownCommand_data()
{
    QTest::addColumn<QString>("command");
    QTest::newRow("unknown") << u"nosuch"_s;
    QTest::newRow("empty") << u""_s;
    QTest::newRow("between blanks") << u" todo "_s;
}

void tst_PluginManager::autoEntersForNoUnknownCommand()
{
    QFETCH(QString, command);
    PluginManager manager;
    Settings settings;
    settings.setPluginAutoEnter(true);
    manager.setSettings(&settings);
    RecordingPlugin todo(u"todo"_s);
    todo.withView = true;
    manager.registerPlugin(&todo);
    QVERIFY(!manager.autoEnterForCommand(command));
}

void tst_PluginManager::declaresItsMethodsInOrder()
{
    const QMetaObject &meta = PluginManager::staticMetaObject;
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        QCOMPARE(method.access(), QMetaMethod::Public);
        QCOMPARE(method.methodType(), QMetaMethod::Method);
        methods.append(QString::fromLatin1(method.typeName()) + u' '
                       + QString::fromLatin1(method.methodSignature()));
    }
    QCOMPARE(methods, QStringList({
                          u"QVariantList queryCommand(QString,QString)"_s,
                          u"bool executeAction(QVariantMap)"_s,
                          u"QStringList commands()"_s,
                          u"QString commandDescription(QString)"_s,
                          u"bool autoEnterForCommand(QString)"_s,
                      }));
}

void tst_PluginManager::answersThroughTheMetaObject()
{
    PluginManager manager;
    Settings settings;
    settings.setPluginAutoEnter(true);
    manager.setSettings(&settings);
    RecordingPlugin todo(u"todo"_s);
    todo.withView = true;
    manager.registerPlugin(&todo);

    QVariantList rows;
    QVERIFY(QMetaObject::invokeMethod(&manager, "queryCommand", Q_RETURN_ARG(QVariantList, rows),
                                      Q_ARG(QString, u"todo"_s), Q_ARG(QString, u"args"_s)));
    QCOMPARE(rows, rowOf(u"todo"_s));
    QCOMPARE(todo.queries, QStringList(u"args"_s));

    bool done = false;
    QVERIFY(
        QMetaObject::invokeMethod(&manager, "executeAction", Q_RETURN_ARG(bool, done),
                                  Q_ARG(QVariantMap, actionOf(u"copy"_s, u"via meta-object"_s))));
    QVERIFY(done);
    QCOMPARE(clipboardText(), u"via meta-object"_s);

    QStringList commands;
    QVERIFY(QMetaObject::invokeMethod(&manager, "commands", Q_RETURN_ARG(QStringList, commands)));
    QCOMPARE(commands, QStringList(u"todo"_s));

    QString description;
    QVERIFY(QMetaObject::invokeMethod(&manager, "commandDescription",
                                      Q_RETURN_ARG(QString, description),
                                      Q_ARG(QString, u"todo"_s)));
    QCOMPARE(description, u"All about todo"_s);

    bool autoEnter = false;
    QVERIFY(QMetaObject::invokeMethod(&manager, "autoEnterForCommand",
                                      Q_RETURN_ARG(bool, autoEnter), Q_ARG(QString, u"todo"_s)));
    QVERIFY(autoEnter);
}

VASKEL_TEST(tst_PluginManager, QApplication)
#include "tst_PluginManager.moc"
