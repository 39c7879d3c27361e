// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/CalcPlugin.h"

#include "support/TestProgram.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QTest>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace {

// Translates every text of one context; a text of another context stays English.
class CalcTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return qstrcmp(context, "CalcPlugin") == 0 ? u'<' + QString::fromUtf8(source) + u'>'
                                                   : QString();
    }
};

QVariantMap inertAction()
{
    return {{u"plugin"_s, u"calc"_s}, {u"type"_s, u"none"_s}};
}

QVariantMap record(const QString &title, const QString &subtitle, const QVariantMap &action)
{
    return {{u"title"_s, title},
            {u"subtitle"_s, subtitle},
            {u"icon"_s, QString()},
            {u"action"_s, action}};
}

QVariantMap hintRecord()
{
    return record(u"Enter an expression to calculate"_s, u"e.g. 1+2, sqrt(16), 2^10"_s,
                  inertAction());
}

QVariantMap errorRecord(const QString &message)
{
    return record(u"Expression Error"_s, message, inertAction());
}

QVariantMap valueRecord(const QString &value, const QString &subtitle)
{
    return record(value, subtitle,
                  {{u"plugin"_s, u"calc"_s}, {u"type"_s, u"copy"_s}, {u"data"_s, value}});
}

QString clipboardText()
{
    return QGuiApplication::clipboard()->text(QClipboard::Clipboard);
}

} // namespace

class tst_CalcPlugin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void answersTheContract();
    void answersWithOneRecord_data();
    void answersWithOneRecord();
    void formatsTheValue_data();
    void formatsTheValue();
    void choosingTheValueCopiesTheTitle();
    void choosingAnInertRowDoesNothing_data();
    void choosingAnInertRowDoesNothing();
    void refusesWhatItCannotCopy_data();
    void refusesWhatItCannotCopy();
    void textsAreTranslatedInItsContext();
};

void tst_CalcPlugin::init()
{
    QGuiApplication::clipboard()->setText(u"before"_s);
}

void tst_CalcPlugin::answersTheContract()
{
    QObject parent;
    CalcPlugin plugin(&parent);
    QCOMPARE(plugin.parent(), &parent);
    QCOMPARE(plugin.command(), u"calc"_s);
    QCOMPARE(plugin.description(), u"Calculator"_s);
    QVERIFY(plugin.aliases().isEmpty());
    QVERIFY(!plugin.hasView());
    plugin.setViewCommand(u"calc"_s);
    QVERIFY(!plugin.createView());
}

void tst_CalcPlugin::answersWithOneRecord_data()
{
    QTest::addColumn<QString>("args");
    QTest::addColumn<QVariantMap>("expected");

    QTest::newRow("nothing: hint") << QString() << hintRecord();
    QTest::newRow("blanks: hint") << u"   "_s << hintRecord();
    QTest::newRow("other white space: hint") << u"\t\u3000\n"_s << hintRecord();
    QTest::newRow("unfinished: error")
        << u"1+"_s << errorRecord(u"Expected number, constant, or function at position 3"_s);
    QTest::newRow("unfinished behind a blank: error one further")
        << u" 1+"_s << errorRecord(u"Expected number, constant, or function at position 4"_s);
    QTest::newRow("division by zero: error")
        << u"1/0"_s << errorRecord(u"Division by zero at position 4"_s);
    QTest::newRow("infinite: error")
        << u"1e308*10"_s << errorRecord(u"Result is not finite at position 9"_s);
    QTest::newRow("sum: value") << u"1+2"_s << valueRecord(u"3"_s, u"1+2 = 3"_s);
    QTest::newRow("blanks inside: value") << u"2 + 2"_s << valueRecord(u"4"_s, u"2 + 2 = 4"_s);
    QTest::newRow("blanks around: value, kept in the subtitle")
        << u"  2+2 "_s << valueRecord(u"4"_s, u"  2+2  = 4"_s);
    QTest::newRow("zero: value") << u"0"_s << valueRecord(u"0"_s, u"0 = 0"_s);
}

void tst_CalcPlugin::answersWithOneRecord()
{
    QFETCH(const QString, args);
    QFETCH(const QVariantMap, expected);

    const QVariantList records = CalcPlugin().query(args);
    QCOMPARE(records.size(), 1);
    QCOMPARE(records.first().toMap(), expected);
}

void tst_CalcPlugin::formatsTheValue_data()
{
    QTest::addColumn<QString>("args");
    QTest::addColumn<QString>("formatted");

    const auto row = [](const QString &args, const QString &formatted) {
        QTest::newRow(qPrintable(args)) << args << formatted;
    };
    row(u"1+2"_s, u"3"_s);
    row(u"2^10"_s, u"1024"_s);
    row(u"1/3"_s, u"0.333333333333333"_s);
    row(u"0.1+0.2"_s, u"0.3"_s);
    row(u"sqrt(2)"_s, u"1.4142135623731"_s);
    row(u"pi"_s, u"3.14159265358979"_s);
    row(u"0.0001"_s, u"0.0001"_s);
    row(u"0.00001"_s, u"1e-05"_s);
    row(u"999999999999999"_s, u"999999999999999"_s);
    row(u"1e15"_s, u"1e+15"_s);
    row(u"2^53"_s, u"9.00719925474099e+15"_s);
    row(u"1e100"_s, u"1e+100"_s);
    row(u"1234567.5"_s, u"1234567.5"_s);
    row(u"-2.50"_s, u"-2.5"_s);
}

void tst_CalcPlugin::formatsTheValue()
{
    QFETCH(const QString, args);
    QFETCH(const QString, formatted);

    const QVariantMap record = CalcPlugin().query(args).first().toMap();
    QCOMPARE(record[u"title"_s].toString(), formatted);
    QCOMPARE(record[u"action"_s].toMap()[u"data"_s].toString(), formatted);
}

void tst_CalcPlugin::choosingTheValueCopiesTheTitle()
{
    CalcPlugin plugin;
    const QVariantMap record = plugin.query(u"1/3"_s).first().toMap();
    QVERIFY(plugin.execute(record[u"action"_s].toMap()));
    QCOMPARE(clipboardText(), record[u"title"_s].toString());
    QCOMPARE(clipboardText(), u"0.333333333333333"_s);
}

void tst_CalcPlugin::choosingAnInertRowDoesNothing_data()
{
    QTest::addColumn<QString>("args");
    QTest::newRow("hint") << QString();
    QTest::newRow("error") << u"1+"_s;
}

void tst_CalcPlugin::choosingAnInertRowDoesNothing()
{
    QFETCH(const QString, args);

    CalcPlugin plugin;
    const QVariantMap record = plugin.query(args).first().toMap();
    QVERIFY(!record.contains(u"path"_s));
    QVERIFY(!plugin.execute(record[u"action"_s].toMap()));
    QCOMPARE(clipboardText(), u"before"_s);
}

void tst_CalcPlugin::refusesWhatItCannotCopy_data()
{
    QTest::addColumn<QVariantMap>("action");
    const QString type = u"type"_s;
    const QString data = u"data"_s;
    QTest::newRow("no keys") << QVariantMap();
    QTest::newRow("no type") << QVariantMap{{data, u"3"_s}};
    QTest::newRow("another type") << QVariantMap{{type, u"launch"_s}, {data, u"3"_s}};
    QTest::newRow("inert type") << QVariantMap{{type, u"none"_s}, {data, u"3"_s}};
    QTest::newRow("type in capitals") << QVariantMap{{type, u"Copy"_s}, {data, u"3"_s}};
    QTest::newRow("no data") << QVariantMap{{type, u"copy"_s}};
    QTest::newRow("empty data") << QVariantMap{{type, u"copy"_s}, {data, u""_s}};
    QTest::newRow("data that is no text") << QVariantMap{{type, u"copy"_s}, {data, QVariantMap()}};
}

void tst_CalcPlugin::refusesWhatItCannotCopy()
{
    QFETCH(const QVariantMap, action);

    QVERIFY(!CalcPlugin().execute(action));
    QCOMPARE(clipboardText(), u"before"_s);
}

void tst_CalcPlugin::textsAreTranslatedInItsContext()
{
    CalcTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    CalcPlugin plugin;
    QCOMPARE(plugin.description(), u"<Calculator>"_s);
    const QVariantMap hint = plugin.query(QString()).first().toMap();
    QCOMPARE(hint[u"title"_s].toString(), u"<Enter an expression to calculate>"_s);
    QCOMPARE(hint[u"subtitle"_s].toString(), u"<e.g. 1+2, sqrt(16), 2^10>"_s);
    const QVariantMap error = plugin.query(u"1/0"_s).first().toMap();
    QCOMPARE(error[u"title"_s].toString(), u"<Expression Error>"_s);
    QCOMPARE(error[u"subtitle"_s].toString(), u"Division by zero at position 4"_s);
}

VASKEL_TEST(tst_CalcPlugin, QApplication)
#include "tst_CalcPlugin.moc"
