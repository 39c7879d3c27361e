// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/SettingsView.h"

#include "core/IPlugin.h"
#include "core/PluginManager.h"
#include "settings/CommandErrorList.h"
#include "settings/SavedNotice.h"
#include "settings/SearchEngine.h"
#include "settings/Settings.h"
#include "settings/SettingsCommand.h"
#include "settings/SettingsNavigation.h"
#include "settings/ThemeManager.h"
#include "widgets/AccessibleFactory.h"
#include "widgets/AccessibleName.h"
#include "widgets/HotkeyEdit.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace {

// The rows of the navigation list.
enum Page {
    UserPage,
    SettingsPage,
    PluginsPage,
};

// Keeps the focus when the style changes: the base class then hides its buttons for a moment, and
// the focus would move to another widget.
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
    label->setIndent(0); // aligns labels with and without a padding
    return label;
}

QLabel *addSection(QBoxLayout *layout, const QString &text)
{
    QLabel *label = buildLabel(text, u"section"_s, layout->parentWidget());
    layout->addWidget(label);
    return label;
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
    , m_bindings(settings)
    , m_pluginManager(pluginManager)
{
    m_navigation = new SettingsNavigation(this);
    m_navigation->setAccessibleName(tr("Settings"));
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
    if (page == settingscommand::user) {
        m_navigation->setCurrentRow(UserPage);
    } else if (page == settingscommand::plugin) {
        m_navigation->setCurrentRow(PluginsPage);
    } else {
        m_navigation->setCurrentRow(SettingsPage);
    }
}

void SettingsView::reload()
{
    m_bindings.load();
    m_hints.takeStored();
}

void SettingsView::addCommandErrors(const QStringList &lines)
{
    const auto *area = static_cast<QScrollArea *>(m_pages->widget(PluginsPage));
    CommandErrorList::insertInto(area->widget(), lines);
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
    // A scroll area shows a control only if the focus comes from another control inside it.
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
    // Whenever the box is shown, it makes Save the default button, which looks focused.
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
    addCheck(layout, tr("Start on boot"), &Settings::autoStart, &Settings::setAutoStart);
    addCheck(layout, tr("Show float icon"), &Settings::showFloatIcon, &Settings::setShowFloatIcon);
    addCheck(layout, tr("Auto hide on focus loss"), &Settings::autoHideOnFocusLoss,
             &Settings::setAutoHideOnFocusLoss);
    addCheck(layout, tr("Require double-click to launch apps"),
             &Settings::appLaunchRequiresDoubleClick, &Settings::setAppLaunchRequiresDoubleClick);
    addCheck(layout, tr("Show all apps when search is empty"),
             &Settings::showAllAppsWhenSearchEmpty, &Settings::setShowAllAppsWhenSearchEmpty);
    layout->addStretch();
}

void SettingsView::buildSettingsPage()
{
    QBoxLayout *layout = addPage(tr("Settings"));
    addHotkeyEdit(layout);
    addThemeCombo(layout);
    addSearchEngineCombo(layout);
    layout->addStretch();
}

void SettingsView::buildPluginsPage()
{
    QBoxLayout *layout = addPage(tr("Plugins"));
    addCheck(layout, tr("Auto enter on empty args"), &Settings::pluginAutoEnter,
             &Settings::setPluginAutoEnter);
    addSwitchButtons(layout);
    addPluginCards(layout);
    layout->addStretch();
}

void SettingsView::buildButtons()
{
    m_buttons = new ButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    const QList<QAbstractButton *> buttons = m_buttons->buttons();
    for (QAbstractButton *button : buttons) {
        button->setIcon(QIcon());                                  // like the other buttons
        qobject_cast<QPushButton *>(button)->setAutoDefault(true); // Enter presses it, too
    }
    connect(m_buttons, &QDialogButtonBox::accepted, this, &SettingsView::save);
    connect(m_buttons->button(QDialogButtonBox::Cancel), &QPushButton::clicked, this, [this] {
        reload();
        Q_EMIT closeRequested();
    });
}

QBoxLayout *SettingsView::addPage(const QString &title)
{
    m_navigation->addItem(title);

    // Qt's own interface does not check the index of a child, and a screen reader may ask for a
    // scroll bar that was just hidden.
    installAccessible<QScrollArea, QAccessibleWidget>();
    auto *area = new QScrollArea(m_pages);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus); // its controls take the focus
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

void SettingsView::addCheck(QBoxLayout *layout, const QString &text,
                            bool (Settings::*getter)() const, void (Settings::*setter)(bool))
{
    auto *check = new QCheckBox(text, layout->parentWidget());
    layout->addWidget(check);
    m_bindings.bindCheck(check, getter, setter);
}

void SettingsView::addHotkeyEdit(QBoxLayout *layout)
{
    QLabel *label = addSection(layout, tr("Global Hotkey"));
    auto *edit = new HotkeyEdit(layout->parentWidget());
    edit->setAccessibleName(label->text());
    label->setBuddy(edit);
    layout->addWidget(edit);
    m_bindings.bindGlobalHotkey(edit);
    m_hints.add(edit, {});
}

void SettingsView::addThemeCombo(QBoxLayout *layout)
{
    QComboBox *combo = addCombo(layout, tr("Theme"));
    combo->addItem(tr("System"), ThemeManager::systemTheme);
    combo->addItem(tr("Light"), ThemeManager::lightTheme);
    combo->addItem(tr("Dark"), ThemeManager::darkTheme);
    m_bindings.bindTheme(combo);
}

void SettingsView::addSearchEngineCombo(QBoxLayout *layout)
{
    QComboBox *combo = addCombo(layout, tr("Search Engine"));
    for (const SearchEngine &engine : searchEngines) {
        combo->addItem(engine.name);
    }
    m_bindings.bindSearchEngine(combo);
}

QComboBox *SettingsView::addCombo(QBoxLayout *layout, const QString &label)
{
    QLabel *section = addSection(layout, label);
    auto *combo = new QComboBox(layout->parentWidget());
    setAccessibleNames(combo, label);
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
    const QList<IPlugin *> plugins = m_pluginManager->configurablePlugins();
    for (const IPlugin *plugin : plugins) {
        layout->addWidget(buildPluginCard(plugin->command()));
    }
}

QWidget *SettingsView::buildPluginCard(const QString &command)
{
    auto *card = new QFrame(m_pages);
    card->setObjectName(u"pluginCard"_s);
    QLabel *title = buildLabel(command, u"pluginCommand"_s, card);
    QLabel *description =
        buildLabel(m_pluginManager->commandDescription(command), u"muted"_s, card);
    description->setWordWrap(true); // a long one would make the page wider than the window

    auto *texts = new QVBoxLayout;
    texts->setSpacing(3);
    texts->addWidget(title);
    texts->addWidget(description);

    auto *layout = new QHBoxLayout(card);
    layout->setContentsMargins(14, 10, 14, 10);
    layout->setSpacing(10);
    layout->addLayout(texts, 1);
    layout->setAlignment(texts, Qt::AlignVCenter); // keeps them together beside a hint
    layout->addWidget(buildPluginCheck(command, card));
    QLabel *label = buildLabel(tr("Hotkey"), u"muted"_s, card);
    layout->addWidget(label);
    QWidget *edit = buildPluginHotkeyEdit(command, card);
    label->setBuddy(edit);
    layout->addWidget(edit);
    return card;
}

QWidget *SettingsView::buildPluginCheck(const QString &command, QWidget *card)
{
    auto *check = new QCheckBox(tr("Enabled"), card);
    check->setAccessibleName(command + u' ' + check->text());
    m_pluginChecks.append(check);
    m_bindings.bindPluginCheck(check, command);
    return check;
}

QWidget *SettingsView::buildPluginHotkeyEdit(const QString &command, QWidget *card)
{
    auto *edit = new HotkeyEdit(card);
    edit->setToolTip(tr("Global plugin hotkey"));
    edit->setAccessibleName(command + u' ' + tr("Hotkey"));
    edit->setFixedWidth(150);
    m_bindings.bindPluginHotkey(edit, command);
    m_hints.add(edit, command);
    return edit;
}

void SettingsView::checkAllPlugins(bool checked)
{
    for (QCheckBox *check : std::as_const(m_pluginChecks)) {
        check->setChecked(checked);
    }
}

void SettingsView::save()
{
    const bool isSaved = m_bindings.save();
    m_hints.takeStored(); // the hotkeys are registered by now
    SavedNotice::showBeside(m_buttons, isSaved);
}
