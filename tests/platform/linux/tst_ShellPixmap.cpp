// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ShellPixmap.h"

#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QGuiApplication>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_ShellPixmap : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theShellHasNoFurtherIcons();
};

void tst_ShellPixmap::theShellHasNoFurtherIcons()
{
    QVERIFY(platform::shellPixmap(u"xterm"_s).isNull());
    QVERIFY(platform::shellPixmap(testhome::path()).isNull());
}

VASKEL_TEST(tst_ShellPixmap, QGuiApplication)
#include "tst_ShellPixmap.moc"
