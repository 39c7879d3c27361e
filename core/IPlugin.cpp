// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/IPlugin.h"

IPlugin::IPlugin(QObject *parent)
    : QObject(parent)
{
}

IPlugin::~IPlugin() = default;

QStringList IPlugin::aliases() const
{
    return {};
}

QStringList IPlugin::searchTexts(const QString &) const
{
    return {};
}

bool IPlugin::listsFolders() const
{
    return false;
}

bool IPlugin::hasView() const
{
    return false;
}

void IPlugin::setViewCommand(const QString &) {}

QWidget *IPlugin::createView()
{
    return nullptr;
}
