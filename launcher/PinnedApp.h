// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

/// A pin. It does not depend on an entry of the catalogue.
struct PinnedApp
{
    QString name;
    QString path;     ///< identifies the pin, compared exactly
    QString iconPath; ///< a PNG file, or empty
};

/// Reads the text of the pins file, a JSON array with one object for each pin, in their order. A
/// key that is missing or not a string gives an empty field. Nothing if the text is not a JSON
/// array.
std::optional<QList<PinnedApp>> pinsFromJson(const QByteArray &text);

/// The text of the pins file.
QByteArray pinsToJson(const QList<PinnedApp> &pins);
