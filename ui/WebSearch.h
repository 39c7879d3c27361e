// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The address at which an engine searches the web for a text. The name is compared exactly; one
/// that is not known is taken for "Bing".
QString webSearchUrl(const QString &engine, const QString &text);
