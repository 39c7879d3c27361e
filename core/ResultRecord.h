// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVariantMap>

// A record is an answer of a plugin or of the launcher's search; a row of the list shows it.
// It is a QVariantMap with these keys, all optional:
// - "title" or else "name": string, first line of the row
// - "subtitle" or else "desc": string, second line of the row
// - "icon": string, file or resource path of the icon
// - "path": string, the argument of AppLauncher::launch; makes the row launchable and pinnable
// - "completion": string, the arguments that the Tab key writes into the box
// - "action": the action map, a QVariantMap of the strings
//   - "type": what to do; "none" makes the row inert
//   - "data": the operand, such as a path, a URL or a text
//   - "plugin": the command whose plugin carries the action out
// Use the functions below to make and read the maps. A function that makes one adds a key for each
// of its arguments, even for an empty one. Only makeInertRecord() adds others.

/// The types of the actions, compared exactly. A plugin may add its own types.
namespace actiontype {

extern const QString addTask;    ///< "data" is the title of a task
extern const QString copy;       ///< "data" is the text for the clipboard
extern const QString launch;     ///< "data" is the path of a program
extern const QString navigate;   ///< "data" is the path of a folder in a listing
extern const QString openFile;   ///< "data" is the path of a file
extern const QString openFolder; ///< "data" is the path of a folder
extern const QString openUrl;    ///< "data" is a URL

} // namespace actiontype

/// An action that PluginManager carries out itself.
QVariantMap makeAction(const QString &type, const QString &data);

/// An action for the plugin of the command.
QVariantMap makeAction(const QString &type, const QString &data, const QString &command);

/// A record without an action.
QVariantMap makeRecord(const QString &title, const QString &subtitle);
QVariantMap makeRecord(const QString &title, const QString &subtitle, const QString &icon);

/// A record with an action.
QVariantMap makeRecord(const QString &title, const QString &subtitle, const QString &icon,
                       const QVariantMap &action);

/// A record of a message, such as why the command has no answer, which cannot be chosen. Its "icon"
/// is empty unless it is given, and its action has the type "none".
QVariantMap makeInertRecord(const QString &title, const QString &subtitle, const QString &command);
QVariantMap makeInertRecord(const QString &title, const QString &subtitle, const QString &icon,
                            const QString &command);

/// A record of something that can be launched and pinned. It has "name", and "desc" for the
/// description.
QVariantMap makeProgramRecord(const QString &name, const QString &path, const QString &icon);
QVariantMap makeProgramRecord(const QString &name, const QString &path, const QString &icon,
                              const QString &description);

/// Sets the action of the record, and replaces an earlier one.
void setRecordAction(QVariantMap &record, const QVariantMap &action);

/// Sets the completion of the record.
void setRecordCompletion(QVariantMap &record, const QString &arguments);

/// "title", or else "name". The presence of the key decides, not its value.
QString recordTitle(const QVariantMap &record);

/// "subtitle", or else "desc". The presence of the key decides, not its value.
QString recordSubtitle(const QVariantMap &record);

/// "icon"
QString recordIcon(const QVariantMap &record);

/// "path"
QString recordPath(const QVariantMap &record);

/// "completion"
QString recordCompletion(const QVariantMap &record);

/// The action; empty also if its type is "none".
QVariantMap recordAction(const QVariantMap &record);

/// "type"
QString actionType(const QVariantMap &action);

/// "data"
QString actionData(const QVariantMap &action);

/// "plugin"
QString actionCommand(const QVariantMap &action);
