// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/SettingsNavigation.h"

#include "support/ScreenReader.h"
#include "support/TestProgram.h"

#include <QApplication>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_SettingsNavigation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void currentPageIsSaidWithoutTheFocus();
};

void tst_SettingsNavigation::currentPageIsSaidWithoutTheFocus()
{
    SettingsNavigation navigation;
    navigation.addItems({u"User"_s, u"Settings"_s, u"Plugins"_s});
    const ScreenReader reader;
    navigation.setCurrentRow(2);
    navigation.show(); // newer versions of Qt say it only now
    QCOMPARE(reader.names(), (QStringList{u"Plugins"_s}));
    navigation.setCurrentRow(0);
    QCOMPARE(reader.names(), (QStringList{u"Plugins"_s, u"User"_s}));
}

VASKEL_TEST(tst_SettingsNavigation, QApplication)
#include "tst_SettingsNavigation.moc"
