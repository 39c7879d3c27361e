// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/CalcPlugin.h"

#include "plugins/ExpressionParser.h"

#include <QClipboard>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace {

QVariantMap record(const QString &title, const QString &subtitle, const QVariantMap &action)
{
    return {{u"title"_s, title},
            {u"subtitle"_s, subtitle},
            {u"icon"_s, QString()},
            {u"action"_s, action}};
}

} // namespace

CalcPlugin::CalcPlugin(QObject *parent)
    : IPlugin(parent)
{
}

QString CalcPlugin::command() const
{
    return u"calc"_s;
}

QString CalcPlugin::description() const
{
    return tr("Calculator");
}

QVariantList CalcPlugin::query(const QString &args)
{
    QVariantMap action{{u"plugin"_s, command()}, {u"type"_s, u"none"_s}};
    if (args.trimmed().isEmpty()) {
        return {
            record(tr("Enter an expression to calculate"), tr("e.g. 1+2, sqrt(16), 2^10"), action)};
    }
    double value = 0.0;
    QString error;
    if (!ExpressionParser(args).evaluate(value, error)) {
        return {record(tr("Expression Error"), error, action)};
    }
    const QString formatted = QString::number(value, 'g', 15);
    action[u"type"_s] = u"copy"_s;
    action[u"data"_s] = formatted;
    return {record(formatted, args + " = "_L1 + formatted, action)};
}

bool CalcPlugin::execute(const QVariantMap &action)
{
    if (action.value(u"type"_s).toString() != "copy"_L1) {
        return false;
    }
    const QString text = action.value(u"data"_s).toString();
    if (text.isEmpty()) {
        return false;
    }
    QGuiApplication::clipboard()->setText(text, QClipboard::Clipboard);
    return true;
}
