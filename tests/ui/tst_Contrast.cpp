// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Contrast.h"

#include "settings/SettingsView.h"
#include "settings/ThemeManager.h"
#include "support/TestProgram.h"
#include "tasks/TaskService.h"
#include "tasks/TaskTree.h"
#include "tasks/TodoView.h"
#include "ui/ApplicationStyle.h"
#include "ui/CommandLineEdit.h"
#include "ui/FloatIcon.h"
#include "ui/ManagementIcon.h"
#include "ui/ResultList.h"
#include "ui/WindowTest.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolTip>
#include <QTranslator>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;
using namespace painted;
using namespace windowtest;

namespace {

constexpr double leastOfTexts = 4.5;
constexpr double leastOfMarks = 3;

// Why a contrast may be too low.
const QString fixedColors = u"both colours are fixed"_s;
const QString placeholderColor = u"Qt makes it half as strong as the fixed colour"_s;
const QString disabledText = u"fixed; nobody needs to read it"_s;

enum Theme { Dark, Light };

struct Row
{
    QString name;
    double ratios[2] = {0, 0};
    QString reason; // empty if the contrast must not be less
};

void show(QWidget &window, const QSize &size)
{
    window.resize(size);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
}

/// The first visible widget of this class, and with this object name if there is one.
template <typename Widget> Widget &visibleChild(const QWidget &page, const QString &name = {})
{
    const QList<Widget *> all = page.findChildren<Widget *>(name);
    const auto found = std::find_if(all.cbegin(), all.cend(),
                                    [](const Widget *each) { return each->isVisible(); });
    if (found == all.cend()) {
        qFatal("the page has no %s %s", Widget::staticMetaObject.className(), qPrintable(name));
    }
    return **found;
}

/// A rectangle of the viewport, in the coordinates of the view.
QRect inView(const QAbstractItemView &view, const QRect &rect)
{
    return rect.translated(view.viewport()->pos());
}

/// The part of a field in front of its text.
QRect leftEnd(const QWidget &field)
{
    return {0, 0, 8, field.height()};
}

QWidget *toolTip()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto tip = std::find_if(windows.cbegin(), windows.cend(), [](const QWidget *window) {
        return window->isVisible() && window->inherits("QTipLabel");
    });
    return tip == windows.cend() ? nullptr : *tip;
}

/// Two decimals; a contrast is never rounded up.
QString rounded(double ratio)
{
    return QString::number(std::floor(ratio * 100) / 100, 'f', 2);
}

bool isShort(const Row &row, double least)
{
    return std::min(row.ratios[Dark], row.ratios[Light]) < least;
}

/// What is wrong with the contrasts: too low without a reason, or a reason without need.
QStringList shortOf(const QList<Row> &rows, double least)
{
    QStringList wrong;
    for (const Row &row : rows) {
        if (isShort(row, least) == row.reason.isEmpty()) {
            wrong.append(u"%1: %2, %3"_s.arg(row.name, rounded(row.ratios[Dark]),
                                             rounded(row.ratios[Light])));
        }
    }
    return wrong;
}

/// The lines of a table of the document.
QString tableOf(const QString &title, const QList<Row> &rows)
{
    QString table = u"| %1 | Dark | Light | Why less |\n|---|---|---|---|\n"_s.arg(title);
    for (const Row &row : rows) {
        table +=
            u"| %1 | %2 | %3 | %4 |\n"_s
                .arg(row.name, rounded(row.ratios[Dark]), rounded(row.ratios[Light]), row.reason)
                .replace(u"|  |"_s, u"| |"_s);
    }
    return table;
}

/// Makes the first word of a row of the list a text that Contrast.h can measure.
class InkTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *, const char *source, const char *, int) const override
    {
        return qstrcmp(source, "Start Menu") == 0 ? ink : QString();
    }
};

} // namespace

/// The contrast of each text and of each mark of the focus, as they are painted.
/// docs/ACCESSIBILITY.md has the same tables.
class tst_Contrast : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void formulaIsThatOfTheGuidelines();
    void everyTextIsReadable();
    void everyFocusIsVisible();
    void documentHasTheSameTables_data();
    void documentHasTheSameTables();

private:
    void measureWindow();
    void measureCommandBox(Window &window);
    void measureRows(Window &window);
    void measureFloatIcon(Window &window);
    void measureTaskPage();
    void measureTaskRows(TaskTree &tree);
    void measureSettings();
    void measureFields(QWidget &page);
    void measureNavigation(QListWidget &list);
    void measureMessage();
    void measurePopups();
    void measureButton(const QString &name, QPushButton &button, const QString &reason = {});

    void addText(const QString &name, const Pair &colors, const QString &reason = {});
    void addMark(const QString &name, const Pair &colors);
    void add(QList<Row> &rows, const QString &name, const Pair &colors, const QString &reason);

    ThemeManager m_themes;
    Theme m_theme = Dark;
    QList<Row> m_texts;
    QList<Row> m_marks;
};

void tst_Contrast::initTestCase()
{
    const InkTranslator translator;
    QCoreApplication::installTranslator(const_cast<InkTranslator *>(&translator));
    QApplication::setStyle(new ApplicationStyle);
    for (const Theme theme : {Dark, Light}) {
        reset();
        m_theme = theme;
        m_themes.setTheme(theme == Dark ? ThemeManager::darkTheme : ThemeManager::lightTheme);
        qApp->setStyleSheet(m_themes.styleSheet());
        for (const auto measure : {&tst_Contrast::measureWindow, &tst_Contrast::measureTaskPage,
                                   &tst_Contrast::measureSettings, &tst_Contrast::measureMessage,
                                   &tst_Contrast::measurePopups}) {
            (this->*measure)();
            if (QTest::currentTestFailed()) {
                return;
            }
        }
    }
}

void tst_Contrast::measureWindow()
{
    Window window;
    QVERIFY(window.showActive());
    addMark(u"Close button"_s, focusColors(window.closeButton()));
    addMark(u"Pinned program"_s, focusColors(*window.pinButtons().constFirst()));
    addMark(u"Icon of the user page"_s, focusColors(*window.window.findChild<ManagementIcon *>()));
    addText(u"Title of the window"_s,
            textColors(*window.titleBar->findChild<QLabel *>(u"windowTitle"_s)));
    measureButton(u"Close button"_s, window.closeButton());
    measureButton(u"Pinned program"_s, *window.pinButtons().constFirst());
    measureCommandBox(window);
    measureRows(window);
    measureFloatIcon(window);
}

void tst_Contrast::measureCommandBox(Window &window)
{
    QLineEdit &edit = *window.edit;
    addMark(u"Command box"_s, focusColors(*window.box, leftEnd(*window.box)));
    edit.clearFocus(); // and without a text cursor
    addText(u"Text in a field"_s, textColors(edit));
    edit.setText(ink.first(1) + blank + ink);
    edit.selectAll();
    const QRect middle(2, edit.height() / 2, 30, 1); // only this is sure to be within the selection
    addText(u"Text in a field, selected"_s, strongestPixel(picture(edit, middle)), fixedColors);
    edit.clear();
    const auto setPlaceholder = [&edit](const QString &text) {
        edit.setPlaceholderText(text);
    };
    addText(u"Placeholder of a field"_s, textColors(edit, setPlaceholder), placeholderColor);
    window.enter(u"calc "_s);
    addText(u"Command in the badge"_s, textColors(*window.box->findChild<QLabel *>()), fixedColors);
    addText(u"Status line"_s, textColors(*window.status));
}

void tst_Contrast::measureRows(Window &window)
{
    auto &list = static_cast<ResultList &>(*window.list);
    window.enter(QString());
    window.searchTimer().stop(); // it would replace the rows
    // The first row is selected, the third is below the pointer.
    const auto picture = [&](int row, const QString &title, const QString &subtitle) {
        const QVariantMap record{
            {u"title"_s, title}, {u"subtitle"_s, subtitle}, {u"path"_s, u"/program"_s}};
        list.showResults({record, record, record}, {});
        window.settle(); // fits the window to the rows
        hover(*list.viewport(), list.visualItemRect(list.item(2)).center());
        return painted::picture(*list.viewport(), list.visualItemRect(list.item(row)));
    };
    const QString states[] = {u", selected"_s, QString(), u", below the pointer"_s};
    for (int row : {1, 2, 0}) {
        const QString reason = row == 0 ? fixedColors : QString();
        const QImage empty = picture(row, blank, blank);
        addText(u"First line of a row"_s + states[row],
                strongestChange(picture(row, ink, blank), empty), reason);
        addText(u"Second line of a row"_s + states[row],
                strongestChange(picture(row, blank, u"/ "_s + ink), empty), reason);
        addText(u"Start Menu in a row"_s + states[row],
                strongestChange(picture(row, blank, ink), empty), reason);
        list.setDigitsVisible(true);
        addText(u"Digit of a row"_s + states[row],
                strongestChange(picture(row, blank, blank), empty), reason);
        list.setDigitsVisible(false);
    }
    addMark(u"Row"_s, focusColors(list, inView(list, list.visualItemRect(list.item(0)))));
}

void tst_Contrast::measureFloatIcon(Window &window)
{
    FloatIcon icon(&window.settings, &m_themes, &window.window);
    show(icon, icon.size());
    const QRect letter = icon.rect().adjusted(12, 12, -12, -12);
    addText(u"Floating icon"_s, strongestPixel(picture(icon, letter)), fixedColors);
}

void tst_Contrast::measureTaskPage()
{
    TaskService service;
    TodoView page(&service);
    show(page, QSize(720, 400));
    auto &tree = *static_cast<TaskTree *>(page.findChild<QTreeWidget *>());
    tree.setEmptyText(blank, blank);
    const QImage empty = picture(*tree.viewport());
    tree.setEmptyText(ink, blank);
    addText(u"Title of the empty task list"_s, strongestChange(picture(*tree.viewport()), empty));
    tree.setEmptyText(blank, ink);
    addText(u"Hint in the empty task list"_s, strongestChange(picture(*tree.viewport()), empty));

    for (int number = 0; number < 4; ++number) {
        const QString id = service.createTask(ink + ink);
        service.setCompleted(id, number == 3);
    }
    page.findChild<QComboBox *>()->setCurrentIndex(1); // all tasks
    QCOMPARE(tree.topLevelItemCount(), 4);
    measureTaskRows(tree);
    auto &add = *page.findChild<QPushButton *>(u"primary"_s);
    addMark(u"Coloured button"_s, focusColors(add));
    measureButton(u"Coloured button"_s, add, fixedColors);
}

void tst_Contrast::measureTaskRows(TaskTree &tree)
{
    // Tasks of the same millisecond have any order.
    QList<QTreeWidgetItem *> rows;
    QTreeWidgetItem *done = nullptr;
    for (int index = 0; index < tree.topLevelItemCount(); ++index) {
        QTreeWidgetItem *row = tree.topLevelItem(index);
        if (row->checkState(0) == Qt::Checked) {
            done = row;
        } else {
            rows.append(row);
        }
    }
    const auto title = [&](const QTreeWidgetItem *row) {
        hover(*tree.viewport(), tree.visualItemRect(rows.at(2)).center());
        return strongestPixel(
            picture(*tree.viewport(), tree.visualItemRect(row).adjusted(30, 0, 0, 0)));
    };
    const QRect first = inView(tree, tree.visualItemRect(rows.at(0)));
    tree.setCurrentItem(rows.at(0), 0, QItemSelectionModel::NoUpdate);
    addMark(u"Task"_s, focusColors(tree, first));
    rows.at(0)->setSelected(true);
    addMark(u"Task, selected"_s, focusColors(tree, first));
    tree.clearFocus();
    addText(u"Task"_s, title(rows.at(1)));
    addText(u"Task, below the pointer"_s, title(rows.at(2)));
    addText(u"Task, selected"_s, title(rows.at(0)), fixedColors);
    addText(u"Task, done"_s, title(done), placeholderColor);
}

void tst_Contrast::measureSettings()
{
    Window window;
    SettingsView page(&window.settings, &window.plugins);
    show(page, QSize(760, 600));
    page.showPage(u"set"_s);
    addText(u"Title of a page"_s, textColors(visibleChild<QLabel>(page, u"pageTitle"_s)));
    addText(u"Label of a field"_s, textColors(visibleChild<QLabel>(page, u"section"_s)));
    measureFields(page);

    page.showPage(u"plugin"_s);
    addMark(u"Check box on a card"_s, focusColors(*page.findChildren<QCheckBox *>().constLast()));
    addMark(u"Check box"_s, focusColors(visibleChild<QCheckBox>(page)));
    addText(u"Text of a check box"_s, textColors(visibleChild<QCheckBox>(page)));
    addText(u"Command on a card"_s, textColors(visibleChild<QLabel>(page, u"pluginCommand"_s)));
    addText(u"Description on a card"_s, textColors(visibleChild<QLabel>(page, u"muted"_s)));
    auto &button = visibleChild<QPushButton>(page);
    addMark(u"Button"_s, focusColors(button));
    measureButton(u"Button"_s, button);
    button.setEnabled(false);
    addText(u"Button, disabled"_s, textColors(button), disabledText);
    measureNavigation(visibleChild<QListWidget>(page));
}

void tst_Contrast::measureNavigation(QListWidget &list)
{
    list.setCurrentRow(0);
    const auto row = [&list](int number) {
        hover(*list.viewport(), list.visualItemRect(list.item(2)).center());
        list.item(number)->setText(ink);
        return strongestPixel(picture(*list.viewport(), list.visualItemRect(list.item(number))));
    };
    addMark(u"Name of a page"_s,
            focusColors(list, inView(list, list.visualItemRect(list.item(0)))));
    list.clearFocus();
    addText(u"Name of a page"_s, row(1));
    addText(u"Name of a page, below the pointer"_s, row(2));
    addText(u"Name of a page, selected"_s, row(0), fixedColors);
}

void tst_Contrast::measureFields(QWidget &page)
{
    auto &combo = visibleChild<QComboBox>(page);
    auto &hotkey = visibleChild<QKeySequenceEdit>(page);
    addMark(u"Combo box"_s, focusColors(combo, leftEnd(combo)));
    addMark(u"Field"_s, focusColors(hotkey, leftEnd(hotkey)));
    hotkey.clearFocus();
    addText(u"Hotkey in its field"_s, textColors(*hotkey.findChild<QLineEdit *>()));
    const auto choose = [&combo](const QString &text) {
        combo.setItemText(combo.currentIndex(), text);
    };
    addText(u"Choice of a combo box"_s, textColors(combo, choose));
    hover(combo, combo.rect().center());
    addText(u"Choice of a combo box, below the pointer"_s, textColors(combo, choose));
}

void tst_Contrast::measureMessage()
{
    QMessageBox box(QMessageBox::Information, QString(), blank, QMessageBox::Ok);
    show(box, box.sizeHint());
    addText(u"Text of a message"_s, textColors(*box.findChild<QLabel *>(u"qt_msgbox_label"_s)));
    QProgressBar bar;
    bar.setAlignment(Qt::AlignCenter);
    show(bar, QSize(300, 30));
    const auto setText = [&bar](const QString &text) {
        bar.setFormat(text);
    };
    bar.setValue(0);
    addText(u"Percentage of a download, at 0 %"_s, textColors(bar, setText));
    bar.setValue(100);
    addText(u"Percentage of a download, at 100 %"_s, textColors(bar, setText));
}

void tst_Contrast::measurePopups()
{
    QMenu menu;
    menu.addAction(ink);
    QAction *selected = menu.addAction(ink);
    menu.setActiveAction(selected);
    menu.popup(QPoint(100, 100));
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    const auto entry = [&menu](QAction *action) {
        return strongestPixel(picture(menu, menu.actionGeometry(action)));
    };
    addText(u"Entry of a menu"_s, entry(menu.actions().constFirst()));
    addText(u"Entry of a menu, selected"_s, entry(selected), fixedColors);
    addMark(u"Entry of a menu"_s,
            {entry(selected).background, entry(menu.actions().constFirst()).background});
    menu.close();

    QComboBox combo;
    combo.addItems({ink, ink});
    show(combo, QSize(200, 40));
    combo.showPopup();
    QTRY_VERIFY(combo.view()->isVisible());
    const auto choice = [&combo](int row) {
        const QAbstractItemView &view = *combo.view();
        return strongestPixel(
            picture(*view.viewport(), view.visualRect(view.model()->index(row, 0))));
    };
    addText(u"Choice in the list of a combo box"_s, choice(1));
    addText(u"Choice in the list of a combo box, selected"_s, choice(0), fixedColors);
    addMark(u"Choice in the list of a combo box"_s, {choice(0).background, choice(1).background});
    combo.hidePopup();

    QToolTip::showText(QPoint(100, 100), ink, &combo);
    QWidget *tip = nullptr;
    QTRY_VERIFY((tip = toolTip()));
    addText(u"Tool tip"_s, strongestPixel(picture(*tip, tip->rect().adjusted(4, 4, -4, -4))));
    QToolTip::hideText();
    QTRY_VERIFY(!toolTip());
}

void tst_Contrast::measureButton(const QString &name, QPushButton &button, const QString &reason)
{
    button.clearFocus();
    addText(name, textColors(button), reason);
    hover(button, button.rect().center());
    addText(name + u", below the pointer"_s, textColors(button), reason);
    button.setDown(true);
    addText(name + u", pressed"_s, textColors(button), reason);
    button.setDown(false);
    hover(*button.window(), QPoint());
}

void tst_Contrast::addText(const QString &name, const Pair &colors, const QString &reason)
{
    add(m_texts, name, colors, reason);
}

void tst_Contrast::addMark(const QString &name, const Pair &colors)
{
    add(m_marks, name, colors, {});
}

void tst_Contrast::add(QList<Row> &rows, const QString &name, const Pair &colors,
                       const QString &reason)
{
    auto row = std::find_if(rows.begin(), rows.end(),
                            [&name](const Row &each) { return each.name == name; });
    if (row == rows.end()) {
        row = rows.insert(rows.end(), Row{name, {}, reason});
    }
    row->ratios[m_theme] = contrast(colors.foreground, colors.background);
}

void tst_Contrast::formulaIsThatOfTheGuidelines()
{
    QCOMPARE(contrast(Qt::black, Qt::white), 21.0);
    QCOMPARE(contrast(Qt::white, Qt::black), 21.0);
    QCOMPARE(contrast(Qt::red, Qt::red), 1.0);
    // The lightest grey on white with a contrast of at least 4.5.
    QVERIFY(contrast(QColor(0x76, 0x76, 0x76), Qt::white) >= 4.5);
    QVERIFY(contrast(QColor(0x77, 0x77, 0x77), Qt::white) < 4.5);
}

void tst_Contrast::everyTextIsReadable()
{
    const QString wrong = shortOf(m_texts, leastOfTexts).join(u'\n');
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
}

void tst_Contrast::everyFocusIsVisible()
{
    const QString wrong = shortOf(m_marks, leastOfMarks).join(u'\n');
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
}

void tst_Contrast::documentHasTheSameTables_data()
{
    QTest::addColumn<QString>("table");
    QTest::newRow("texts") << tableOf(u"Text"_s, m_texts);
    QTest::newRow("focus") << tableOf(u"Focus"_s, m_marks);
}

void tst_Contrast::documentHasTheSameTables()
{
    QFETCH(const QString, table);
    QFile file(QStringLiteral(SOURCE_FOLDER "/docs/ACCESSIBILITY.md"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString document = QString::fromUtf8(file.readAll()) + u'\n';
    const bool isThere = document.contains(u"\n\n"_s + table + u'\n');
    if (!isThere) {
        qInfo("%s", qPrintable(table)); // QTest would cut it off
    }
    QVERIFY2(isThere, "docs/ACCESSIBILITY.md must have the table above");
}

VASKEL_TEST(tst_Contrast, QApplication)
#include "tst_Contrast.moc"
