// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

class QTranslator;

/// Loads the catalogue "Vaskel_<language>_<territory>" of the first of the languages that has one:
/// from the resources, else from the folder. The languages are tags with dashes, the preferred one
/// first. False, with the translator left empty, when none has; the texts then stay in English.
bool loadTranslation(QTranslator &translator, const QStringList &languages, const QString &folder);
