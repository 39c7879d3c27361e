// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/StartMenu.h"

#include "platform/Link.h"
#include "platform/World.h"
#include "support/TestProgram.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

std::optional<QString> listedName(int root, const QString &path)
{
    const QHash<QString, QString> names =
        platform::startMenuNames(platform::startMenuRoots().at(root), {path});
    return names.contains(path) ? std::optional(names.value(path)) : std::nullopt;
}

} // namespace

class tst_StartMenuContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { world::reset(); }
    void rootsAreAbsoluteAndGivenOnce();
    void filesHaveTheSuffixOfLinks();
    void listsAProgramUnderItsName();
    void listsSeveralFilesAtOnce();
    void listsTheSameProgramOnce();
    void doesNotListAHiddenProgram();
    void doesNotListADamagedFile();
};

void tst_StartMenuContract::rootsAreAbsoluteAndGivenOnce()
{
    const QStringList roots = platform::startMenuRoots();
    QCOMPARE(roots.size(), 2);
    QVERIFY(roots.at(0) != roots.at(1));
    for (const QString &root : roots) {
        QCOMPARE(root, QDir::cleanPath(root));
        QVERIFY(QDir::isAbsolutePath(root));
    }
}

void tst_StartMenuContract::filesHaveTheSuffixOfLinks()
{
    const QString path = world::install(0, u"Foo.Bar"_s, u"Foo"_s);
    QCOMPARE(QFileInfo(path).suffix(), platform::linkSuffix());
}

void tst_StartMenuContract::listsAProgramUnderItsName()
{
    for (int root = 0; root < 2; ++root) {
        const QString name = u"记事本 %1"_s.arg(root);
        const QString path = world::install(root, u"program%1"_s.arg(root), name);
        QCOMPARE(listedName(root, path), name);
    }
}

void tst_StartMenuContract::listsSeveralFilesAtOnce()
{
    const QString first = world::install(0, u"first"_s, u"First"_s);
    const QString second = world::install(0, u"second"_s, u"Second"_s);
    const QString hidden = world::install(0, u"hidden"_s, u"Hidden"_s);
    world::hide(hidden);
    QHash<QString, QString> expected{{first, u"First"_s}, {second, u"Second"_s}};
    if (!world::readsStartMenuFiles()) {
        expected.insert(hidden, u"Hidden"_s);
    }
    const QString root = platform::startMenuRoots().at(0);
    QCOMPARE(platform::startMenuNames(root, {first, hidden, second}), expected);
    QVERIFY(platform::startMenuNames(root, {}).isEmpty());
}

void tst_StartMenuContract::listsTheSameProgramOnce()
{
    const QString users = world::install(0, u"program"_s, u"User's"_s);
    const QString everyones = world::install(1, u"program"_s, u"Everyone's"_s);
    QCOMPARE(listedName(0, users), u"User's"_s);
    QCOMPARE(listedName(1, everyones).has_value(), !world::readsStartMenuFiles());
}

void tst_StartMenuContract::doesNotListAHiddenProgram()
{
    const QString path = world::install(0, u"program"_s, u"Program"_s);
    world::hide(path);
    QCOMPARE(listedName(0, path).has_value(), !world::readsStartMenuFiles());
}

void tst_StartMenuContract::doesNotListADamagedFile()
{
    const QString path = world::install(0, u"program"_s, u"Program"_s);
    world::damage(path);
    QCOMPARE(listedName(0, path).has_value(), !world::readsStartMenuFiles());
}

VASKEL_TEST(tst_StartMenuContract, QCoreApplication)
#include "tst_StartMenuContract.moc"
