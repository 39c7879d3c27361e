// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/CalcPlugin.h"

#include "core/ResultRecord.h"
#include "plugins/ExpressionParser.h"

#include <QClipboard>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

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
    if (args.trimmed().isEmpty()) {
        return {makeInertRecord(tr("Enter an expression to calculate"),
                                tr("e.g. 1+2, sqrt(16), 2^10"), command())};
    }
    double value = 0.0;
    QString error;
    if (!ExpressionParser(args).evaluate(value, error)) {
        return {makeInertRecord(tr("Expression Error"), error, command())};
    }
    const QString formatted = QString::number(value, 'g', 15);
    return {makeRecord(formatted, args + " = "_L1 + formatted, QString(),
                       makeAction(actiontype::copy, formatted, command()))};
}

bool CalcPlugin::execute(const QVariantMap &action)
{
    if (actionType(action) != actiontype::copy) {
        return false;
    }
    const QString text = actionData(action);
    if (text.isEmpty()) {
        return false;
    }
    QGuiApplication::clipboard()->setText(text, QClipboard::Clipboard);
    return true;
}
