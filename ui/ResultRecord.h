// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVariantMap>

// How the window reads a result record; core/IPlugin.h tells what one holds. The presence of a key
// decides, not its value.

/// "title", or else "name".
QString recordTitle(const QVariantMap &record);

/// "subtitle", or else "desc".
QString recordSubtitle(const QVariantMap &record);

/// The action map; empty also for one of the type "none".
QVariantMap recordAction(const QVariantMap &record);

/// "path": what can be launched and pinned.
QString recordPath(const QVariantMap &record);

/// "icon": the path of the icon's file.
QString recordIcon(const QVariantMap &record);
