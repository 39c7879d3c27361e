// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Translation.h"

#include "platform/QtVersion.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

using namespace Qt::StringLiterals;

bool loadTranslation(QTranslator &translator, const QStringList &languages, const QString &folder)
{
    for (const QString &language : languages) {
        // QLocale adds the usual territory to a tag without one.
        const QString baseName = "Vaskel_"_L1 + qtversion::underscoredName(QLocale(language));
        if (translator.load(":/i18n/"_L1 + baseName) || translator.load(baseName, folder)) {
            return true;
        }
    }
    return false;
}

void installTranslation(QTranslator &translator)
{
    if (loadTranslation(translator, qtversion::uiLanguages(QLocale::system()),
                        QCoreApplication::applicationDirPath() + "/i18n"_L1)) {
        QCoreApplication::installTranslator(&translator);
    }
}
