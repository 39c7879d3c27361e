// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/SettingsView.h"

#include "core/IPlugin.h"
#include "core/PluginManager.h"
#include "settings/SearchEngine.h"
#include "settings/Settings.h"
#include "widgets/HotkeyEdit.h"
#include "widgets/ItemFocusDelegate.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSet>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// The rows of the navigation.
enum Page {
    UserPage,
    SettingsPage,
    PluginsPage,
};

constexpr char commandProperty[] = "cmd";

QString commandOf(const QWidget *control)
{
    return control->property(commandProperty).toString();
}

// A new style makes the base class hide all buttons for a moment, and the focus would move on.
class ButtonBox : public QDialogButtonBox
{
public:
    using QDialogButtonBox::QDialogButtonBox;

protected:
    void changeEvent(QEvent *event) override
    {
        QWidget *focus = QApplication::focusWidget();
        const bool isHere = isAncestorOf(focus);
        QDialogButtonBox::changeEvent(event);
        if (isHere) {
            focus->setFocus(Qt::OtherFocusReason);
        }
    }
};

QLabel *buildLabel(const QString &text, const QString &objectName, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setObjectName(objectName);
    label->setTextFormat(Qt::PlainText);
    label->setIndent(0); // else a label with a padding of its own stands out of line
    return label;
}

QLabel *addSection(QBoxLayout *layout, const QString &text)
{
    QLabel *label = buildLabel(text, u"section"_s, layout->parentWidget());
    layout->addWidget(label);
    return label;
}

// Qt's own interface of a scroll area does not look whether there is a child of that number, and a
// screen reader may ask for a scroll bar that has just gone.
QAccessibleInterface *createInterface(const QString &, QObject *object)
{
    auto *area = qobject_cast<QScrollArea *>(object);
    return area ? new QAccessibleWidget(area) : nullptr;
}

QScrollArea *scrollAreaAround(const QWidget *widget)
{
    for (QWidget *parent = widget->parentWidget(); parent; parent = parent->parentWidget()) {
        if (auto *area = qobject_cast<QScrollArea *>(parent)) {
            return area;
        }
    }
    return nullptr;
}

void scrollByWheel(QScrollArea &area, const QWheelEvent &event)
{
    const int delta = event.pixelDelta().isNull() ? event.angleDelta().y() : event.pixelDelta().y();
    QScrollBar *bar = area.verticalScrollBar();
    bar->setValue(bar->value() - delta);
}

bool isByTabKey(const QEvent *event)
{
    const Qt::FocusReason reason = static_cast<const QFocusEvent *>(event)->reason();
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
}

} // namespace

SettingsView::SettingsView(Settings *settings, PluginManager *pluginManager, QWidget *parent)
    : QWidget(parent)
    , m_settings(settings)
    , m_pluginManager(pluginManager)
{
    m_navigation = new QListWidget(this);
    m_navigation->setObjectName(u"settingsNavigation"_s);
    m_navigation->setAccessibleName(tr("Settings"));
    m_navigation->setFixedWidth(132);
    m_navigation->setItemDelegate(new ItemFocusDelegate(m_navigation));
    m_pages = new QStackedWidget(this);
    m_pages->setObjectName(u"settingsPages"_s);
    connect(m_navigation, &QListWidget::currentRowChanged, m_pages,
            &QStackedWidget::setCurrentIndex);
    buildPages();

    auto *columns = new QHBoxLayout;
    columns->setSpacing(12);
    columns->addWidget(m_navigation);
    columns->addWidget(m_pages, 1);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(columns, 1);
    buildButtons();
    layout->addWidget(m_buttons);

    reload();
    m_navigation->setCurrentRow(SettingsPage);
}

SettingsView::~SettingsView() = default;

void SettingsView::showPage(const QString &page)
{
    if (page == "user"_L1) {
        m_navigation->setCurrentRow(UserPage);
    } else if (page == "plugin"_L1) {
        m_navigation->setCurrentRow(PluginsPage);
    } else {
        m_navigation->setCurrentRow(SettingsPage);
    }
}

void SettingsView::reload()
{
    m_hotkeyEdit->setHotkey(m_settings->globalHotkey());
    m_searchEngineCombo->setCurrentText(m_settings->searchEngine());
    m_autoStartCheck->setChecked(m_settings->autoStart());
    m_showFloatIconCheck->setChecked(m_settings->showFloatIcon());
    m_autoHideCheck->setChecked(m_settings->autoHideOnFocusLoss());
    m_doubleClickCheck->setChecked(m_settings->appLaunchRequiresDoubleClick());
    m_showAllAppsCheck->setChecked(m_settings->showAllAppsWhenSearchEmpty());
    m_autoEnterCheck->setChecked(m_settings->pluginAutoEnter());
    // An unknown theme counts as the system's.
    m_themeCombo->setCurrentIndex(std::max(0, m_themeCombo->findData(m_settings->theme())));
    for (QCheckBox *check : std::as_const(m_pluginChecks)) {
        check->setChecked(m_settings->isPluginEnabled(commandOf(check)));
    }
    for (HotkeyEdit *edit : std::as_const(m_pluginHotkeyEdits)) {
        edit->setHotkey(m_settings->pluginHotkey(commandOf(edit)));
    }
}

bool SettingsView::eventFilter(QObject *watched, QEvent *event)
{
    auto *control = qobject_cast<QWidget *>(watched);
    if (control && event->type() == QEvent::Wheel && qobject_cast<QComboBox *>(control)) {
        if (QScrollArea *area = scrollAreaAround(control)) {
            scrollByWheel(*area, *static_cast<QWheelEvent *>(event));
        }
        return true;
    }
    // The area itself scrolls only to a control that another one in it passes the focus on to.
    if (control && event->type() == QEvent::FocusIn && isByTabKey(event)) {
        if (QScrollArea *area = scrollAreaAround(control)) {
            area->ensureWidgetVisible(control);
        }
    }
    return QObject::eventFilter(watched, event);
}

void SettingsView::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    // The box makes it the default button whenever it shows, which looks as if it had the focus.
    m_buttons->button(QDialogButtonBox::Save)->setDefault(false);
}

void SettingsView::buildPages()
{
    buildUserPage();
    buildSettingsPage();
    buildPluginsPage();
    const QList<QWidget *> controls = m_pages->findChildren<QWidget *>();
    for (QWidget *control : controls) {
        if (control->focusPolicy() & Qt::TabFocus) {
            control->installEventFilter(this);
        }
    }
}

void SettingsView::buildUserPage()
{
    QBoxLayout *layout = addPage(tr("User"));
    addSection(layout, tr("Application Behavior"));
    m_autoStartCheck = addCheck(layout, tr("Start on boot"));
    m_showFloatIconCheck = addCheck(layout, tr("Show float icon"));
    m_autoHideCheck = addCheck(layout, tr("Auto hide on focus loss"));
    m_doubleClickCheck = addCheck(layout, tr("Require double-click to launch apps"));
    m_showAllAppsCheck = addCheck(layout, tr("Show all apps when search is empty"));
    layout->addStretch();
}

void SettingsView::buildSettingsPage()
{
    QBoxLayout *layout = addPage(tr("Settings"));
    QLabel *label = addSection(layout, tr("Global Hotkey"));
    m_hotkeyEdit = new HotkeyEdit(layout->parentWidget());
    m_hotkeyEdit->setAccessibleName(label->text());
    label->setBuddy(m_hotkeyEdit);
    layout->addWidget(m_hotkeyEdit);

    m_themeCombo = addCombo(layout, tr("Theme"));
    m_themeCombo->addItem(tr("System"), u"system"_s);
    m_themeCombo->addItem(tr("Light"), u"light"_s);
    m_themeCombo->addItem(tr("Dark"), u"dark"_s);

    m_searchEngineCombo = addCombo(layout, tr("Search Engine"));
    for (const SearchEngine &engine : searchEngines) {
        m_searchEngineCombo->addItem(engine.name);
    }
    layout->addStretch();
}

void SettingsView::buildPluginsPage()
{
    QBoxLayout *layout = addPage(tr("Plugins"));
    m_autoEnterCheck = addCheck(layout, tr("Auto enter on empty args"));
    addSwitchButtons(layout);
    addPluginCards(layout);
    layout->addStretch();
}

void SettingsView::buildButtons()
{
    m_buttons = new ButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    const QList<QAbstractButton *> buttons = m_buttons->buttons();
    for (QAbstractButton *button : buttons) {
        button->setIcon(QIcon());                                  // as all others here
        qobject_cast<QPushButton *>(button)->setAutoDefault(true); // Enter presses it too
    }
    connect(m_buttons, &QDialogButtonBox::accepted, this, &SettingsView::apply);
    connect(m_buttons->button(QDialogButtonBox::Cancel), &QPushButton::clicked, this, [this] {
        reload();
        Q_EMIT closeRequested();
    });
}

QBoxLayout *SettingsView::addPage(const QString &title)
{
    m_navigation->addItem(title);

    QAccessible::installFactory(createInterface); // at most once, however often it is called
    auto *area = new QScrollArea(m_pages);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus); // it follows the focus of what it holds
    area->verticalScrollBar()->setAccessibleName(title);
    auto *content = new QWidget(area);
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(14, 10, 14, 14);
    layout->setSpacing(10);
    layout->addWidget(buildLabel(title, u"pageTitle"_s, content));
    area->setWidget(content);
    m_pages->addWidget(area);
    return layout;
}

QCheckBox *SettingsView::addCheck(QBoxLayout *layout, const QString &text)
{
    auto *check = new QCheckBox(text, layout->parentWidget());
    layout->addWidget(check);
    return check;
}

QComboBox *SettingsView::addCombo(QBoxLayout *layout, const QString &label)
{
    QLabel *section = addSection(layout, label);
    auto *combo = new QComboBox(layout->parentWidget());
    combo->setAccessibleName(label);
    combo->view()->setAccessibleName(label);
    combo->view()->verticalScrollBar()->setAccessibleName(label);
    section->setBuddy(combo);
    layout->addWidget(combo);
    return combo;
}

void SettingsView::addSwitchButtons(QBoxLayout *layout)
{
    auto *enableAll = new QPushButton(tr("Enable all"), layout->parentWidget());
    auto *disableAll = new QPushButton(tr("Disable all"), layout->parentWidget());
    connect(enableAll, &QPushButton::clicked, this, [this] { checkAllPlugins(true); });
    connect(disableAll, &QPushButton::clicked, this, [this] { checkAllPlugins(false); });

    auto *row = new QHBoxLayout;
    row->addWidget(enableAll);
    row->addWidget(disableAll);
    row->addStretch();
    layout->addLayout(row);
}

void SettingsView::addPluginCards(QBoxLayout *layout)
{
    QStringList words = m_pluginManager->commands();
    words.sort(Qt::CaseInsensitive);
    // The plugin of this very page must not be switched off on it.
    QSet<const IPlugin *> seen{nullptr, m_pluginManager->pluginForCommand(u"set"_s)};
    for (const QString &word : std::as_const(words)) {
        const IPlugin *plugin = m_pluginManager->pluginForCommand(word);
        if (!seen.contains(plugin)) {
            seen.insert(plugin);
            layout->addWidget(buildPluginCard(plugin->command()));
        }
    }
}

QWidget *SettingsView::buildPluginCard(const QString &command)
{
    auto *card = new QFrame(m_pages);
    card->setObjectName(u"pluginCard"_s);
    QLabel *word = buildLabel(command, u"pluginCommand"_s, card);
    QLabel *description =
        buildLabel(m_pluginManager->commandDescription(command), u"muted"_s, card);
    description->setWordWrap(true); // else the longest would make the page wider than the window

    auto *texts = new QVBoxLayout;
    texts->setSpacing(3);
    texts->addWidget(word);
    texts->addWidget(description);

    auto *layout = new QHBoxLayout(card);
    layout->setContentsMargins(14, 10, 14, 10);
    layout->setSpacing(10);
    layout->addLayout(texts, 1);
    layout->addWidget(buildPluginCheck(command, card));
    QLabel *label = buildLabel(tr("Hotkey"), u"muted"_s, card);
    layout->addWidget(label);
    HotkeyEdit *edit = buildPluginHotkeyEdit(command, card);
    label->setBuddy(edit);
    layout->addWidget(edit);
    return card;
}

QCheckBox *SettingsView::buildPluginCheck(const QString &command, QWidget *card)
{
    auto *check = new QCheckBox(tr("Enabled"), card);
    check->setProperty(commandProperty, command);
    check->setAccessibleName(command + u' ' + check->text());
    m_pluginChecks.append(check);
    return check;
}

HotkeyEdit *SettingsView::buildPluginHotkeyEdit(const QString &command, QWidget *card)
{
    auto *edit = new HotkeyEdit(card);
    edit->setProperty(commandProperty, command);
    edit->setToolTip(tr("Global plugin hotkey"));
    edit->setAccessibleName(command + u' ' + tr("Hotkey"));
    edit->setFixedWidth(150);
    m_pluginHotkeyEdits.append(edit);
    return edit;
}

void SettingsView::apply()
{
    m_settings->setGlobalHotkey(m_hotkeyEdit->hotkey());
    m_settings->setSearchEngine(m_searchEngineCombo->currentText());
    m_settings->setTheme(m_themeCombo->currentData().toString());
    m_settings->setAutoStart(m_autoStartCheck->isChecked());
    m_settings->setShowFloatIcon(m_showFloatIconCheck->isChecked());
    m_settings->setAutoHideOnFocusLoss(m_autoHideCheck->isChecked());
    m_settings->setAppLaunchRequiresDoubleClick(m_doubleClickCheck->isChecked());
    m_settings->setShowAllAppsWhenSearchEmpty(m_showAllAppsCheck->isChecked());
    m_settings->setPluginAutoEnter(m_autoEnterCheck->isChecked());
    for (const QCheckBox *check : std::as_const(m_pluginChecks)) {
        m_settings->setPluginEnabled(commandOf(check), check->isChecked());
    }
    for (const HotkeyEdit *edit : std::as_const(m_pluginHotkeyEdits)) {
        m_settings->setPluginHotkey(commandOf(edit), edit->hotkey());
    }
}

void SettingsView::checkAllPlugins(bool checked)
{
    for (QCheckBox *check : std::as_const(m_pluginChecks)) {
        check->setChecked(checked);
    }
}
