// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileIndex.h"

#include "platform/windows/Everything.h"
#include "platform/windows/EverythingLibrary.h"
#include "plugins/FilePlugin.h"
#include "support/TestHome.h"
#include "support/TestProgram.h"

#include <QTest>

#include <array>

using namespace Qt::StringLiterals;
namespace fileindex = platform::fileindex;

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

QStringList asked(const QString &text)
{
    return QStringList(u"SetSearchW(%1)"_s.arg(text)) + question;
}

} // namespace

class tst_FileIndex : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void leavesTheLibraryAloneUntilASearch();
    void givesTheErrorOfTheLibrary_data();
    void givesTheErrorOfTheLibrary();
    void findsNothing_data();
    void findsNothing();
    void givesThePathsInTheOrderOfTheLibrary();
    void givesAnEmptyPathWhereItCannotBeRead();
    void givesOnlyEmptyPathsWhereNoneCanBeRead();
    void handsTheLimitOver();
    void leavesNothingInTheLibrary();

    // FilePlugin on the library.
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

void tst_FileIndex::leavesTheLibraryAloneUntilASearch()
{
    QCOMPARE(fileindex::name(), u"Everything"_s);
    const FilePlugin plugin(nullptr);
    QCOMPARE(plugin.command(), u"file"_s);
    QCOMPARE(plugin.description(), u"File search (Everything)"_s);
    QCOMPARE(calls(), QStringList());
}

void tst_FileIndex::givesTheErrorOfTheLibrary_data()
{
    QTest::addColumn<unsigned>("error");

    QTest::newRow("0") << 0U;
    QTest::newRow("1") << 1U;
    QTest::newRow("service unreachable") << fileindex::serviceUnreachable;
    QTest::newRow("3") << 3U;
    QTest::newRow("102") << 102U;
    QTest::newRow("the largest") << 4294967295U;
}

void tst_FileIndex::givesTheErrorOfTheLibrary()
{
    QFETCH(const unsigned, error);
    setFiles({uR"(C:\files\name)"_s});
    EverythingTest_Fail(error);

    const fileindex::Answer answer = fileindex::search(u" name"_s, 50);
    QVERIFY(answer.error);
    QCOMPARE(*answer.error, error);
    QCOMPARE(answer.paths, QStringList());
    QCOMPARE(calls(), asked(u" name"_s) + QStringList({u"GetLastError()"_s, u"Reset()"_s}));
}

void tst_FileIndex::findsNothing_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("text") << u"name"_s;
    QTest::newRow("blanks around") << u"  name "_s;
    QTest::newRow("an option") << u"--help"_s;
}

void tst_FileIndex::findsNothing()
{
    QFETCH(const QString, text);

    const fileindex::Answer answer = fileindex::search(text, 50);
    QVERIFY(!answer.error);
    QCOMPARE(answer.paths, QStringList());
    QCOMPARE(calls(), asked(text) + QStringList({u"GetNumResults()"_s, u"Reset()"_s}));
}

void tst_FileIndex::givesThePathsInTheOrderOfTheLibrary()
{
    const QString zebra = uR"(C:\files\zebra note.txt)"_s;
    const QString apple = uR"(C:\files\deep\apple note.pdf)"_s;
    setFiles({zebra, apple, uR"(C:\files\other)"_s});

    const fileindex::Answer answer = fileindex::search(u" note "_s, 50);
    QVERIFY(!answer.error);
    QCOMPARE(answer.paths, QStringList({zebra, apple}));
    QCOMPARE(calls(), asked(u" note "_s)
                          + QStringList({u"GetNumResults()"_s, u"GetResultFullPathNameW(0, 1024)"_s,
                                         u"GetResultFullPathNameW(1, 1024)"_s, u"Reset()"_s}));
}

void tst_FileIndex::givesAnEmptyPathWhereItCannotBeRead()
{
    setFiles({uR"(C:\note 0)"_s, uR"(C:\note 1)"_s, uR"(C:\note 2)"_s});
    EverythingTest_HideResult(1);

    const fileindex::Answer answer = fileindex::search(u"note"_s, 50);
    QVERIFY(!answer.error);
    QCOMPARE(answer.paths, QStringList({uR"(C:\note 0)"_s, QString(), uR"(C:\note 2)"_s}));
    QCOMPARE(calls(), asked(u"note"_s)
                          + QStringList({u"GetNumResults()"_s, u"GetResultFullPathNameW(0, 1024)"_s,
                                         u"GetResultFullPathNameW(1, 1024)"_s,
                                         u"GetResultFullPathNameW(2, 1024)"_s, u"Reset()"_s}));
}

void tst_FileIndex::givesOnlyEmptyPathsWhereNoneCanBeRead()
{
    setFiles({uR"(C:\note)"_s});
    EverythingTest_HideResult(0);

    const fileindex::Answer answer = fileindex::search(u"note"_s, 50);
    QVERIFY(!answer.error);
    QCOMPARE(answer.paths, QStringList(QString()));
    QCOMPARE(calls().last(), u"Reset()"_s);
}

void tst_FileIndex::handsTheLimitOver()
{
    setFiles({uR"(C:\note 0)"_s, uR"(C:\note 1)"_s, uR"(C:\note 2)"_s});
    QCOMPARE(fileindex::search(u"note"_s, 2).paths.size(), 2);
    QCOMPARE(calls().at(1), u"SetMax(2)"_s);
}

void tst_FileIndex::leavesNothingInTheLibrary()
{
    setFiles({uR"(C:\note)"_s});
    QCOMPARE(fileindex::search(u"note"_s, 50).paths.size(), 1);
    std::array<wchar_t, 16> buffer{};
    QCOMPARE(Everything_GetNumResults(), 0U);
    QCOMPARE(Everything_GetResultFullPathNameW(0, buffer.data(), unsigned(buffer.size())), 0U);

    EverythingTest_Fail(7);
    QVERIFY(fileindex::search(u"note"_s, 50).error);
    QCOMPARE(Everything_GetLastError(), 0U);
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
