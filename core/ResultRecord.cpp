// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/ResultRecord.h"

#include <map>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QString titleKey = u"title"_s;
const QString nameKey = u"name"_s;
const QString subtitleKey = u"subtitle"_s;
const QString descriptionKey = u"desc"_s;
const QString iconKey = u"icon"_s;
const QString pathKey = u"path"_s;
const QString completionKey = u"completion"_s;
const QString actionKey = u"action"_s;

const QString typeKey = u"type"_s;
const QString dataKey = u"data"_s;
const QString commandKey = u"plugin"_s;

const QString inertType = u"none"_s;

QString firstPresent(const QVariantMap &record, const QString &key, const QString &otherKey)
{
    const auto value = record.constFind(key);
    return value == record.cend() ? record.value(otherKey).toString() : value->toString();
}

} // namespace

namespace actiontype {

const QString addTask = u"addTask"_s;
const QString copy = u"copy"_s;
const QString launch = u"launch"_s;
const QString navigate = u"navigate"_s;
const QString openFile = u"openFile"_s;
const QString openFolder = u"openFolder"_s;
const QString openUrl = u"openUrl"_s;

} // namespace actiontype

QVariantMap makeAction(const QString &type, const QString &data)
{
    return {{typeKey, type}, {dataKey, data}};
}

QVariantMap makeAction(const QString &type, const QString &data, const QString &command)
{
    return {{typeKey, type}, {dataKey, data}, {commandKey, command}};
}

QVariantMap makeRecord(const QString &title, const QString &subtitle)
{
    return {{titleKey, title}, {subtitleKey, subtitle}};
}

QVariantMap makeRecord(const QString &title, const QString &subtitle, const QString &icon)
{
    return {{titleKey, title}, {subtitleKey, subtitle}, {iconKey, icon}};
}

QVariantMap makeRecord(const QString &title, const QString &subtitle, const QString &icon,
                       const QVariantMap &action)
{
    return {{titleKey, title}, {subtitleKey, subtitle}, {iconKey, icon}, {actionKey, action}};
}

QVariantMap makeInertRecord(const QString &title, const QString &subtitle, const QString &command)
{
    return makeInertRecord(title, subtitle, QString(), command);
}

QVariantMap makeInertRecord(const QString &title, const QString &subtitle, const QString &icon,
                            const QString &command)
{
    return makeRecord(title, subtitle, icon, {{typeKey, inertType}, {commandKey, command}});
}

QVariantMap makeProgramRecord(const QString &name, const QString &path, const QString &icon)
{
    return {{nameKey, name}, {pathKey, path}, {iconKey, icon}};
}

QVariantMap makeProgramRecord(const QString &name, const QString &path, const QString &icon,
                              const QString &description)
{
    // Inserted in the order of the keys, which needs no search: every program has a record.
    std::map<QString, QVariant> fields;
    fields.emplace_hint(fields.end(), descriptionKey, description);
    fields.emplace_hint(fields.end(), iconKey, icon);
    fields.emplace_hint(fields.end(), nameKey, name);
    fields.emplace_hint(fields.end(), pathKey, path);
    return QVariantMap(std::move(fields));
}

void setRecordAction(QVariantMap &record, const QVariantMap &action)
{
    record.insert(actionKey, action);
}

void setRecordCompletion(QVariantMap &record, const QString &arguments)
{
    record.insert(completionKey, arguments);
}

QString recordTitle(const QVariantMap &record)
{
    return firstPresent(record, titleKey, nameKey);
}

QString recordSubtitle(const QVariantMap &record)
{
    return firstPresent(record, subtitleKey, descriptionKey);
}

QString recordIcon(const QVariantMap &record)
{
    return record.value(iconKey).toString();
}

QString recordPath(const QVariantMap &record)
{
    return record.value(pathKey).toString();
}

QString recordCompletion(const QVariantMap &record)
{
    return record.value(completionKey).toString();
}

QVariantMap recordAction(const QVariantMap &record)
{
    const QVariantMap action = record.value(actionKey).toMap();
    return actionType(action) == inertType ? QVariantMap() : action;
}

QString actionType(const QVariantMap &action)
{
    return action.value(typeKey).toString();
}

QString actionData(const QVariantMap &action)
{
    return action.value(dataKey).toString();
}

QString actionCommand(const QVariantMap &action)
{
    return action.value(commandKey).toString();
}
