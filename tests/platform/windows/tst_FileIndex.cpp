// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/FilePlugin.h"

#include "platform/windows/EverythingLibrary.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

void setFiles(const QStringList &paths)
{
    EverythingTest_SetFiles(qUtf16Printable(paths.join(u'\n')));
}

QStringList calls()
{
    return QString::fromWCharArray(EverythingTest_Calls()).split(u'\n', Qt::SkipEmptyParts);
}

QString valueOf(const QVariant &row, const QString &key)
{
    return row.toMap().value(key).toString();
}

QString actionValueOf(const QVariant &row, const QString &key)
{
    return valueOf(row.toMap().value(u"action"_s), key);
}

// The rows that only say something.
QStringList said(const QVariantList &rows)
{
    if (rows.size() != 1 || actionValueOf(rows.first(), u"type"_s) != "none"_L1) {
        return {};
    }
    return {valueOf(rows.first(), u"title"_s), valueOf(rows.first(), u"subtitle"_s)};
}

const QStringList question = {u"SetMax(50)"_s, u"SetRequestFlags(4)"_s, u"QueryW(1)"_s};

} // namespace

class tst_FileIndex : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void hintTouchesNoLibrary_data();
    void hintTouchesNoLibrary();
    void tellsThatTheServiceIsNotRunning();
    void tellsTheNumberOfAnotherError();
    void tellsThatNothingWasFound();
    void listsWhatWasFound();
    void handsTheTextOverUntrimmed();
    void leavesOutAPathThatCannotBeRead();
    void cutsAPathThatIsLongerThanTheBuffer();
    void asksForFiftyAtMost();
};

void tst_FileIndex::init()
{
    testhome::reset();
    setFiles({});
}

void tst_FileIndex::hintTouchesNoLibrary_data()
{
    QTest::addColumn<QString>("args");
    QTest::newRow("nothing") << QString();
    QTest::newRow("blanks") << u"   "_s;
}

void tst_FileIndex::hintTouchesNoLibrary()
{
    QFETCH(QString, args);
    QCOMPARE(
        said(FilePlugin(nullptr).query(args)),
        (QStringList{u"Enter a filename to search"_s, u"Powered by Everything for fast search"_s}));
    QCOMPARE(calls(), QStringList());
}

void tst_FileIndex::tellsThatTheServiceIsNotRunning()
{
    EverythingTest_Fail(2);
    QCOMPARE(said(FilePlugin(nullptr).query(u"report"_s)),
             (QStringList{u"Everything service is not running"_s,
                          u"Please start Everything before using file search"_s}));
    QCOMPARE(calls(), QStringList(u"SetSearchW(report)"_s) + question
                          + QStringList({u"GetLastError()"_s, u"Reset()"_s}));
}

void tst_FileIndex::tellsTheNumberOfAnotherError()
{
    EverythingTest_Fail(7);
    QCOMPARE(said(FilePlugin(nullptr).query(u"report"_s)),
             (QStringList{u"Search failed"_s, u"Error code: 7"_s}));
    QCOMPARE(calls().last(), u"Reset()"_s);
}

void tst_FileIndex::tellsThatNothingWasFound()
{
    QCOMPARE(said(FilePlugin(nullptr).query(u" report "_s)),
             (QStringList{u"No files found"_s, u" report "_s}));
    QCOMPARE(calls(), QStringList(u"SetSearchW( report )"_s) + question
                          + QStringList({u"GetNumResults()"_s, u"Reset()"_s}));
}

void tst_FileIndex::listsWhatWasFound()
{
    setFiles({uR"(C:\files\报告.txt)"_s, uR"(D:\其他\报告 2.doc)"_s, uR"(C:\files\other)"_s});
    const QVariantList rows = FilePlugin(nullptr).query(u"报告"_s);
    QCOMPARE(rows.size(), 2);
    QCOMPARE(valueOf(rows.at(0), u"title"_s), u"报告.txt"_s);
    QCOMPARE(valueOf(rows.at(0), u"subtitle"_s), u"C:/files"_s);
    QCOMPARE(valueOf(rows.at(1), u"subtitle"_s), u"D:/其他"_s);
    QCOMPARE(actionValueOf(rows.at(1), u"type"_s), u"openFile"_s);
    QCOMPARE(actionValueOf(rows.at(1), u"data"_s), uR"(D:\其他\报告 2.doc)"_s);
    QCOMPARE(actionValueOf(rows.at(1), u"plugin"_s), u"file"_s);
    QCOMPARE(calls(), QStringList(u"SetSearchW(报告)"_s) + question
                          + QStringList({u"GetNumResults()"_s, u"GetResultFullPathNameW(0, 1024)"_s,
                                         u"GetResultFullPathNameW(1, 1024)"_s, u"Reset()"_s}));
}

void tst_FileIndex::handsTheTextOverUntrimmed()
{
    FilePlugin(nullptr).query(u"  two words "_s);
    QCOMPARE(calls().first(), u"SetSearchW(  two words )"_s);
}

void tst_FileIndex::leavesOutAPathThatCannotBeRead()
{
    setFiles({uR"(C:\report 0)"_s, uR"(C:\report 1)"_s, uR"(C:\report 2)"_s});
    EverythingTest_HideResult(1);
    const QVariantList rows = FilePlugin(nullptr).query(u"report"_s);
    QCOMPARE(rows.size(), 2);
    QCOMPARE(valueOf(rows.at(0), u"title"_s), u"report 0"_s);
    QCOMPARE(valueOf(rows.at(1), u"title"_s), u"report 2"_s);
}

void tst_FileIndex::cutsAPathThatIsLongerThanTheBuffer()
{
    const QString folder = uR"(C:\)"_s + QString(600, u'f') + u'\\';
    const QString path = folder + "report"_L1 + QString(600, u'x');
    setFiles({path});
    const QVariantList rows = FilePlugin(nullptr).query(u"report"_s);
    QCOMPARE(rows.size(), 1);
    QCOMPARE(actionValueOf(rows.first(), u"data"_s), path.first(1023));
}

void tst_FileIndex::asksForFiftyAtMost()
{
    QStringList paths;
    for (int i = 0; i < 60; ++i) {
        paths.append(uR"(C:\report %1)"_s.arg(i));
    }
    setFiles(paths);
    QCOMPARE(FilePlugin(nullptr).query(u"report"_s).size(), 50);
}

VASKEL_TEST(tst_FileIndex, QApplication)
#include "tst_FileIndex.moc"
