// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// A pin. It does not depend on an entry of the catalogue.
struct PinnedApp
{
    QString name;
    QString path;     ///< identifies the pin, compared exactly
    QString iconPath; ///< a PNG file, or empty
};
