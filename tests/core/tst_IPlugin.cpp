// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/IPlugin.h"

#include "support/TestProgram.h"

#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>

#include <type_traits>

using namespace Qt::StringLiterals;

namespace {

// The minimal plugin.
class BarePlugin : public IPlugin
{
    Q_OBJECT

public:
    using IPlugin::IPlugin;

    QString command() const override { return u"bare"_s; }
    QString description() const override { return u"Bare plugin"_s; }
    QVariantList query(const QString &) override { return {}; }
    bool execute(const QVariantMap &) override { return false; }
};

class Page : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void closeRequested();
};

} // namespace

class tst_IPlugin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hasDefaultsForOptionalFunctions();
    void hasNoAliasesByDefault();
    void hasNoPageByDefault();
    void ignoresTheViewCommandByDefault();
    void hasNoParentByDefault();
    void diesWithItsParent();
    void hasOneSignalWithoutArguments();
    void passesOnTheCloseRequestOfThePage();
};

void tst_IPlugin::hasDefaultsForOptionalFunctions()
{
    static_assert(std::is_abstract_v<IPlugin>);
    static_assert(!std::is_abstract_v<BarePlugin>);
    static_assert(std::is_convertible_v<IPlugin *, QObject *>, "publicly a QObject");
    static_assert(!std::is_convertible_v<QObject *, IPlugin>, "no conversion from a parent");

    BarePlugin plugin;
    const IPlugin &contract = plugin;
    QCOMPARE(contract.command(), u"bare"_s);
    QCOMPARE(contract.description(), u"Bare plugin"_s);
}

void tst_IPlugin::hasNoAliasesByDefault()
{
    const BarePlugin plugin;
    QCOMPARE(plugin.aliases(), QStringList());
}

void tst_IPlugin::hasNoPageByDefault()
{
    BarePlugin plugin;
    QVERIFY(!plugin.hasView());
    QVERIFY(!plugin.createView());
}

void tst_IPlugin::ignoresTheViewCommandByDefault()
{
    BarePlugin plugin;
    const QSignalSpy closeRequests(&plugin, &IPlugin::viewCloseRequested);
    plugin.setViewCommand(u"bare"_s);
    QVERIFY(!plugin.createView());
    QVERIFY(!plugin.hasView());
    QCOMPARE(closeRequests.count(), 0);
}

void tst_IPlugin::hasNoParentByDefault()
{
    const BarePlugin plugin;
    QVERIFY(!plugin.parent());
}

void tst_IPlugin::diesWithItsParent()
{
    QPointer<IPlugin> plugin;
    {
        QObject parent;
        plugin = new BarePlugin(&parent);
        QCOMPARE(plugin->parent(), &parent);
    }
    QVERIFY(!plugin);
}

void tst_IPlugin::hasOneSignalWithoutArguments()
{
    const QMetaObject &meta = IPlugin::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
    const QMetaMethod method = meta.method(meta.methodOffset());
    QCOMPARE(method.methodType(), QMetaMethod::Signal);
    QCOMPARE(method.methodSignature(), QByteArray("viewCloseRequested()"));
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
}

void tst_IPlugin::passesOnTheCloseRequestOfThePage()
{
    BarePlugin plugin;
    Page page;
    connect(&page, &Page::closeRequested, &plugin, &IPlugin::viewCloseRequested);
    const QSignalSpy closeRequests(&plugin, &IPlugin::viewCloseRequested);
    Q_EMIT page.closeRequested();
    QCOMPARE(closeRequests.count(), 1);
}

VASKEL_TEST(tst_IPlugin, QCoreApplication)
#include "tst_IPlugin.moc"
