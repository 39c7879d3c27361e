// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/VisibleText.h"

#include "support/TestProgram.h"

#include <QCoreApplication>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_VisibleText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void marks_data();
    void marks();
};

void tst_VisibleText::marks_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("visible");
    const auto row = [](const char *tag, const QString &text, const QString &visible) {
        QTest::newRow(tag) << text << visible;
    };
    const auto same = [&row](const char *tag, const QString &text) {
        row(tag, text, text);
    };
    same("empty", {});
    same("letters, blanks and punctuation", u" A file (1)_2.txt "_s);
    same("Chinese", u"记事本"_s);
    same("Arabic with a joiner", u"\u0645\u06cc\u200c\u062e"_s);
    same("emoji joined to a family", u"\U0001f468\u200d\U0001f469"_s);
    same("no-break space", u"a\u00a0b"_s);

    row("right-to-left override", u"invoice\u202efdp.exe"_s, u"invoice⟨U+202E⟩fdp.exe"_s);
    row("first and last of the embeddings", u"\u202aa\u202e"_s, u"⟨U+202A⟩a⟨U+202E⟩"_s);
    row("first and last of the isolates", u"\u2066a\u2069"_s, u"⟨U+2066⟩a⟨U+2069⟩"_s);
    row("line feed", u"a\nb"_s, u"a⏎b"_s);
    row("carriage return and line feed", u"a\r\nb"_s, u"a⏎b"_s);
    row("carriage return at the end", u"a\r"_s, u"a⏎"_s);
    row("two line feeds", u"a\n\nb"_s, u"a⏎⏎b"_s);
    row("line and paragraph separator", u"a\u2028b\u2029c"_s, u"a⏎b⏎c"_s);
    row("tab", u"a\tb"_s, u"a⟨U+0009⟩b"_s);
    row("null", QString(QChar(u'\0')), u"⟨U+0000⟩"_s);
    row("escape and delete", u"\u001b[0m\u007f"_s, u"⟨U+001B⟩[0m⟨U+007F⟩"_s);
    row("control character of Latin-1", u"\u0085"_s, u"⟨U+0085⟩"_s);
}

void tst_VisibleText::marks()
{
    QFETCH(QString, text);
    QTEST(visibleText(text), "visible");
}

VASKEL_TEST(tst_VisibleText, QCoreApplication)
#include "tst_VisibleText.moc"
