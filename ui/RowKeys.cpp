// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/RowKeys.h"

#include "core/IPlugin.h"
#include "core/PluginManager.h"
#include "core/ResultRecord.h"
#include "platform/ContainingFolder.h"
#include "ui/CommandLineEdit.h"
#include "ui/CommandQuery.h"
#include "ui/ResultDelegate.h"
#include "ui/ResultItem.h"
#include "ui/ResultList.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace {

Qt::KeyboardModifiers modifiersOf(const QKeyEvent &key)
{
    return key.modifiers() & ~Qt::KeypadModifier;
}

// With a French keyboard, digits need Shift. On Windows, Alt and the digits of the keypad enter a
// character by its number.
int digitOf(const QKeyEvent &key)
{
    const bool isAlt = (key.modifiers() & ~Qt::ShiftModifier) == Qt::AltModifier;
    const int digit = key.key() - Qt::Key_0;
    return isAlt && digit >= 1 && digit <= ResultDelegate::digitCount ? digit : 0;
}

// AltGr types a character too; Windows reports it as Ctrl+Alt.
bool isTyped(const QKeyEvent &key)
{
    const Qt::KeyboardModifiers both = Qt::ControlModifier | Qt::AltModifier;
    const Qt::KeyboardModifiers held = key.modifiers() & both;
    const QString text = key.text();
    return (held == Qt::NoModifier || held == both) && !text.isEmpty()
           && (text.at(0).isPrint() || text.at(0).isHighSurrogate());
}

bool isPath(const QString &type)
{
    return type == actiontype::launch || type == actiontype::openFile
           || type == actiontype::openFolder || type == actiontype::navigate;
}

// The file or folder that the row stands for; empty if it stands for none.
QString fileOf(const QVariantMap &record)
{
    const QVariantMap action = recordAction(record);
    return isPath(actionType(action)) ? actionData(action) : recordPath(record);
}

bool opensFolder(const QVariantMap &action)
{
    const QString type = actionType(action);
    return (type == actiontype::navigate || type == actiontype::openFolder)
           && !actionData(action).isEmpty();
}

QVariantMap firstRecord(const ResultList &list)
{
    return list.count() > 0 ? recordOf(*list.item(0)) : QVariantMap();
}

} // namespace

RowKeys::RowKeys(CommandLineEdit *box, ResultList *list, PluginManager *pluginManager,
                 const CommandQuery *lastQuery)
    : QObject(list)
    , m_box(box)
    , m_list(list)
    , m_pluginManager(pluginManager)
    , m_lastQuery(lastQuery)
{
    box->lineEdit()->installEventFilter(this);
    list->installEventFilter(this);
}

bool RowKeys::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        if (!m_box->isComposing() && pressKey(watched, *static_cast<QKeyEvent *>(event))) {
            return true;
        }
        break;
    case QEvent::KeyRelease:
        if (static_cast<QKeyEvent *>(event)->key() == Qt::Key_Alt) {
            m_list->setDigitsVisible(false);
        }
        break;
    case QEvent::FocusOut: // the release of Alt then goes to another window
        m_list->setDigitsVisible(false);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

bool RowKeys::pressKey(QObject *watched, const QKeyEvent &key)
{
    const bool isBox = watched == m_box->lineEdit();
    if (modifiersOf(key) == Qt::ControlModifier && pressWithControl(key)) {
        return true;
    }
    if (m_list->isHidden()) {
        return false; // a page is shown
    }
    if (const int digit = digitOf(key)) {
        return key.isAutoRepeat() || launchVisibleRow(digit);
    }
    if (key.key() == Qt::Key_Alt) {
        m_list->setDigitsVisible((key.modifiers() & ~Qt::AltModifier) == Qt::NoModifier);
        return false;
    }
    if (key.key() == Qt::Key_Up && modifiersOf(key) == Qt::AltModifier) {
        return enterParentFolder();
    }
    return isBox ? pressInBox(key) : pressInList(key);
}

bool RowKeys::pressInBox(const QKeyEvent &key)
{
    const bool isControl = modifiersOf(key) == Qt::ControlModifier;
    if (m_list->count() == 0 || !(isControl || modifiersOf(key) == Qt::NoModifier)) {
        return false;
    }
    switch (key.key()) {
    case Qt::Key_Tab:
        return !isControl && (completeArguments() || enterFolder());
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        if (!isControl) {
            const int page = m_list->rowsPerPage();
            m_list->moveSelection(key.key() == Qt::Key_PageUp ? -page : page);
        }
        return !isControl;
    case Qt::Key_Home:
    case Qt::Key_End:
        if (isControl) {
            m_list->moveSelection(key.key() == Qt::Key_Home ? -m_list->count() : m_list->count());
        }
        return isControl;
    default:
        return false;
    }
}

bool RowKeys::pressInList(const QKeyEvent &key)
{
    // The list itself takes a blank, which selects its current row.
    if ((!isTyped(key) || key.key() == Qt::Key_Space) && key.key() != Qt::Key_Backspace) {
        return false;
    }
    m_box->setFocus(Qt::OtherFocusReason);
    QKeyEvent copy(key.type(), key.key(), key.modifiers(), key.text(), key.isAutoRepeat());
    QCoreApplication::sendEvent(m_box->lineEdit(), &copy);
    return true;
}

bool RowKeys::pressWithControl(const QKeyEvent &key)
{
    const bool isEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (isEnter && !key.isAutoRepeat() && executeArguments()) {
        return true;
    }
    if (m_list->isHidden()) {
        return false;
    }
    switch (key.key()) {
    case Qt::Key_C:
        return copyRow();
    case Qt::Key_D:
        return m_list->count() > 0 && (key.isAutoRepeat() || togglePin());
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return key.isAutoRepeat() || showRowInFolder();
    default:
        return false;
    }
}

bool RowKeys::launchVisibleRow(int number)
{
    const int row = m_list->firstVisibleRow() + number - 1;
    const QListWidgetItem *item = m_list->item(row);
    if (item && m_list->viewport()->rect().contains(m_list->visualItemRect(item).center())) {
        m_list->setCurrentRow(row);
        Q_EMIT launchRequested();
    }
    return true;
}

bool RowKeys::copyRow()
{
    if (m_list->count() == 0 || m_box->lineEdit()->hasSelectedText()) {
        return false;
    }
    const QVariantMap record = m_list->currentRecord();
    const QString file = fileOf(record);
    const QString value = file.isEmpty() ? actionData(recordAction(record)) : file;
    if (!value.isEmpty()) {
        const bool isPath = !file.isEmpty() && QDir::isAbsolutePath(file);
        QGuiApplication::clipboard()->setText(isPath ? QDir::toNativeSeparators(file) : value);
    }
    return true;
}

bool RowKeys::togglePin()
{
    m_list->togglePin(m_list->currentRecord());
    return true;
}

bool RowKeys::showRowInFolder()
{
    const QString file = fileOf(m_list->currentRecord());
    if (file.isEmpty()) {
        return false;
    }
    if (platform::showInFolder(file)) {
        m_list->window()->hide();
    }
    return true;
}

bool RowKeys::executeArguments()
{
    const CommandText text = m_box->commandText();
    const QVariantMap action =
        m_pluginManager->actionForArguments(text.command, text.arguments.value_or(QString()));
    if (action.isEmpty()) {
        return false;
    }
    if (m_pluginManager->executeAction(action)) {
        // Do not search: the rows would be the same, and the page of the command could open.
        const QSignalBlocker blocker(m_box->lineEdit());
        m_box->setText(text.command + u' ');
        Q_EMIT argumentsTaken();
    }
    return true;
}

bool RowKeys::completeArguments()
{
    const QString arguments = recordCompletion(m_list->currentRecord());
    if (arguments.isEmpty() || !m_lastQuery->isCommand()) {
        return false;
    }
    m_box->setText(m_lastQuery->command() + u' ' + arguments);
    return true;
}

bool RowKeys::canListFolder(const QVariantMap &action) const
{
    const IPlugin *plugin = m_pluginManager->pluginForCommand(actionCommand(action));
    return opensFolder(action) && plugin && plugin->listsFolders();
}

bool RowKeys::enterFolder()
{
    const QVariantMap action = recordAction(m_list->currentRecord());
    if (!canListFolder(action)) {
        return false;
    }
    writeFolder(actionCommand(action), actionData(action));
    return true;
}

bool RowKeys::enterParentFolder()
{
    const QVariantMap action = recordAction(firstRecord(*m_list));
    if (!canListFolder(action)) {
        return false;
    }
    // A folder that has just been written is not listed yet.
    const QString written = m_box->commandText().arguments.value_or(QString()).trimmed();
    const bool isFolder = QDir::isAbsolutePath(written) && QDir(written).exists();
    const QDir folder(isFolder ? written : actionData(action));
    writeFolder(actionCommand(action), QFileInfo(folder.absolutePath()).path());
    return true;
}

// Ends the path with a separator: the next letters belong to a name in the folder, and a blank at
// the end of the folder's own name is not trimmed.
void RowKeys::writeFolder(const QString &command, const QString &path)
{
    const QString separator = path.endsWith(u'/') ? QString() : u"/"_s;
    m_box->setText(command + u' ' + path + separator);
}
