// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/AppPlugin.h"

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
        record.insert(u"action"_s, QVariantMap{
                                       {u"type"_s, u"launch"_s},
                                       {u"data"_s, record.value(u"path"_s).toString()},
                                       {u"plugin"_s, command()},
                                   });
        element = record;
    }
    return records;
}

bool AppPlugin::execute(const QVariantMap &action)
{
    if (!m_launcher) {
        return false;
    }
    const QString path = action.value(u"data"_s).toString();
    return !path.isEmpty() && m_launcher->launch(path);
}
