// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/SettingsPlugin.h"

#include "core/PluginManager.h"
#include "plugins/CalcPlugin.h"
#include "settings/CommandErrorList.h"
#include "settings/Settings.h"
#include "settings/SettingsView.h"
#include "support/FakePlatform.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFrame>
#include <QLabel>
#include <QLayout>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTest>
#include <QTranslator>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

// Translates every text of one context; a text of another context stays English.
class SettingsTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return qstrcmp(context, "SettingsPlugin") == 0 ? u'<' + QString::fromUtf8(source) + u'>'
                                                       : QString();
    }
};

QVariantList settingsRecord(const QString &title, const QString &subtitle)
{
    return {QVariantMap{{u"title"_s, title}, {u"subtitle"_s, subtitle}, {u"icon"_s, QString()}}};
}

/// The plugin as in the program: registered, with its services.
struct World
{
    World() { plugins.registerPlugin(&plugin); }

    static QCheckBox *startOnBootCheck(const QWidget *page)
    {
        for (QCheckBox *check : page->findChildren<QCheckBox *>()) {
            if (check->text() == u"Start on boot"_s) {
                return check;
            }
        }
        return nullptr;
    }

    static int row(const QWidget *page)
    {
        return page->findChild<QListWidget *>(u"settingsNavigation"_s)->currentRow();
    }

    Settings settings;
    PluginManager plugins;
    SettingsPlugin plugin{&settings, &plugins};
};

} // namespace

class tst_SettingsPlugin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void answersTheContract();
    void returnsOneRecordForEachCommandAndAnyArguments_data();
    void returnsOneRecordForEachCommandAndAnyArguments();
    void translatesItsTexts();
    void executesNothing();
    void belongsToItsParent();
    void eachCommandOpensItsPlace_data();
    void eachCommandOpensItsPlace();
    void opensTheSettingsByDefault();
    void keepsTheLastCommand();
    void switchesAnOpenPageAtOnce();
    void returnsTheSamePageEachTime();
    void eachOpeningShowsTheStoredValues();
    void createsANewPageAfterTheOldOneIsDestroyed();
    void passesOnTheCloseRequest();
    void tellsWhichFilesOfCommandsAreWrong();
};

void tst_SettingsPlugin::init()
{
    testhome::reset();
    fakePlatform() = FakePlatform();
}

void tst_SettingsPlugin::answersTheContract()
{
    const World w;
    QCOMPARE(w.plugin.command(), u"set"_s);
    QCOMPARE(w.plugin.aliases(), QStringList({u"user"_s, u"plugin"_s}));
    QCOMPARE(w.plugin.description(), u"Open Settings"_s);
    QVERIFY(w.plugin.hasView());
}

void tst_SettingsPlugin::returnsOneRecordForEachCommandAndAnyArguments_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("args");
    QTest::newRow("set") << u"set"_s << QString();
    QTest::newRow("set with blanks") << u"set"_s << u"  "_s;
    QTest::newRow("user with text") << u"user"_s << u"dark theme"_s;
    QTest::newRow("plugin with text") << u"plugin"_s << u"calc"_s;
}

void tst_SettingsPlugin::returnsOneRecordForEachCommandAndAnyArguments()
{
    QFETCH(const QString, command);
    QFETCH(const QString, args);
    World w;
    QCOMPARE(
        w.plugins.queryCommand(command, args),
        settingsRecord(u"Settings"_s, u"Modify global hotkey, window style and other settings"_s));
}

void tst_SettingsPlugin::translatesItsTexts()
{
    SettingsTranslator translator;
    QCoreApplication::installTranslator(&translator);
    World w;
    QCOMPARE(w.plugin.description(), u"<Open Settings>"_s);
    QCOMPARE(w.plugin.query(QString()),
             settingsRecord(u"<Settings>"_s,
                            u"<Modify global hotkey, window style and other settings>"_s));
    QCoreApplication::removeTranslator(&translator);
}

void tst_SettingsPlugin::executesNothing()
{
    World w;
    QVERIFY(w.plugin.execute({}));
    QVERIFY(w.plugin.execute({{u"type"_s, u"launch"_s}, {u"data"_s, u"/nowhere"_s}}));
}

void tst_SettingsPlugin::belongsToItsParent()
{
    Settings settings;
    auto plugins = std::make_unique<PluginManager>();
    const QPointer<SettingsPlugin> plugin =
        new SettingsPlugin(&settings, plugins.get(), plugins.get());
    plugins.reset();
    QVERIFY(!plugin);
}

void tst_SettingsPlugin::eachCommandOpensItsPlace_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("row");
    QTest::newRow("user") << u"user"_s << 0;
    QTest::newRow("set") << u"set"_s << 1;
    QTest::newRow("plugin") << u"plugin"_s << 2;
    QTest::newRow("in capitals") << u"PLUGIN"_s << 2;
}

void tst_SettingsPlugin::eachCommandOpensItsPlace()
{
    QFETCH(const QString, command);
    QFETCH(const int, row);
    World w;
    const std::unique_ptr<QWidget> page(w.plugins.viewForCommand(command));
    QVERIFY(qobject_cast<SettingsView *>(page.get()));
    QVERIFY(!page->parent());
    QCOMPARE(World::row(page.get()), row);
}

void tst_SettingsPlugin::opensTheSettingsByDefault()
{
    World w;
    const std::unique_ptr<QWidget> page(w.plugin.createView());
    QCOMPARE(World::row(page.get()), 1);
}

void tst_SettingsPlugin::keepsTheLastCommand()
{
    World w;
    w.plugin.setViewCommand(u"plugin"_s);
    const std::unique_ptr<QWidget> page(w.plugin.createView());
    page->findChild<QListWidget *>()->setCurrentRow(0);
    w.plugin.createView();
    QCOMPARE(World::row(page.get()), 2);
}

void tst_SettingsPlugin::switchesAnOpenPageAtOnce()
{
    World w;
    const std::unique_ptr<QWidget> page(w.plugin.createView());
    w.plugin.setViewCommand(u"user"_s);
    QCOMPARE(World::row(page.get()), 0);
}

void tst_SettingsPlugin::returnsTheSamePageEachTime()
{
    World w;
    const std::unique_ptr<QWidget> page(w.plugin.createView());
    QCOMPARE(w.plugins.viewForCommand(u"user"_s), page.get());
}

void tst_SettingsPlugin::eachOpeningShowsTheStoredValues()
{
    World w;
    const std::unique_ptr<QWidget> page(w.plugin.createView());
    QCheckBox *check = World::startOnBootCheck(page.get());
    QVERIFY(!check->isChecked());
    check->click();
    w.plugin.createView();
    QVERIFY(!check->isChecked());

    w.settings.setAutoStart(true);
    w.plugin.createView();
    QVERIFY(check->isChecked());
}

void tst_SettingsPlugin::createsANewPageAfterTheOldOneIsDestroyed()
{
    World w;
    delete w.plugin.createView();
    w.plugin.setViewCommand(u"user"_s);
    const std::unique_ptr<QWidget> page(w.plugin.createView());
    QVERIFY(page);
    QCOMPARE(World::row(page.get()), 0);
}

void tst_SettingsPlugin::passesOnTheCloseRequest()
{
    World w;
    const std::unique_ptr<QWidget> page(w.plugin.createView());
    w.plugin.createView();
    QSignalSpy closed(&w.plugin, &IPlugin::viewCloseRequested);
    auto *buttons = page->findChild<QDialogButtonBox *>();
    buttons->button(QDialogButtonBox::Save)->click();
    QCOMPARE(closed.size(), 0);
    buttons->button(QDialogButtonBox::Cancel)->click();
    QCOMPARE(closed.size(), 1);
}

void tst_SettingsPlugin::tellsWhichFilesOfCommandsAreWrong()
{
    World w;
    const std::unique_ptr<QWidget> without(w.plugin.createView());
    QVERIFY(!without->findChild<CommandErrorList *>());

    World v;
    CalcPlugin calculator;
    v.plugins.registerPlugin(&calculator);
    v.plugin.setCommandErrors({u"/commands/a/command.json: name: expected x"_s, u"second"_s});
    const std::unique_ptr<QWidget> page(v.plugin.createView());
    const auto *list = page->findChild<CommandErrorList *>();
    QVERIFY(list);
    const auto *label = list->findChild<QLabel *>(u"muted"_s);
    QCOMPARE(label->accessibleName(), u"/commands/a/command.json: name: expected x\nsecond"_s);
    QCOMPARE(label->text().remove(QChar(0x200b)), label->accessibleName());
    auto *pages = page->findChild<QStackedWidget *>(u"settingsPages"_s);
    QVERIFY(pages->widget(2)->isAncestorOf(list)); // that of the plugins
    // Above the cards, since no key scrolls to a text below the last field.
    const auto *layout = list->parentWidget()->layout();
    QCOMPARE(layout->indexOf(list) + 1,
             layout->indexOf(page->findChild<QFrame *>(u"pluginCard"_s)));
}

VASKEL_TEST(tst_SettingsPlugin, QApplication)
#include "tst_SettingsPlugin.moc"
