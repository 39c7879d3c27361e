// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ResultRecord.h"

using namespace Qt::StringLiterals;

namespace {

QString firstPresent(const QVariantMap &record, const QString &key, const QString &otherKey)
{
    const auto value = record.constFind(key);
    return value == record.cend() ? record.value(otherKey).toString() : value->toString();
}

} // namespace

QString recordTitle(const QVariantMap &record)
{
    return firstPresent(record, u"title"_s, u"name"_s);
}

QString recordSubtitle(const QVariantMap &record)
{
    return firstPresent(record, u"subtitle"_s, u"desc"_s);
}

QVariantMap recordAction(const QVariantMap &record)
{
    const QVariantMap action = record.value(u"action"_s).toMap();
    return action.value(u"type"_s).toString() == "none"_L1 ? QVariantMap() : action;
}

QString recordPath(const QVariantMap &record)
{
    return record.value(u"path"_s).toString();
}

QString recordIcon(const QVariantMap &record)
{
    return record.value(u"icon"_s).toString();
}
