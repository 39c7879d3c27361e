// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/AppPlugin.h"

#include "launcher/AppLauncher.h"
#include "support/FakePlatform.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QTest>
#include <QTranslator>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

// Translates every text of one context; a text of another context stays English.
class AppTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return qstrcmp(context, "AppPlugin") == 0 ? u'<' + QString::fromUtf8(source) + u'>'
                                                  : QString();
    }
};

QVariantMap launchAction(const QString &path)
{
    return {{u"type"_s, u"launch"_s}, {u"data"_s, path}, {u"plugin"_s, u"app"_s}};
}

// The expected records, made from those of the launcher without the plugin.
QVariantList withActions(const QVariantList &records)
{
    QVariantList expected;
    for (const QVariant &element : records) {
        const QVariantMap record = element.toMap();
        const QString path = record[u"path"_s].toString();
        expected.append(QVariantMap{{u"name"_s, record[u"name"_s]},
                                    {u"path"_s, path},
                                    {u"desc"_s, record[u"desc"_s]},
                                    {u"icon"_s, record[u"icon"_s]},
                                    {u"action"_s, launchAction(path)}});
    }
    return expected;
}

} // namespace

class tst_AppPlugin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void answersTheContract();
    void blankArgumentsListTheWholeCatalogue_data();
    void blankArgumentsListTheWholeCatalogue();
    void blanksAroundTheArgumentsDoNotMatter();
    void keepsTheOrderOfTheSearch();
    void findsNothingForAQueryWithoutAMatch();
    void makesAnEmptyActionForARecordWithoutAPath();
    void launchesTheData_data();
    void launchesTheData();
    void reportsAFailedLaunch();
    void launchesNothingWithoutData_data();
    void launchesNothingWithoutData();
    void doesNothingWithoutALauncher();
    void descriptionIsTranslatedInItsContext();

private:
    std::unique_ptr<AppLauncher> m_launcher;
};

void tst_AppPlugin::init()
{
    testhome::reset();
    fakePlatform() = FakePlatform();
    testhome::writeFile(u"menu/Zebra Editor.link"_s, {});
    testhome::writeFile(u"menu/Alpha Editor.link"_s, {});
    testhome::writeFile(u"menu/Tools/Gimlet.link"_s, {});
    fakePlatform().startMenuRoots = {testhome::path() + "/menu"_L1};
    m_launcher = std::make_unique<AppLauncher>();
}

void tst_AppPlugin::cleanup()
{
    m_launcher.reset();
}

void tst_AppPlugin::answersTheContract()
{
    QObject parent;
    AppPlugin plugin(m_launcher.get(), &parent);
    QCOMPARE(plugin.parent(), &parent);
    QCOMPARE(plugin.command(), u"app"_s);
    QCOMPARE(plugin.description(), u"Search and launch applications"_s);
    QVERIFY(plugin.aliases().isEmpty());
    QVERIFY(!plugin.hasView());
    plugin.setViewCommand(u"app"_s);
    QVERIFY(!plugin.createView());
}

void tst_AppPlugin::blankArgumentsListTheWholeCatalogue_data()
{
    QTest::addColumn<QString>("args");
    QTest::newRow("nothing") << QString();
    QTest::newRow("blanks") << u"  "_s;
}

void tst_AppPlugin::blankArgumentsListTheWholeCatalogue()
{
    QFETCH(const QString, args);

    const QVariantList records = AppPlugin(m_launcher.get()).query(args);
    QCOMPARE(records.size(), 8 + 3);
    QCOMPARE(records, withActions(m_launcher->search(QString())));
}

void tst_AppPlugin::blanksAroundTheArgumentsDoNotMatter()
{
    AppPlugin plugin(m_launcher.get());
    const QVariantList records = plugin.query(u"  GIMLET "_s);
    QCOMPARE(records.size(), 1);
    const QString path = testhome::path() + "/menu/Tools/Gimlet.link"_L1;
    QCOMPARE(records.first().toMap()[u"action"_s].toMap(), launchAction(path));
    QCOMPARE(records, plugin.query(u"gimlet"_s));
}

void tst_AppPlugin::keepsTheOrderOfTheSearch()
{
    const QVariantList records = AppPlugin(m_launcher.get()).query(u"editor"_s);
    QCOMPARE(records.size(), 2);
    QCOMPARE(records[0].toMap()[u"name"_s].toString(), u"Alpha Editor"_s);
    QCOMPARE(records[1].toMap()[u"name"_s].toString(), u"Zebra Editor"_s);
    QCOMPARE(records, withActions(m_launcher->search(u"editor"_s)));
}

void tst_AppPlugin::findsNothingForAQueryWithoutAMatch()
{
    QVERIFY(AppPlugin(m_launcher.get()).query(u"no such program"_s).isEmpty());
}

void tst_AppPlugin::makesAnEmptyActionForARecordWithoutAPath()
{
    using platform::BuiltinProgram;
    fakePlatform().builtinPrograms.insert(static_cast<int>(BuiltinProgram::Paint), {});
    AppLauncher launcher;
    AppPlugin plugin(&launcher);
    const QVariantMap record = plugin.query(u"paint"_s).first().toMap();
    const QVariantMap action = record[u"action"_s].toMap();
    QCOMPARE(action, launchAction(QString()));
    QVERIFY(!plugin.execute(action));
    QVERIFY(fakePlatform().openedLinks.isEmpty());
}

void tst_AppPlugin::launchesTheData_data()
{
    QTest::addColumn<QVariantMap>("action");
    const QString data = u"data"_s;
    const QString path = u"/menu/Editor.link"_s;
    QTest::newRow("its own type") << launchAction(path);
    QTest::newRow("another type") << QVariantMap{{u"type"_s, u"none"_s}, {data, path}};
    QTest::newRow("no type") << QVariantMap{{data, path}};
}

void tst_AppPlugin::launchesTheData()
{
    QFETCH(const QVariantMap, action);

    QVERIFY(AppPlugin(m_launcher.get()).execute(action));
    QCOMPARE(fakePlatform().openedLinks, QStringList{u"/menu/Editor.link"_s});
}

void tst_AppPlugin::reportsAFailedLaunch()
{
    fakePlatform().openLinkResult = false;
    QVERIFY(!AppPlugin(m_launcher.get()).execute(launchAction(u"/menu/Editor.link"_s)));
    QCOMPARE(fakePlatform().openedLinks.size(), 1);
}

void tst_AppPlugin::launchesNothingWithoutData_data()
{
    QTest::addColumn<QVariantMap>("action");
    QTest::newRow("no keys") << QVariantMap();
    QTest::newRow("no data") << QVariantMap{{u"type"_s, u"launch"_s}};
    QTest::newRow("empty data") << launchAction(QString());
    QTest::newRow("data under another key") << QVariantMap{{u"path"_s, u"/menu/Editor.link"_s}};
}

void tst_AppPlugin::launchesNothingWithoutData()
{
    QFETCH(const QVariantMap, action);

    QVERIFY(!AppPlugin(m_launcher.get()).execute(action));
    QVERIFY(fakePlatform().openedLinks.isEmpty());
}

void tst_AppPlugin::doesNothingWithoutALauncher()
{
    AppPlugin plugin(nullptr);
    QVERIFY(plugin.query(QString()).isEmpty());
    QVERIFY(plugin.query(u"editor"_s).isEmpty());
    QVERIFY(!plugin.execute(launchAction(u"/menu/Editor.link"_s)));
    QVERIFY(fakePlatform().openedLinks.isEmpty());
}

void tst_AppPlugin::descriptionIsTranslatedInItsContext()
{
    AppTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QCOMPARE(AppPlugin(nullptr).description(), u"<Search and launch applications>"_s);
}

VASKEL_TEST(tst_AppPlugin, QApplication)
#include "tst_AppPlugin.moc"
