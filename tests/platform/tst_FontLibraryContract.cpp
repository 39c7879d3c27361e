// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FontLibrary.h"

#include "support/TestProgram.h"

#include <QFontDatabase>
#include <QTest>

class tst_FontLibraryContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fontsAreThereAfterTheWait();
};

void tst_FontLibraryContract::fontsAreThereAfterTheWait()
{
    platform::FontLibrary fonts;
    fonts.wait();
    fonts.wait();
    QVERIFY(!QFontDatabase::families().isEmpty());
}

VASKEL_TEST(tst_FontLibraryContract, QGuiApplication)
#include "tst_FontLibraryContract.moc"
