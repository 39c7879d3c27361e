// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// One pin. It stands by itself and refers to no entry of the catalogue.
struct PinnedApp
{
    QString name;
    QString path;     ///< the pin's identity, compared exactly
    QString iconPath; ///< a PNG file, or empty
};
