// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

class QTranslator;

/// Loads the translation file "Vaskel_<language>_<territory>" of the first language that has one,
/// from the resources or else from the folder. Languages are tags with dashes, in order of
/// preference. Returns false and leaves the translator empty if there is none; texts stay English.
bool loadTranslation(QTranslator &translator, const QStringList &languages, const QString &folder);

/// Installs the translation for the languages of the user, if there is one, in the application,
/// which must exist. The folder is "i18n" beside the executable.
void installTranslation(QTranslator &translator);
