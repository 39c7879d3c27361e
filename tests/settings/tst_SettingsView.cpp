// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/SettingsView.h"

#include "core/IPlugin.h"
#include "core/PluginManager.h"
#include "settings/HintLine.h"
#include "settings/SavedNotice.h"
#include "settings/Settings.h"
#include "support/FakePlatform.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"
#include "update/FileSizeLimit.h"

#include <QAccessible>
#include <QApplication>
#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMetaMethod>
#include <QPushButton>
#include <QScopeGuard>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTest>
#include <QTimer>
#include <QTranslator>
#include <QWheelEvent>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

enum PageNumber {
    UserPage,
    SettingsPage,
    PluginsPage,
};

class NamedPlugin : public IPlugin
{
public:
    NamedPlugin(const QString &command, const QString &description, QObject *parent,
                const QStringList &aliases = {})
        : IPlugin(parent)
        , m_command(command)
        , m_description(description)
        , m_aliases(aliases)
    {
    }

    QString command() const override { return m_command; }
    QStringList aliases() const override { return m_aliases; }
    QString description() const override { return m_description; }
    QVariantList query(const QString &) override { return {}; }
    bool execute(const QVariantMap &) override { return false; }

private:
    QString m_command;
    QString m_description;
    QStringList m_aliases;
};

/// Records each change signal of the settings in order, with its argument.
class ChangeRecorder : public QObject
{
    Q_OBJECT

public:
    explicit ChangeRecorder(Settings *settings)
    {
        const QMetaMethod slot =
            staticMetaObject.method(staticMetaObject.indexOfSlot("noteUnnamed()"));
        const QMetaMethod namedSlot =
            staticMetaObject.method(staticMetaObject.indexOfSlot("noteNamed(QString)"));
        const QMetaObject *meta = settings->metaObject();
        for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
            const QMetaMethod method = meta->method(i);
            if (method.methodType() == QMetaMethod::Signal) {
                connect(settings, method, this, method.parameterCount() == 0 ? slot : namedSlot);
            }
        }
    }

    QStringList takeChanges() { return std::exchange(m_changes, {}); }

public Q_SLOTS:
    void noteUnnamed() { m_changes.append(signalName()); }
    void noteNamed(const QString &name) { m_changes.append(signalName() + u' ' + name); }

private:
    QString signalName() const
    {
        const QMetaMethod method = Settings::staticMetaObject.method(senderSignalIndex());
        return QString::fromLatin1(method.name());
    }

    QStringList m_changes;
};

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

/// The page in its own window, with real settings and the six plugins.
struct Page
{
    Page()
    {
        plugins.registerPlugin(
            new NamedPlugin(u"app"_s, u"Search and launch applications"_s, &plugins));
        plugins.registerPlugin(new NamedPlugin(u"calc"_s, u"Calculator"_s, &plugins));
        plugins.registerPlugin(
            new NamedPlugin(u"cd"_s, u"Directory browser and navigation"_s, &plugins));
        plugins.registerPlugin(
            new NamedPlugin(u"set"_s, u"Open Settings"_s, &plugins, {u"user"_s, u"plugin"_s}));
        plugins.registerPlugin(
            new NamedPlugin(u"file"_s, u"File search (Everything)"_s, &plugins, {u"find"_s}));
        plugins.registerPlugin(new NamedPlugin(u"todo"_s, u"Task Management"_s, &plugins));
        view = std::make_unique<SettingsView>(&settings, &plugins);
        view->resize(720, 300);
        view->show();
        view->activateWindow();
        changes = std::make_unique<ChangeRecorder>(&settings);
    }

    QListWidget *navigation() const
    {
        return view->findChild<QListWidget *>(u"settingsNavigation"_s);
    }

    QStackedWidget *pages() const { return view->findChild<QStackedWidget *>(u"settingsPages"_s); }

    QScrollArea *area(int page) const { return qobject_cast<QScrollArea *>(pages()->widget(page)); }

    QBoxLayout *layout(int page) const
    {
        return qobject_cast<QBoxLayout *>(area(page)->widget()->layout());
    }

    QCheckBox *check(const QString &text) const
    {
        for (QCheckBox *box : view->findChildren<QCheckBox *>()) {
            if (box->text() == text && !box->property("cmd").isValid()) {
                return box;
            }
        }
        return nullptr;
    }

    QKeySequenceEdit *hotkey() const { return area(SettingsPage)->findChild<QKeySequenceEdit *>(); }
    QComboBox *theme() const { return comboWith(u"dark"_s, Qt::UserRole); }
    QComboBox *engine() const { return comboWith(u"DuckDuckGo"_s, Qt::DisplayRole); }

    /// The combo box that has such an item, in whatever language its texts are.
    QComboBox *comboWith(const QString &value, Qt::ItemDataRole role) const
    {
        for (QComboBox *box : view->findChildren<QComboBox *>()) {
            if (box->findData(value, role) >= 0) {
                return box;
            }
        }
        return nullptr;
    }

    template <typename Control> Control *pluginControl(const QString &command) const
    {
        for (Control *control : area(PluginsPage)->findChildren<Control *>()) {
            if (control->property("cmd") == command) {
                return control;
            }
        }
        return nullptr;
    }

    QPushButton *button(const QString &text) const
    {
        for (QPushButton *candidate : view->findChildren<QPushButton *>()) {
            if (candidate->text() == text) {
                return candidate;
            }
        }
        return nullptr;
    }

    QPushButton *standardButton(QDialogButtonBox::StandardButton which) const
    {
        return view->findChild<QDialogButtonBox *>()->button(which);
    }

    bool isBesideTheButtons(const SavedNotice *notice) const
    {
        const QRect place = notice->geometry();
        return notice->parentWidget()->rect().contains(place)
               && !place.intersects(standardButton(QDialogButtonBox::Save)->geometry())
               && !place.intersects(standardButton(QDialogButtonBox::Cancel)->geometry());
    }

    void save() const { click(standardButton(QDialogButtonBox::Save)); }
    void cancel() const { click(standardButton(QDialogButtonBox::Cancel)); }

    static void click(QWidget *control)
    {
        QTest::mouseClick(control, Qt::LeftButton, Qt::NoModifier,
                          QPoint(8, control->height() / 2));
    }

    /// Switches to the page of the control and clicks the control.
    void toggle(QCheckBox *box, int page) const
    {
        navigation()->setCurrentRow(page);
        area(page)->ensureWidgetVisible(box);
        click(box);
    }

    Settings settings;
    PluginManager plugins;
    std::unique_ptr<SettingsView> view;
    std::unique_ptr<ChangeRecorder> changes;
};

struct Edit
{
    std::function<void(const Page &)> make;
    QString key;
    QVariant before; // the stored default, from the getter
    QVariant after;
    QString change;
};

Edit toggleOf(const QString &text, int page, const QString &key, bool before)
{
    return {[text, page](const Page &p) { p.toggle(p.check(text), page); }, key, before, !before,
            key + "Changed"_L1};
}

Edit pluginToggleOf(const QString &command)
{
    return {
        [command](const Page &p) { p.toggle(p.pluginControl<QCheckBox>(command), PluginsPage); },
        "plugins/"_L1 + command, true, false, "pluginEnabledChanged "_L1 + command};
}

Edit pluginHotkeyOf(const QString &command)
{
    return {[command](const Page &p) {
                p.navigation()->setCurrentRow(PluginsPage);
                QTest::keyClick(p.pluginControl<QKeySequenceEdit>(command), Qt::Key_F2,
                                Qt::ControlModifier);
            },
            "pluginHotkeys/"_L1 + command, u""_s, u"Ctrl+F2"_s,
            "pluginHotkeyChanged "_L1 + command};
}

QStringList itemTexts(const QComboBox *combo)
{
    QStringList texts;
    for (int i = 0; i < combo->count(); ++i) {
        texts.append(combo->itemText(i));
    }
    return texts;
}

QVariantList itemData(const QComboBox *combo)
{
    QVariantList data;
    for (int i = 0; i < combo->count(); ++i) {
        data.append(combo->itemData(i));
    }
    return data;
}

/// The contents of a box layout, from top to bottom: the object name or the text of each widget.
QStringList contentOf(const QLayout *layout)
{
    QStringList content;
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem *item = layout->itemAt(i);
        if (item->spacerItem()) {
            content.append(u"stretch"_s);
        } else if (item->layout()) {
            content.append(u'(' + contentOf(item->layout()).join(u", "_s) + u')');
        } else if (const auto *label = qobject_cast<QLabel *>(item->widget())) {
            content.append(label->objectName() + u' ' + label->text());
        } else if (const auto *button = qobject_cast<QAbstractButton *>(item->widget())) {
            content.append(button->text());
        } else if (!item->widget()->objectName().isEmpty()) {
            content.append(item->widget()->objectName());
        } else {
            content.append(QString::fromLatin1(item->widget()->metaObject()->className()));
        }
    }
    return content;
}

/// The classes of the controls of an interface that have no name for a screen reader.
QStringList namelessControls(QAccessibleInterface *interface)
{
    QStringList found;
    for (int i = 0; i < interface->childCount(); ++i) {
        QAccessibleInterface *child = interface->child(i);
        if (child->state().focusable
            && (child->text(QAccessible::Name).isEmpty() || child->role() == QAccessible::Client)) {
            found.append(QString::fromLatin1(child->object()->metaObject()->className()));
        }
        found += namelessControls(child);
    }
    return found;
}

void sendWheel(QWidget *target, const QPoint &pixels, const QPoint &angle)
{
    const QPointF position(target->rect().center());
    QWheelEvent event(position, target->mapToGlobal(position), pixels, angle, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(target, &event);
}

// Translates every text of one context; a text of another context stays English.
class ViewTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return qstrcmp(context, "SettingsView") == 0 ? u'<' + QString::fromUtf8(source) + u'>'
                                                     : QString();
    }
};

} // namespace

Q_DECLARE_METATYPE(Edit)

class tst_SettingsView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void isLaidOutAsDesigned();
    void userPageHoldsItsItems();
    void settingsPageHoldsItsItems();
    void pluginsPageHoldsItsItems();
    void eachPluginHasOneCard();
    void cardsBelongToTheirPlugins();
    void aPluginOfAnUpperCaseAliasSortsRegardlessOfCase();
    void worksWithoutPlugins();
    void translatesItsTextsButNotTheEngines();

    void startsAtTheSettings();
    void showsThePageOfACommand_data();
    void showsThePageOfACommand();
    void navigationSwitchesThePages();

    void showsTheDefaults();
    void showsWhatIsStored();
    void saveWritesOneEdit_data();
    void saveWritesOneEdit();
    void saveWritesAllEditsInOrder();
    void saveAppliesBeforeItReturns();
    void saveKeepsThePage();
    void saveWithoutEditsWritesNothing();
    void secondSaveWritesOnlyWhatChangedSince();
    void editsHaveNoEffectBeforeTheyAreSaved_data();
    void editsHaveNoEffectBeforeTheyAreSaved();
    void cancelDiscardsEdits_data();
    void cancelDiscardsEdits();
    void cancelWithoutEditsAsksToCloseToo();
    void reloadShowsWhatWasStoredMeanwhile();

    void unknownThemeShowsAsTheSystems();
    void unknownEngineLeavesTheComboAlone();
    void unreadableHotkeyShowsEmptyAndIsStoredEmpty_data();
    void unreadableHotkeyShowsEmptyAndIsStoredEmpty();
    void storedSequenceShowsItsFirstCombination();
    void emptiedHotkeyIsStoredEmpty();
    void takesAHotkeyThatAnotherOneHas();

    void disablesAndEnablesAllPlugins();
    void disableAllThenCancelDisablesNothing();

    void wheelOverAComboKeepsTheSelection_data();
    void wheelOverAComboKeepsTheSelection();
    void wheelOverAComboScrollsThePage_data();
    void wheelOverAComboScrollsThePage();
    void wheelOverAComboOutsideOfAPageStopsThere();
    void wheelElsewhereIsNotFiltered();

    void isReachedByTheTabKeyInOrder_data();
    void isReachedByTheTabKeyInOrder();
    void tabKeyScrollsToWhatItReaches();
    void isChangedByTheKeyboardAlone();
    void enterPressesTheButtonWithTheFocus();
    void onlyTheFocusedButtonLooksFocused();
    void buttonKeepsTheFocusInANewStyle();
    void everyControlHasANameForScreenReaders();
    void survivesARequestForAMissingChild();
    void fitsIntoTheNarrowestWindow();

    void hasNoHintsAtFirst();
    void tellsThatAnotherProgramHoldsAHotkey_data();
    void tellsThatAnotherProgramHoldsAHotkey();
    void asksForTheHotkeyThatIsHeldAfterSave();
    void tellsThatABareKeyIsTaken_data();
    void tellsThatABareKeyIsTaken();
    void tellsThatItHasSaved();
    void tellsThatItCannotSave_data();
    void tellsThatItCannotSave();
};

void tst_SettingsView::init()
{
    testhome::reset();
    fakePlatform() = FakePlatform();
}

void tst_SettingsView::isLaidOutAsDesigned()
{
    const Page p;
    const QLayout *root = p.view->layout();
    QVERIFY(qobject_cast<const QVBoxLayout *>(root));
    QCOMPARE(root->contentsMargins(), QMargins());
    QCOMPARE(root->count(), 2);
    auto *columns = qobject_cast<QHBoxLayout *>(root->itemAt(0)->layout());
    QVERIFY(columns);
    QCOMPARE(columns->spacing(), 12);
    QCOMPARE(qobject_cast<const QBoxLayout *>(root)->stretch(0), 1);
    QVERIFY(qobject_cast<QDialogButtonBox *>(root->itemAt(1)->widget()));

    QCOMPARE(contentOf(columns), QStringList({u"settingsNavigation"_s, u"settingsPages"_s}));
    QCOMPARE(columns->stretch(1), 1);
    QCOMPARE(p.navigation()->width(), 132);
    QCOMPARE(p.navigation()->count(), 3);
    const QStringList titles{u"User"_s, u"Settings"_s, u"Plugins"_s};
    for (int i = 0; i < titles.size(); ++i) {
        QCOMPARE(p.navigation()->item(i)->text(), titles.at(i));
        QVERIFY(p.area(i)->widgetResizable());
        QCOMPARE(p.layout(i)->contentsMargins(), QMargins(14, 10, 14, 14));
        QCOMPARE(p.layout(i)->spacing(), 10);
    }
}

void tst_SettingsView::userPageHoldsItsItems()
{
    const Page p;
    QCOMPARE(contentOf(p.layout(UserPage)),
             QStringList({u"pageTitle User"_s, u"section Application Behavior"_s,
                          u"Start on boot"_s, u"Show float icon"_s, u"Auto hide on focus loss"_s,
                          u"Require double-click to launch apps"_s,
                          u"Show all apps when search is empty"_s, u"stretch"_s}));
}

void tst_SettingsView::settingsPageHoldsItsItems()
{
    const Page p;
    QCOMPARE(contentOf(p.layout(SettingsPage)),
             QStringList({u"pageTitle Settings"_s, u"section Global Hotkey"_s, u"HotkeyEdit"_s,
                          u"section Theme"_s, u"QComboBox"_s, u"section Search Engine"_s,
                          u"QComboBox"_s, u"stretch"_s}));
    QVERIFY(p.hotkey()->isClearButtonEnabled());
    QCOMPARE(itemTexts(p.theme()), QStringList({u"System"_s, u"Light"_s, u"Dark"_s}));
    QCOMPARE(itemData(p.theme()), QVariantList({u"system"_s, u"light"_s, u"dark"_s}));
    QCOMPARE(itemTexts(p.engine()),
             QStringList({u"Bing"_s, u"Google"_s, u"Baidu"_s, u"DuckDuckGo"_s}));
    QCOMPARE(itemData(p.engine()), QVariantList(4));
}

void tst_SettingsView::pluginsPageHoldsItsItems()
{
    const Page p;
    QCOMPARE(contentOf(p.layout(PluginsPage)),
             QStringList({u"pageTitle Plugins"_s, u"Auto enter on empty args"_s,
                          u"(Enable all, Disable all, stretch)"_s, u"pluginCard"_s, u"pluginCard"_s,
                          u"pluginCard"_s, u"pluginCard"_s, u"pluginCard"_s, u"stretch"_s}));
}

void tst_SettingsView::eachPluginHasOneCard()
{
    const Page p;
    QStringList commands;
    for (const QLabel *label : p.view->findChildren<QLabel *>(u"pluginCommand"_s)) {
        commands.append(label->text());
    }
    QCOMPARE(commands, QStringList({u"app"_s, u"calc"_s, u"cd"_s, u"file"_s, u"todo"_s}));
}

void tst_SettingsView::cardsBelongToTheirPlugins()
{
    const Page p;
    const QList<QFrame *> cards = p.view->findChildren<QFrame *>(u"pluginCard"_s);
    QCOMPARE(cards.size(), 5);
    auto *layout = qobject_cast<QHBoxLayout *>(cards.at(2)->layout());
    QVERIFY(layout);
    QCOMPARE(layout->contentsMargins(), QMargins(14, 10, 14, 10));
    QCOMPARE(layout->spacing(), 10);
    QCOMPARE(layout->stretch(0), 1);
    QCOMPARE(layout->itemAt(0)->layout()->spacing(), 3);
    QCOMPARE(contentOf(layout),
             QStringList({u"(pluginCommand cd, muted Directory browser and navigation)"_s,
                          u"Enabled"_s, u"muted Hotkey"_s, u"HotkeyEdit"_s}));

    const auto *check = qobject_cast<QCheckBox *>(layout->itemAt(1)->widget());
    const auto *edit = qobject_cast<QKeySequenceEdit *>(layout->itemAt(3)->widget());
    QCOMPARE(check->property("cmd"), u"cd"_s);
    QCOMPARE(edit->property("cmd"), u"cd"_s);
    QVERIFY(edit->isClearButtonEnabled());
    QCOMPARE(edit->toolTip(), u"Global plugin hotkey"_s);
    QCOMPARE(edit->width(), 150);
}

void tst_SettingsView::aPluginOfAnUpperCaseAliasSortsRegardlessOfCase()
{
    Settings settings;
    PluginManager plugins;
    // Commands are stored in lower case; the card shows the spelling of the plugin.
    plugins.registerPlugin(new NamedPlugin(u"beta"_s, QString(), &plugins, {u"zeta"_s}));
    plugins.registerPlugin(new NamedPlugin(u"Alpha"_s, QString(), &plugins));
    plugins.registerPlugin(new NamedPlugin(u"gamma"_s, QString(), &plugins, {u"aa"_s}));
    const SettingsView view(&settings, &plugins);
    QStringList commands;
    for (const QLabel *label : view.findChildren<QLabel *>(u"pluginCommand"_s)) {
        commands.append(label->text());
    }
    QCOMPARE(commands, QStringList({u"gamma"_s, u"Alpha"_s, u"beta"_s}));
}

void tst_SettingsView::worksWithoutPlugins()
{
    Settings settings;
    PluginManager plugins;
    SettingsView view(&settings, &plugins);
    view.show();
    QVERIFY(view.findChildren<QFrame *>(u"pluginCard"_s).isEmpty());
    for (QPushButton *button : view.findChildren<QPushButton *>()) {
        button->click();
    }
    QVERIFY(storedKeys().isEmpty());
}

void tst_SettingsView::translatesItsTextsButNotTheEngines()
{
    ViewTranslator translator;
    QCoreApplication::installTranslator(&translator);
    {
        const Page p;
        QStringList untranslated;
        for (const QLabel *label : p.view->findChildren<QLabel *>()) {
            if (!label->text().startsWith(u'<')) {
                untranslated.append(label->text());
            }
        }
        untranslated.sort();
        QCOMPARE(untranslated,
                 QStringList({u"Calculator"_s, u"Directory browser and navigation"_s,
                              u"File search (Everything)"_s, u"Search and launch applications"_s,
                              u"Task Management"_s, u"app"_s, u"calc"_s, u"cd"_s, u"file"_s,
                              u"todo"_s}));
        for (const QAbstractButton *button : p.pages()->findChildren<QAbstractButton *>()) {
            QVERIFY2(button->text().isEmpty() || button->text().startsWith(u'<'),
                     qPrintable(button->text()));
        }
        QCOMPARE(p.navigation()->item(1)->text(), u"<Settings>"_s);
        QCOMPARE(itemTexts(p.theme()), QStringList({u"<System>"_s, u"<Light>"_s, u"<Dark>"_s}));
        QCOMPARE(p.engine()->itemText(0), u"Bing"_s);
        QCOMPARE(p.pluginControl<QKeySequenceEdit>(u"cd"_s)->toolTip(),
                 u"<Global plugin hotkey>"_s);
    }
    QCoreApplication::removeTranslator(&translator);
}

void tst_SettingsView::startsAtTheSettings()
{
    const Page p;
    QCOMPARE(p.navigation()->currentRow(), int(SettingsPage));
    QCOMPARE(p.pages()->currentIndex(), int(SettingsPage));
}

void tst_SettingsView::showsThePageOfACommand_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("page");
    QTest::newRow("user") << u"user"_s << int(UserPage);
    QTest::newRow("set") << u"set"_s << int(SettingsPage);
    QTest::newRow("plugin") << u"plugin"_s << int(PluginsPage);
    QTest::newRow("another command") << u"todo"_s << int(SettingsPage);
    QTest::newRow("no command") << QString() << int(SettingsPage);
    QTest::newRow("a command in capitals") << u"USER"_s << int(SettingsPage);
}

void tst_SettingsView::showsThePageOfACommand()
{
    QFETCH(const QString, command);
    QFETCH(const int, page);
    const Page p;
    for (const int before : {UserPage, SettingsPage, PluginsPage}) {
        p.navigation()->setCurrentRow(before);
        p.view->showPage(command);
        QCOMPARE(p.navigation()->currentRow(), page);
        QCOMPARE(p.pages()->currentIndex(), page);
    }
}

void tst_SettingsView::navigationSwitchesThePages()
{
    const Page p;
    QVERIFY(QTest::qWaitForWindowActive(p.view->windowHandle()));
    p.navigation()->setFocus();
    QTest::keyClick(p.navigation(), Qt::Key_Down);
    QCOMPARE(p.pages()->currentIndex(), int(PluginsPage));
    QTest::mouseClick(p.navigation()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      p.navigation()->visualItemRect(p.navigation()->item(0)).center());
    QCOMPARE(p.pages()->currentIndex(), int(UserPage));
}

void tst_SettingsView::showsTheDefaults()
{
    const Page p;
    QCOMPARE(p.hotkey()->keySequence(), QKeySequence(u"Ctrl+Alt+Space"_s));
    QCOMPARE(p.theme()->currentText(), u"System"_s);
    QCOMPARE(p.engine()->currentText(), u"Bing"_s);
    QVERIFY(!p.check(u"Start on boot"_s)->isChecked());
    QVERIFY(p.check(u"Show float icon"_s)->isChecked());
    QVERIFY(!p.check(u"Auto hide on focus loss"_s)->isChecked());
    QVERIFY(p.check(u"Require double-click to launch apps"_s)->isChecked());
    QVERIFY(p.check(u"Show all apps when search is empty"_s)->isChecked());
    QVERIFY(!p.check(u"Auto enter on empty args"_s)->isChecked());
    for (const QString &command : {u"app"_s, u"calc"_s, u"cd"_s, u"file"_s, u"todo"_s}) {
        QVERIFY(p.pluginControl<QCheckBox>(command)->isChecked());
        QVERIFY(p.pluginControl<QKeySequenceEdit>(command)->keySequence().isEmpty());
    }
    QVERIFY(storedKeys().isEmpty());
}

void tst_SettingsView::showsWhatIsStored()
{
    store(u"globalHotkey"_s, u"Meta+F3"_s);
    store(u"theme"_s, u"dark"_s);
    store(u"searchEngine"_s, u"DuckDuckGo"_s);
    for (const QString &key : {u"autoStart"_s, u"autoHideOnFocusLoss"_s, u"pluginAutoEnter"_s}) {
        store(key, true);
    }
    for (const QString &key : {u"showFloatIcon"_s, u"appLaunchRequiresDoubleClick"_s,
                               u"showAllAppsWhenSearchEmpty"_s, u"plugins/cd"_s}) {
        store(key, false);
    }
    store(u"pluginHotkeys/file"_s, u"Ctrl+Shift+F"_s);

    const Page p;
    QCOMPARE(p.hotkey()->keySequence(), QKeySequence(u"Meta+F3"_s));
    QCOMPARE(p.theme()->currentText(), u"Dark"_s);
    QCOMPARE(p.engine()->currentText(), u"DuckDuckGo"_s);
    QVERIFY(p.check(u"Start on boot"_s)->isChecked());
    QVERIFY(!p.check(u"Show float icon"_s)->isChecked());
    QVERIFY(p.check(u"Auto hide on focus loss"_s)->isChecked());
    QVERIFY(!p.check(u"Require double-click to launch apps"_s)->isChecked());
    QVERIFY(!p.check(u"Show all apps when search is empty"_s)->isChecked());
    QVERIFY(p.check(u"Auto enter on empty args"_s)->isChecked());
    QVERIFY(!p.pluginControl<QCheckBox>(u"cd"_s)->isChecked());
    QVERIFY(p.pluginControl<QCheckBox>(u"file"_s)->isChecked());
    QVERIFY(p.pluginControl<QKeySequenceEdit>(u"cd"_s)->keySequence().isEmpty());
    QCOMPARE(p.pluginControl<QKeySequenceEdit>(u"file"_s)->keySequence(),
             QKeySequence(u"Ctrl+Shift+F"_s));
}

void tst_SettingsView::saveWritesOneEdit_data()
{
    QTest::addColumn<Edit>("edit");
    QTest::newRow("global hotkey")
        << Edit{[](const Page &p) { QTest::keyClick(p.hotkey(), Qt::Key_Space, Qt::MetaModifier); },
                u"globalHotkey"_s, u"Ctrl+Alt+Space"_s, u"Meta+Space"_s, u"globalHotkeyChanged"_s};
    QTest::newRow("theme") << Edit{[](const Page &p) { QTest::keyClick(p.theme(), Qt::Key_End); },
                                   u"theme"_s, u"system"_s, u"dark"_s, u"themeChanged"_s};
    QTest::newRow("search engine")
        << Edit{[](const Page &p) { QTest::keyClick(p.engine(), Qt::Key_Down); }, u"searchEngine"_s,
                u"Bing"_s, u"Google"_s, u"searchEngineChanged"_s};
    QTest::newRow("start on boot") << toggleOf(u"Start on boot"_s, UserPage, u"autoStart"_s, false);
    QTest::newRow("float icon") << toggleOf(u"Show float icon"_s, UserPage, u"showFloatIcon"_s,
                                            true);
    QTest::newRow("auto hide") << toggleOf(u"Auto hide on focus loss"_s, UserPage,
                                           u"autoHideOnFocusLoss"_s, false);
    QTest::newRow("double click") << toggleOf(u"Require double-click to launch apps"_s, UserPage,
                                              u"appLaunchRequiresDoubleClick"_s, true);
    QTest::newRow("all apps") << toggleOf(u"Show all apps when search is empty"_s, UserPage,
                                          u"showAllAppsWhenSearchEmpty"_s, true);
    QTest::newRow("auto enter") << toggleOf(u"Auto enter on empty args"_s, PluginsPage,
                                            u"pluginAutoEnter"_s, false);
    for (const QString &command : {u"app"_s, u"calc"_s, u"cd"_s, u"file"_s, u"todo"_s}) {
        QTest::addRow("switch of %s", qPrintable(command)) << pluginToggleOf(command);
        QTest::addRow("hotkey of %s", qPrintable(command)) << pluginHotkeyOf(command);
    }
}

void tst_SettingsView::saveWritesOneEdit()
{
    QFETCH(const Edit, edit);
    const Page p;
    edit.make(p);
    QVERIFY(storedKeys().isEmpty());
    QVERIFY(p.changes->takeChanges().isEmpty());

    p.save();
    QCOMPARE(storedKeys(), QStringList(edit.key));
    QCOMPARE(stored(edit.key), edit.after);
    QCOMPARE(p.changes->takeChanges(), QStringList(edit.change));
}

void tst_SettingsView::saveWritesAllEditsInOrder()
{
    const Page p;
    p.navigation()->setCurrentRow(UserPage);
    QTest::keyClick(p.hotkey(), Qt::Key_F9);
    p.theme()->setCurrentIndex(1);
    p.engine()->setCurrentIndex(2);
    for (QCheckBox *check : p.view->findChildren<QCheckBox *>()) {
        check->toggle();
    }
    for (QKeySequenceEdit *edit : p.area(PluginsPage)->findChildren<QKeySequenceEdit *>()) {
        QTest::keyClick(edit, Qt::Key_F10);
    }

    p.save();
    QCOMPARE(p.changes->takeChanges(),
             QStringList({u"globalHotkeyChanged"_s, u"searchEngineChanged"_s, u"themeChanged"_s,
                          u"autoStartChanged"_s, u"showFloatIconChanged"_s,
                          u"autoHideOnFocusLossChanged"_s, u"appLaunchRequiresDoubleClickChanged"_s,
                          u"showAllAppsWhenSearchEmptyChanged"_s, u"pluginAutoEnterChanged"_s,
                          u"pluginEnabledChanged app"_s, u"pluginEnabledChanged calc"_s,
                          u"pluginEnabledChanged cd"_s, u"pluginEnabledChanged file"_s,
                          u"pluginEnabledChanged todo"_s, u"pluginHotkeyChanged app"_s,
                          u"pluginHotkeyChanged calc"_s, u"pluginHotkeyChanged cd"_s,
                          u"pluginHotkeyChanged file"_s, u"pluginHotkeyChanged todo"_s}));
    QCOMPARE(stored(u"theme"_s), u"light"_s);
    QCOMPARE(stored(u"searchEngine"_s), u"Baidu"_s);
    QCOMPARE(fakePlatform().autoStartCalls.last(), true);
}

void tst_SettingsView::saveAppliesBeforeItReturns()
{
    const Page p;
    QString seen;
    QObject::connect(&p.settings, &Settings::globalHotkeyChanged, p.view.get(),
                     [&] { seen = p.settings.globalHotkey(); });
    QTest::keyClick(p.hotkey(), Qt::Key_F9);
    p.save();
    QCOMPARE(seen, u"F9"_s);
}

void tst_SettingsView::saveKeepsThePage()
{
    const Page p;
    QSignalSpy closed(p.view.get(), &SettingsView::closeRequested);
    QTest::keyClick(p.hotkey(), Qt::Key_F9);
    p.save();
    p.save();
    QCOMPARE(closed.size(), 0);
    QVERIFY(p.view->isVisible());
    QCOMPARE(p.navigation()->currentRow(), int(SettingsPage));
    QCOMPARE(p.hotkey()->keySequence(), QKeySequence(u"F9"_s));
}

void tst_SettingsView::saveWithoutEditsWritesNothing()
{
    const Page p;
    p.save();
    QVERIFY(storedKeys().isEmpty());
    QVERIFY(p.changes->takeChanges().isEmpty());
    QCOMPARE(fakePlatform().autoStartCalls.size(), 1); // at the start
}

void tst_SettingsView::secondSaveWritesOnlyWhatChangedSince()
{
    const Page p;
    QTest::keyClick(p.hotkey(), Qt::Key_F9);
    p.save();
    QCOMPARE(p.changes->takeChanges(), QStringList(u"globalHotkeyChanged"_s));
    QTest::keyClick(p.engine(), Qt::Key_Down);
    p.save();
    QCOMPARE(p.changes->takeChanges(), QStringList(u"searchEngineChanged"_s));
    p.save();
    QVERIFY(p.changes->takeChanges().isEmpty());
}

void tst_SettingsView::editsHaveNoEffectBeforeTheyAreSaved_data()
{
    saveWritesOneEdit_data();
}

void tst_SettingsView::editsHaveNoEffectBeforeTheyAreSaved()
{
    QFETCH(const Edit, edit);
    const Page p;
    edit.make(p);
    p.view->reload();
    p.save();
    QVERIFY(storedKeys().isEmpty());
    QVERIFY(p.changes->takeChanges().isEmpty());
}

void tst_SettingsView::cancelDiscardsEdits_data()
{
    saveWritesOneEdit_data();
}

void tst_SettingsView::cancelDiscardsEdits()
{
    QFETCH(const Edit, edit);
    const Page p;
    QSignalSpy closed(p.view.get(), &SettingsView::closeRequested);
    edit.make(p);
    p.cancel();
    QCOMPARE(closed.size(), 1);
    QVERIFY(storedKeys().isEmpty());
    QVERIFY(p.changes->takeChanges().isEmpty());

    // Cancel has reset the controls; Save would otherwise store the edit.
    p.save();
    QVERIFY(storedKeys().isEmpty());
    QCOMPARE(closed.size(), 1);
}

void tst_SettingsView::cancelWithoutEditsAsksToCloseToo()
{
    const Page p;
    QSignalSpy closed(p.view.get(), &SettingsView::closeRequested);
    p.cancel();
    QCOMPARE(closed.size(), 1);
    QVERIFY(storedKeys().isEmpty());
}

void tst_SettingsView::reloadShowsWhatWasStoredMeanwhile()
{
    Page p;
    p.settings.setShowFloatIcon(false);
    p.settings.setTheme(u"light"_s);
    p.settings.setPluginHotkey(u"todo"_s, u"F7"_s);
    QVERIFY(p.check(u"Show float icon"_s)->isChecked());
    p.view->reload();
    QVERIFY(!p.check(u"Show float icon"_s)->isChecked());
    QCOMPARE(p.theme()->currentText(), u"Light"_s);
    QCOMPARE(p.pluginControl<QKeySequenceEdit>(u"todo"_s)->keySequence(), QKeySequence(u"F7"_s));
}

void tst_SettingsView::unknownThemeShowsAsTheSystems()
{
    store(u"theme"_s, u"blue"_s);
    const Page p;
    QCOMPARE(p.theme()->currentText(), u"System"_s);
    p.theme()->setCurrentIndex(2);
    p.view->reload();
    QCOMPARE(p.theme()->currentText(), u"System"_s);
    p.save();
    QCOMPARE(stored(u"theme"_s), u"system"_s);
}

void tst_SettingsView::unknownEngineLeavesTheComboAlone()
{
    store(u"searchEngine"_s, u"Elsewhere"_s);
    const Page p;
    QCOMPARE(p.engine()->currentText(), u"Bing"_s);
    p.engine()->setCurrentIndex(2);
    p.view->reload();
    QCOMPARE(p.engine()->currentText(), u"Baidu"_s);
    p.engine()->setCurrentIndex(0);
    p.save();
    QCOMPARE(stored(u"searchEngine"_s), u"Bing"_s);
}

void tst_SettingsView::unreadableHotkeyShowsEmptyAndIsStoredEmpty_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::newRow("global, words") << u"globalHotkey"_s << u"no such key"_s;
    QTest::newRow("global, a modifier alone") << u"globalHotkey"_s << u"Ctrl+"_s;
    QTest::newRow("global, an unknown key") << u"globalHotkey"_s << u"Ctrl+Nonsense"_s;
    QTest::newRow("of a plugin") << u"pluginHotkeys/calc"_s << u"Ctrl+Nonsense"_s;
}

void tst_SettingsView::unreadableHotkeyShowsEmptyAndIsStoredEmpty()
{
    QFETCH(const QString, key);
    QFETCH(const QString, value);
    store(key, value);
    const Page p;
    const QKeySequenceEdit *edit =
        key == "globalHotkey"_L1 ? p.hotkey() : p.pluginControl<QKeySequenceEdit>(u"calc"_s);
    QVERIFY(edit->keySequence().isEmpty());
    QCOMPARE(edit->findChild<QLineEdit *>()->text(), QString());
    p.save();
    QCOMPARE(stored(key), u""_s);
}

void tst_SettingsView::storedSequenceShowsItsFirstCombination()
{
    store(u"globalHotkey"_s, u"Ctrl+K, Ctrl+C"_s);
    const Page p;
    QCOMPARE(p.hotkey()->keySequence(), QKeySequence(u"Ctrl+K"_s));
}

void tst_SettingsView::emptiedHotkeyIsStoredEmpty()
{
    const Page p;
    p.hotkey()->clear();
    p.save();
    QCOMPARE(stored(u"globalHotkey"_s), u""_s);
    QCOMPARE(p.changes->takeChanges(), QStringList(u"globalHotkeyChanged"_s));
}

void tst_SettingsView::takesAHotkeyThatAnotherOneHas()
{
    const Page p;
    p.navigation()->setCurrentRow(PluginsPage);
    QTest::keyClick(p.pluginControl<QKeySequenceEdit>(u"calc"_s), Qt::Key_Space,
                    Qt::ControlModifier | Qt::AltModifier);
    p.save();
    QCOMPARE(stored(u"pluginHotkeys/calc"_s), u"Ctrl+Alt+Space"_s);
}

void tst_SettingsView::disablesAndEnablesAllPlugins()
{
    const Page p;
    p.navigation()->setCurrentRow(PluginsPage);
    Page::click(p.button(u"Disable all"_s));
    QVERIFY(storedKeys().isEmpty());
    p.save();
    QCOMPARE(storedKeys(), QStringList({u"plugins/app"_s, u"plugins/calc"_s, u"plugins/cd"_s,
                                        u"plugins/file"_s, u"plugins/todo"_s}));
    QVERIFY(!p.settings.isPluginEnabled(u"todo"_s));
    QVERIFY(p.settings.isPluginEnabled(u"set"_s));

    p.toggle(p.pluginControl<QCheckBox>(u"calc"_s), PluginsPage);
    p.area(PluginsPage)->ensureWidgetVisible(p.button(u"Enable all"_s));
    Page::click(p.button(u"Enable all"_s));
    p.save();
    for (const QString &command : {u"app"_s, u"calc"_s, u"cd"_s, u"file"_s, u"todo"_s}) {
        QVERIFY(p.settings.isPluginEnabled(command));
    }
}

void tst_SettingsView::disableAllThenCancelDisablesNothing()
{
    const Page p;
    p.navigation()->setCurrentRow(PluginsPage);
    Page::click(p.button(u"Disable all"_s));
    QVERIFY(!p.pluginControl<QCheckBox>(u"app"_s)->isChecked());
    p.cancel();
    QVERIFY(p.pluginControl<QCheckBox>(u"app"_s)->isChecked());
    p.save();
    QVERIFY(storedKeys().isEmpty());
}

void tst_SettingsView::wheelOverAComboKeepsTheSelection_data()
{
    QTest::addColumn<int>("angle");
    QTest::newRow("up") << 120;
    QTest::newRow("down") << -120;
}

void tst_SettingsView::wheelOverAComboKeepsTheSelection()
{
    QFETCH(const int, angle);
    const Page p;
    p.view->resize(720, 700); // large enough that the page does not scroll
    QTRY_COMPARE(p.area(SettingsPage)->verticalScrollBar()->maximum(), 0);
    for (QComboBox *combo : {p.theme(), p.engine()}) {
        combo->setCurrentIndex(1);
        combo->setFocus();
        sendWheel(combo, QPoint(), QPoint(0, angle));
        QCOMPARE(combo->currentIndex(), 1);
    }
}

void tst_SettingsView::wheelOverAComboScrollsThePage_data()
{
    QTest::addColumn<QPoint>("pixels");
    QTest::addColumn<QPoint>("angle");
    QTest::addColumn<int>("expected");
    QTest::newRow("notch down") << QPoint() << QPoint(0, -12) << 32;
    QTest::newRow("notch up") << QPoint() << QPoint(0, 15) << 5;
    QTest::newRow("pixels win") << QPoint(0, -3) << QPoint(0, -12) << 23;
    QTest::newRow("sideways pixels win too") << QPoint(4, 0) << QPoint(0, -12) << 20;
    QTest::newRow("at most to the top") << QPoint() << QPoint(0, 120) << 0;
}

void tst_SettingsView::wheelOverAComboScrollsThePage()
{
    QFETCH(const QPoint, pixels);
    QFETCH(const QPoint, angle);
    QFETCH(const int, expected);
    const Page p;
    p.view->resize(720, 150);
    QScrollBar *bar = p.area(SettingsPage)->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 40);
    for (QComboBox *combo : {p.theme(), p.engine()}) {
        bar->setValue(20);
        sendWheel(combo, pixels, angle);
        QCOMPARE(bar->value(), expected);
        QCOMPARE(combo->currentIndex(), 0);
    }
}

void tst_SettingsView::wheelOverAComboOutsideOfAPageStopsThere()
{
    const Page p;
    QComboBox other;
    other.addItems({u"a"_s, u"b"_s});
    other.installEventFilter(p.view.get());
    sendWheel(&other, QPoint(), QPoint(0, -120));
    QCOMPARE(other.currentIndex(), 0);
}

void tst_SettingsView::wheelElsewhereIsNotFiltered()
{
    const Page p;
    p.view->resize(720, 150);
    QScrollBar *bar = p.area(SettingsPage)->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 40);
    sendWheel(p.area(SettingsPage)->viewport(), QPoint(), QPoint(0, -120));
    QVERIFY(bar->value() > 0);
}

void tst_SettingsView::isReachedByTheTabKeyInOrder_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("user") << int(UserPage)
                          << QStringList({u"Start on boot"_s, u"Show float icon"_s,
                                          u"Auto hide on focus loss"_s,
                                          u"Require double-click to launch apps"_s,
                                          u"Show all apps when search is empty"_s});
    QTest::newRow("settings") << int(SettingsPage)
                              << QStringList({u"Global Hotkey"_s, u"Theme"_s, u"Search Engine"_s});
    QTest::newRow("plugins") << int(PluginsPage)
                             << QStringList({u"Auto enter on empty args"_s, u"Enable all"_s,
                                             u"Disable all"_s, u"app Enabled"_s, u"app Hotkey"_s,
                                             u"calc Enabled"_s, u"calc Hotkey"_s, u"cd Enabled"_s,
                                             u"cd Hotkey"_s, u"file Enabled"_s, u"file Hotkey"_s,
                                             u"todo Enabled"_s, u"todo Hotkey"_s});
}

void tst_SettingsView::isReachedByTheTabKeyInOrder()
{
    QFETCH(const int, page);
    QFETCH(const QStringList, names);
    const Page p;
    QVERIFY(QTest::qWaitForWindowActive(p.view->windowHandle()));
    p.navigation()->setCurrentRow(page);
    p.navigation()->setFocus();

    const auto nameOfFocus = [] {
        const QWidget *widget = QApplication::focusWidget();
        const auto *button = qobject_cast<const QAbstractButton *>(widget);
        return widget->accessibleName().isEmpty() && button ? button->text()
                                                            : widget->accessibleName();
    };
    const auto walk = [&](Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QStringList walked;
        for (qsizetype i = 0; i < names.size(); ++i) {
            QTest::keyClick(QApplication::focusWidget(), key, modifiers);
            walked.append(nameOfFocus());
        }
        return walked;
    };
    QCOMPARE(walk(Qt::Key_Tab, Qt::NoModifier), names);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    const auto *first = qobject_cast<QPushButton *>(QApplication::focusWidget());
    QVERIFY(first == p.standardButton(QDialogButtonBox::Save)
            || first == p.standardButton(QDialogButtonBox::Cancel));
    QCOMPARE(walk(Qt::Key_Tab, Qt::ShiftModifier), QStringList(names.crbegin(), names.crend()));

    // Moving the focus has changed nothing.
    p.save();
    QVERIFY(storedKeys().isEmpty());
}

void tst_SettingsView::tabKeyScrollsToWhatItReaches()
{
    const Page p;
    QVERIFY(QTest::qWaitForWindowActive(p.view->windowHandle()));
    p.navigation()->setCurrentRow(PluginsPage);
    const auto isInView = [&](const QWidget *widget) {
        const QWidget *viewport = p.area(PluginsPage)->viewport();
        return viewport->rect().contains(QRect(widget->mapTo(viewport, QPoint()), widget->size()));
    };

    const auto *last = p.pluginControl<QKeySequenceEdit>(u"todo"_s);
    QVERIFY(!isInView(last));
    QWidget *button = last->nextInFocusChain();
    while (!qobject_cast<QPushButton *>(button)) {
        button = button->nextInFocusChain();
    }
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Tab, Qt::ShiftModifier);
    QVERIFY(last->hasFocus());
    QVERIFY(isInView(last));

    const QCheckBox *first = p.check(u"Auto enter on empty args"_s);
    QVERIFY(!isInView(first));
    p.navigation()->setFocus();
    QTest::keyClick(p.navigation(), Qt::Key_Tab);
    QVERIFY(first->hasFocus());
    QVERIFY(isInView(first));
}

void tst_SettingsView::isChangedByTheKeyboardAlone()
{
    const Page p;
    QVERIFY(QTest::qWaitForWindowActive(p.view->windowHandle()));
    const auto press = [](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    };
    p.navigation()->setFocus();
    press(Qt::Key_Tab);
    press(Qt::Key_F9, Qt::AltModifier);
    press(Qt::Key_Tab);
    press(Qt::Key_Down);
    press(Qt::Key_Tab);
    press(Qt::Key_End);
    press(Qt::Key_Tab);
    while (QApplication::focusWidget() != p.standardButton(QDialogButtonBox::Save)) {
        press(Qt::Key_Tab);
    }
    press(Qt::Key_Space);
    QCOMPARE(stored(u"globalHotkey"_s), u"Alt+F9"_s);
    QCOMPARE(stored(u"theme"_s), u"light"_s);
    QCOMPARE(stored(u"searchEngine"_s), u"DuckDuckGo"_s);
}

void tst_SettingsView::enterPressesTheButtonWithTheFocus()
{
    const Page p;
    QVERIFY(QTest::qWaitForWindowActive(p.view->windowHandle()));
    QSignalSpy closed(p.view.get(), &SettingsView::closeRequested);
    QTest::keyClick(p.hotkey(), Qt::Key_F9);
    QPushButton *save = p.standardButton(QDialogButtonBox::Save);
    save->setFocus(Qt::TabFocusReason);
    QTest::keyClick(save, Qt::Key_Return);
    QCOMPARE(stored(u"globalHotkey"_s), u"F9"_s);
    QPushButton *cancel = p.standardButton(QDialogButtonBox::Cancel);
    cancel->setFocus(Qt::TabFocusReason);
    QTest::keyClick(cancel, Qt::Key_Return);
    QCOMPARE(closed.size(), 1);
}

void tst_SettingsView::onlyTheFocusedButtonLooksFocused()
{
    const Page p;
    QVERIFY(QTest::qWaitForWindowActive(p.view->windowHandle()));
    for (int i = 0; i < 2; ++i) {
        p.navigation()->setFocus();
        QVERIFY(!p.standardButton(QDialogButtonBox::Save)->isDefault());
        p.view->hide();
        p.view->show();
        QVERIFY(QTest::qWaitForWindowActive(p.view->windowHandle()));
    }
}

void tst_SettingsView::buttonKeepsTheFocusInANewStyle()
{
    const Page p;
    QVERIFY(QTest::qWaitForWindowActive(p.view->windowHandle()));
    const auto restore = qScopeGuard([] { qApp->setStyleSheet(QString()); });
    for (const auto which : {QDialogButtonBox::Save, QDialogButtonBox::Cancel}) {
        p.standardButton(which)->setFocus();
        qApp->setStyleSheet(
            u"QPushButton { padding: %1px; }"_s.arg(which == QDialogButtonBox::Save ? 3 : 4));
        QCOMPARE(QApplication::focusWidget(), p.standardButton(which));
        QVERIFY(p.standardButton(which)->isVisible());
    }
    p.navigation()->setFocus();
    qApp->setStyleSheet(QString());
    QCOMPARE(QApplication::focusWidget(), p.navigation());
}

void tst_SettingsView::everyControlHasANameForScreenReaders()
{
    const Page p;
    for (int page = UserPage; page <= PluginsPage; ++page) {
        p.navigation()->setCurrentRow(page);
        QCOMPARE(namelessControls(QAccessible::queryAccessibleInterface(p.view.get())),
                 QStringList());
    }
}

// A screen reader may ask for a control that has just disappeared.
void tst_SettingsView::survivesARequestForAMissingChild()
{
    const Page p;
    for (int page = UserPage; page <= PluginsPage; ++page) {
        QAccessibleInterface *area = QAccessible::queryAccessibleInterface(p.area(page));
        QVERIFY(area->child(0));
        QVERIFY(!area->child(area->childCount()));
        QVERIFY(!area->child(99));
        QVERIFY(!area->child(-1));
    }
}

void tst_SettingsView::fitsIntoTheNarrowestWindow()
{
    const Page p;
    p.view->resize(680, 300); // a window of 720 minus its margins
    for (int i = UserPage; i <= PluginsPage; ++i) {
        p.navigation()->setCurrentRow(i);
        QTRY_COMPARE(p.area(i)->viewport()->width(), p.area(i)->widget()->width());
        QCOMPARE(p.area(i)->horizontalScrollBar()->maximum(), 0);
    }
}

void tst_SettingsView::hasNoHintsAtFirst()
{
    const Page p;
    QVERIFY(p.view->findChildren<HintLine *>().isEmpty());
    QVERIFY(!p.view->findChild<SavedNotice *>());
}

void tst_SettingsView::tellsThatAnotherProgramHoldsAHotkey_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("command");
    QTest::newRow("of the window") << u"globalHotkey"_s << QString();
    QTest::newRow("of a command") << u"pluginHotkeys/calc"_s << u"calc"_s;
}

void tst_SettingsView::tellsThatAnotherProgramHoldsAHotkey()
{
    QFETCH(const QString, key);
    QFETCH(const QString, command);
    store(key, u"Ctrl+F9"_s);
    const Page p;
    QKeySequenceEdit *edit =
        command.isEmpty() ? p.hotkey() : p.pluginControl<QKeySequenceEdit>(command);
    p.view->setHotkeyCheck([command](const QString &asked) { return asked == command; });
    p.view->reload();
    QCOMPARE(p.view->findChildren<HintLine *>().size(), 1);
    const HintLine *hint = HintLine::of(edit);
    QVERIFY(!hint->isHidden());
    QCOMPARE(hint->text(), u"This hotkey is held by another program."_s);

    // Nothing is known about another hotkey before it is saved.
    edit->setKeySequence(QKeySequence(u"Ctrl+F8"_s));
    QVERIFY(hint->isHidden());
    edit->setKeySequence(QKeySequence(u"Ctrl+F9"_s));
    QVERIFY(!hint->isHidden());
    edit->clear();
    p.save();
    QVERIFY(hint->isHidden());
}

void tst_SettingsView::asksForTheHotkeyThatIsHeldAfterSave()
{
    const Page p;
    QString registered;
    QObject::connect(&p.settings, &Settings::globalHotkeyChanged, p.view.get(),
                     [&] { registered = p.settings.globalHotkey(); });
    p.view->setHotkeyCheck([&registered](const QString &) { return registered == "Ctrl+F8"_L1; });
    p.hotkey()->setKeySequence(QKeySequence(u"Ctrl+F8"_s));
    QVERIFY(!HintLine::of(p.hotkey()));
    p.save();
    QVERIFY(HintLine::of(p.hotkey()));
}

void tst_SettingsView::tellsThatABareKeyIsTaken_data()
{
    QTest::addColumn<QString>("hotkey");
    QTest::addColumn<bool>("isBare");
    QTest::newRow("letter") << u"A"_s << true;
    QTest::newRow("function key") << u"F9"_s << true;
    QTest::newRow("key of the keypad") << u"Num+5"_s << true;
    QTest::newRow("Ctrl") << u"Ctrl+A"_s << false;
    QTest::newRow("Meta") << u"Meta+A"_s << false;
    QTest::newRow("none") << QString() << false;
}

void tst_SettingsView::tellsThatABareKeyIsTaken()
{
    QFETCH(const QString, hotkey);
    QFETCH(const bool, isBare);
    const Page p;
    p.hotkey()->setKeySequence(QKeySequence(hotkey, QKeySequence::PortableText));
    const HintLine *hint = HintLine::of(p.hotkey());
    QCOMPARE(hint != nullptr, isBare);
    if (hint) {
        QCOMPARE(hint->text(), u"This key is taken from all programs."_s);
        p.cancel();
        QVERIFY(hint->isHidden());
    }
}

void tst_SettingsView::tellsThatItHasSaved()
{
    const Page p;
    p.save();
    const auto *notice = p.view->findChild<SavedNotice *>();
    QVERIFY(notice);
    QVERIFY(notice->isVisible());
    QCOMPARE(notice->text(), u"Saved"_s);
    QVERIFY(p.isBesideTheButtons(notice));
    const auto *timer = notice->findChild<QTimer *>();
    QCOMPARE(timer->interval(), 2000);
    QVERIFY(timer->isActive());
    QTRY_VERIFY(!notice->isVisible());

    p.save();
    QVERIFY(notice->isVisible());
    QCOMPARE(p.view->findChildren<SavedNotice *>().size(), 1);
}

void tst_SettingsView::tellsThatItCannotSave_data()
{
    QTest::addColumn<QVariant>("theme");
    QTest::newRow("a new store") << QVariant();
    QTest::newRow("an older store") << QVariant(u"dark"_s);
}

void tst_SettingsView::tellsThatItCannotSave()
{
    QFETCH(const QVariant, theme);
    if (theme.isValid()) {
        store(u"theme"_s, theme);
    }
    const Page p;
    p.theme()->setCurrentIndex(p.theme()->findData(u"light"_s));
    {
        const FileSizeLimit fullDisk(0);
        p.save();
        const auto *notice = p.view->findChild<SavedNotice *>();
        QVERIFY(notice);
        QVERIFY(notice->isVisible());
        QCOMPARE(notice->text(), u"The settings cannot be saved."_s);
        QVERIFY(p.isBesideTheButtons(notice));
        QCOMPARE(notice->findChild<QTimer *>()->interval(), 10000);
        QCOMPARE(p.settings.theme(), u"light"_s);
    }
    QCOMPARE(stored(u"theme"_s), theme);

    // Nothing changes on the page, but what is left is saved now.
    p.save();
    QCOMPARE(p.view->findChild<SavedNotice *>()->text(), u"Saved"_s);
    QCOMPARE(stored(u"theme"_s), u"light"_s);
}

VASKEL_TEST(tst_SettingsView, QApplication)
#include "tst_SettingsView.moc"
