// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/HotkeyHints.h"

#include "settings/HintLine.h"
#include "support/TestProgram.h"
#include "widgets/HotkeyEdit.h"

#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using Holder = HotkeyOrigin::Holder;

namespace {

/// The fields of the window's hotkey and of a command's, with a stored hotkey each.
struct Form
{
    Form()
    {
        auto *layout = new QVBoxLayout(&page);
        layout->addWidget(main);
        layout->addWidget(calc);
        main->setKeySequence(QKeySequence(u"Ctrl+F9"_s));
        calc->setKeySequence(QKeySequence(u"Ctrl+F8"_s));
        hints.add(main, {});
        hints.add(calc, u"calc"_s);
        hints.setOrigins(
            [this](const QString &command) { return command.isEmpty() ? origin : HotkeyOrigin(); });
    }

    static QString hintOf(const HotkeyEdit *edit)
    {
        const HintLine *line = HintLine::of(edit);
        return line && !line->isHidden() ? line->text() : QString();
    }

    bool hasButton() const
    {
        const auto *button = page.findChild<QPushButton *>();
        return button && !button->isHidden();
    }

    QWidget page;
    HotkeyEdit *main = new HotkeyEdit(&page);
    HotkeyEdit *calc = new HotkeyEdit(&page);
    HotkeyOrigin origin;
    HotkeyHints hints;
};

const QString ofDesktop = u"The desktop holds this hotkey: Meta+Leertaste"_s;

} // namespace

class tst_HotkeyHints : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsTheOrigin_data();
    void tellsTheOrigin();
    void tellsNoOriginOfAnEmptyField();
    void tellsTheOriginOfTheStoredHotkeyAlone();
    void otherProgramComesFirst();
    void originOfABareKey_data();
    void originOfABareKey();
    void asksForTheOriginAgain();
    void opensTheDialogOfTheDesktop();
};

void tst_HotkeyHints::tellsTheOrigin_data()
{
    QTest::addColumn<HotkeyOrigin>("origin");
    QTest::addColumn<QString>("text");

    QTest::newRow("untold") << HotkeyOrigin() << QString();
    QTest::newRow("this program") << HotkeyOrigin{Holder::Program, {}, {}}
                                  << u"Vaskel holds this hotkey."_s;
    QTest::newRow("the desktop") << HotkeyOrigin{Holder::Desktop, {}, {}}
                                 << u"The desktop holds this hotkey."_s;
    QTest::newRow("the desktop, with its keys")
        << HotkeyOrigin{Holder::Desktop, u"Meta+Leertaste"_s, {}} << ofDesktop;
    QTest::newRow("nobody") << HotkeyOrigin{Holder::Nobody, {}, {}}
                            << u"For a hotkey that works in all windows, bind \"Vaskel --toggle\" "
                               "in your desktop's settings."_s;
}

void tst_HotkeyHints::tellsTheOrigin()
{
    QFETCH(const HotkeyOrigin, origin);
    Form form;
    form.origin = origin;
    form.hints.takeStored();
    QTEST(Form::hintOf(form.main), "text");
    QCOMPARE(Form::hintOf(form.calc), QString());
    QVERIFY(!form.hasButton());
}

void tst_HotkeyHints::tellsNoOriginOfAnEmptyField()
{
    Form form;
    form.origin = {Holder::Nobody, {}, {}};
    form.main->clear();
    form.hints.takeStored();
    QVERIFY(!HintLine::of(form.main));
}

void tst_HotkeyHints::tellsTheOriginOfTheStoredHotkeyAlone()
{
    Form form;
    form.origin = {Holder::Desktop, u"Meta+Leertaste"_s, [] {
                   }};
    form.hints.takeStored();
    QVERIFY(form.hasButton());
    form.main->setKeySequence(QKeySequence(u"Ctrl+F7"_s));
    QCOMPARE(Form::hintOf(form.main), QString());
    QVERIFY(!form.hasButton());

    // The hints are refreshed while the field differs from the stored hotkey.
    form.hints.refresh();
    QCOMPARE(Form::hintOf(form.main), QString());
    form.main->setKeySequence(QKeySequence(u"Ctrl+F9"_s));
    QCOMPARE(Form::hintOf(form.main), ofDesktop);
    QVERIFY(form.hasButton());
}

void tst_HotkeyHints::otherProgramComesFirst()
{
    Form form;
    form.origin = {Holder::Nobody, {}, {}};
    form.hints.setCheck([](const QString &command) { return command.isEmpty(); });
    form.hints.takeStored();
    QCOMPARE(Form::hintOf(form.main), u"This hotkey is held by another program."_s);
}

void tst_HotkeyHints::originOfABareKey_data()
{
    QTest::addColumn<Holder>("holder");
    QTest::addColumn<QString>("text");

    const QString taken = u"This key is taken from all programs."_s;
    QTest::newRow("this program") << Holder::Program << taken;
    QTest::newRow("nobody") << Holder::Nobody << taken;
    QTest::newRow("the desktop") << Holder::Desktop << ofDesktop;
}

void tst_HotkeyHints::originOfABareKey()
{
    QFETCH(const Holder, holder);
    Form form;
    form.origin = {holder, u"Meta+Leertaste"_s, {}};
    form.main->setKeySequence(QKeySequence(u"F9"_s));
    form.hints.takeStored();
    QTEST(Form::hintOf(form.main), "text");
}

void tst_HotkeyHints::asksForTheOriginAgain()
{
    Form form;
    form.origin = {Holder::Nobody, {}, {}};
    form.hints.takeStored();
    form.origin = {Holder::Desktop, u"Meta+Leertaste"_s, {}};
    form.hints.refresh();
    QCOMPARE(Form::hintOf(form.main), ofDesktop);
}

void tst_HotkeyHints::opensTheDialogOfTheDesktop()
{
    Form form;
    int dialogs = 0;
    form.origin = {Holder::Desktop, u"Meta+Leertaste"_s, [&dialogs] {
                       ++dialogs;
                   }};
    form.hints.takeStored();
    QVERIFY(form.hasButton());
    auto *button = form.page.findChild<QPushButton *>();
    QCOMPARE(button->text(), u"Change…"_s);
    button->click();
    QCOMPARE(dialogs, 1);
    form.origin = {Holder::Nobody, {}, {}};
    form.hints.refresh();
    QVERIFY(!form.hasButton());
}

VASKEL_TEST(tst_HotkeyHints, QApplication)
#include "tst_HotkeyHints.moc"
