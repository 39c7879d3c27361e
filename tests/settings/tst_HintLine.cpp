// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/HintLine.h"

#include "support/TestProgram.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// Two fields, one beside the other, in a layout inside that of the window.
struct Form
{
    Form()
    {
        auto *outer = new QVBoxLayout(&window);
        auto *row = new QHBoxLayout;
        outer->addLayout(row);
        row->addWidget(left);
        row->addWidget(right);
        window.resize(400, 200);
        window.show();
    }

    QWidget window;
    QLineEdit *left = new QLineEdit(&window);
    QLineEdit *right = new QLineEdit(&window);
};

} // namespace

class tst_HintLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isMadeForTheFirstHint();
    void isUnderItsField();
    void hidesWithoutAText();
    void isTheDescriptionOfTheField();
    void eachFieldHasItsOwn();
    void hasAButtonWhenAsked();
    void hasNoButtonWithoutALine();
    void keepsAFunctionThatReplacesItselfWhileItRuns();
};

void tst_HintLine::isMadeForTheFirstHint()
{
    const Form form;
    HintLine::setHint(form.left, QString());
    QVERIFY(form.window.findChildren<QLabel *>().isEmpty());
    QVERIFY(!HintLine::of(form.left));

    HintLine::setHint(form.left, u"<b>one"_s);
    HintLine *line = HintLine::of(form.left);
    QVERIFY(line);
    QVERIFY(line->isVisible());
    QCOMPARE(line->text(), u"<b>one"_s);
    QCOMPARE(line->textFormat(), Qt::PlainText);
    QCOMPARE(line->objectName(), u"muted"_s);

    HintLine::setHint(form.left, u"two"_s);
    QCOMPARE(HintLine::of(form.left), line);
    QCOMPARE(line->text(), u"two"_s);
    QCOMPARE(form.window.findChildren<QLabel *>().size(), 1);
}

void tst_HintLine::isUnderItsField()
{
    const Form form;
    HintLine::setHint(form.right, u"a hint of many words that takes more than a line"_s);
    QCoreApplication::processEvents();
    const QRect field = form.right->geometry();
    const QRect line = HintLine::of(form.right)->geometry();
    QVERIFY(line.top() > field.bottom());
    QCOMPARE(line.left(), field.left());
    QCOMPARE(line.width(), field.width());
    QVERIFY(form.left->geometry().right() < field.left());
}

void tst_HintLine::hidesWithoutAText()
{
    const Form form;
    HintLine::setHint(form.left, u"hint"_s);
    HintLine::setHint(form.left, QString());
    QVERIFY(HintLine::of(form.left)->isHidden());
    HintLine::setHint(form.left, u"hint"_s);
    QVERIFY(HintLine::of(form.left)->isVisible());
}

void tst_HintLine::isTheDescriptionOfTheField()
{
    const Form form;
    HintLine::setHint(form.left, u"hint"_s);
    QCOMPARE(form.left->accessibleDescription(), u"hint"_s);
    HintLine::setHint(form.left, QString());
    QCOMPARE(form.left->accessibleDescription(), QString());
}

void tst_HintLine::eachFieldHasItsOwn()
{
    const Form form;
    HintLine::setHint(form.left, u"left"_s);
    HintLine::setHint(form.right, u"right"_s);
    QCOMPARE(HintLine::of(form.left)->text(), u"left"_s);
    QCOMPARE(HintLine::of(form.right)->text(), u"right"_s);
}

void tst_HintLine::hasAButtonWhenAsked()
{
    const Form form;
    int first = 0;
    int second = 0;
    HintLine::setHint(form.left, u"hint"_s);
    HintLine::setButton(form.left, u"Press"_s, {});
    QVERIFY(form.window.findChildren<QPushButton *>().isEmpty());

    HintLine::setButton(form.left, u"Press"_s, [&first] { ++first; });
    const auto *button = form.window.findChild<QPushButton *>();
    QVERIFY(button);
    QVERIFY(button->isVisible());
    QCOMPARE(button->text(), u"Press"_s);
    QCoreApplication::processEvents();
    const HintLine *line = HintLine::of(form.left);
    QVERIFY(button->geometry().left() > line->geometry().right());
    QVERIFY(line->geometry().top() > form.left->geometry().bottom());
    QCOMPARE(form.left->nextInFocusChain(), button);
    QTest::mouseClick(form.window.findChild<QPushButton *>(), Qt::LeftButton);
    QCOMPARE(first, 1);

    HintLine::setButton(form.left, u"Again"_s, [&second] { ++second; });
    QCOMPARE(form.window.findChildren<QPushButton *>().size(), 1);
    QCOMPARE(button->text(), u"Again"_s);
    QTest::mouseClick(form.window.findChild<QPushButton *>(), Qt::LeftButton);
    QCOMPARE(first, 1);
    QCOMPARE(second, 1);

    HintLine::setButton(form.left, u"Again"_s, {});
    QVERIFY(button->isHidden());
    QVERIFY(line->isVisible());
}

void tst_HintLine::hasNoButtonWithoutALine()
{
    const Form form;
    HintLine::setButton(form.left, u"Press"_s, [] {});
    QVERIFY(form.window.findChildren<QPushButton *>().isEmpty());
}

void tst_HintLine::keepsAFunctionThatReplacesItselfWhileItRuns()
{
    const Form form;
    HintLine::setHint(form.left, u"hint"_s);
    auto captured = std::make_shared<QString>(u"captured"_s);
    const std::weak_ptr<QString> watched = captured;
    bool isKept = false;
    HintLine::setButton(form.left, u"Change"_s, [&, captured = std::move(captured)] {
        const std::weak_ptr<QString> mine = captured;
        bool &result = isKept;
        HintLine::setButton(form.left, u"Done"_s, [] {});
        result = !mine.expired();
    });
    auto *button = form.window.findChild<QPushButton *>();
    button->click();
    QVERIFY(isKept);
    QVERIFY(watched.expired());
    QCOMPARE(button->text(), u"Done"_s);
}

VASKEL_TEST(tst_HintLine, QApplication)
#include "tst_HintLine.moc"
