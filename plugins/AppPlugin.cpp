// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/AppPlugin.h"

#include "core/ResultRecord.h"
#include "launcher/AppLauncher.h"

using namespace Qt::StringLiterals;

AppPlugin::AppPlugin(AppLauncher *launcher, QObject *parent)
    : IPlugin(parent)
    , m_launcher(launcher)
{
}

QString AppPlugin::command() const
{
    return u"app"_s;
}

QString AppPlugin::description() const
{
    return tr("Search and launch applications");
}

QVariantList AppPlugin::query(const QString &args)
{
    if (!m_launcher) {
        return {};
    }
    QVariantList records = m_launcher->search(args);
    for (QVariant &element : records) {
        QVariantMap record = element.toMap();
        setRecordAction(record, makeAction(actiontype::launch, recordPath(record), command()));
        element = record;
    }
    return records;
}

bool AppPlugin::execute(const QVariantMap &action)
{
    if (!m_launcher) {
        return false;
    }
    const QString path = actionData(action);
    return !path.isEmpty() && m_launcher->launch(path);
}
