// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/CommandLineEdit.h"

#include "fuzz/Fuzz.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include <iterator>

using namespace Qt::StringLiterals;

// Each byte of the input is a key for the command box, or a text that is set. The expected state
// comes from a table of the box's two states, applied to a line edit of its own.

namespace {

using fuzz::check;

const QSet<QString> commands = {u"app"_s, u"calc"_s, u"cd"_s, u"todo"_s};

struct Key
{
    Qt::Key key;
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    QString text = {};
};

const Key keys[] = {
    {Qt::Key_A, {}, u"a"_s},
    {Qt::Key_C, {}, u"c"_s},
    {Qt::Key_D, {}, u"d"_s},
    {Qt::Key_L, {}, u"l"_s},
    {Qt::Key_P, {}, u"p"_s},
    {Qt::Key_O, {}, u"o"_s},
    {Qt::Key_T, {}, u"t"_s},
    {Qt::Key_C, Qt::ShiftModifier, u"C"_s},
    {Qt::Key_Space, {}, u" "_s},
    {Qt::Key_Eacute, {}, u"\u00e9"_s},
    {Qt::Key_unknown, {}, u"\U0001f600"_s},
    {Qt::Key_Backspace},
    {Qt::Key_Backspace, Qt::ControlModifier},
    {Qt::Key_Delete},
    {Qt::Key_Delete, Qt::ControlModifier},
    {Qt::Key_Left},
    {Qt::Key_Right},
    {Qt::Key_Home},
    {Qt::Key_End},
    {Qt::Key_Left, Qt::ShiftModifier},
    {Qt::Key_Right, Qt::ShiftModifier},
    {Qt::Key_Home, Qt::ShiftModifier},
    {Qt::Key_Left, Qt::ControlModifier},
    {Qt::Key_A, Qt::ControlModifier},
    {Qt::Key_X, Qt::ControlModifier},
    {Qt::Key_V, Qt::ControlModifier},
    {Qt::Key_Z, Qt::ControlModifier},
    {Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier},
};

const QString texts[] = {
    QString(), u"cd"_s,  u"cd "_s,    u"calc 1+2"_s,  u"CALC 1"_s,
    u" cd"_s,  u"cdx"_s, u"app  x"_s, u"todo a b "_s, u"calc\u00a01"_s,
};

void press(QLineEdit &edit, const Key &key)
{
    QKeyEvent event(QEvent::KeyPress, key.key, key.modifiers, key.text);
    QCoreApplication::sendEvent(&edit, &event);
}

class Model
{
public:
    Model()
    {
        QObject::connect(&edit, &QLineEdit::textChanged, &edit, [this] { isChanged = true; });
    }

    void press(const Key &key)
    {
        if (key.key == Qt::Key_Backspace && !command.isEmpty() && edit.cursorPosition() == 0
            && !edit.hasSelectedText()) {
            const bool joins = key.modifiers & Qt::ControlModifier;
            const QString left = joins ? command + edit.text() : command;
            command.clear();
            edit.setText(left);
            return;
        }
        isChanged = false;
        ::press(edit, key);
        // A letter typed over the same selected letter is a change, too.
        if (command.isEmpty() && isChanged) {
            detect(edit.text(), false);
        }
    }

    void setText(const QString &text)
    {
        command.clear();
        detect(text, true);
    }

    QString text() const { return command.isEmpty() ? edit.text() : command + u' ' + edit.text(); }

    QLineEdit edit;
    QString command;

private:
    bool isChanged = false;

    void detect(const QString &text, bool replaces)
    {
        const qsizetype blank = text.indexOf(u' ');
        const QString word = text.left(blank);
        if (commands.contains(word)) {
            command = word;
            edit.setText(blank < 0 ? QString() : text.mid(blank + 1));
        } else if (replaces) {
            edit.setText(text);
        }
    }
};

void compare(const CommandLineEdit &box, const Model &model)
{
    const auto *badge = box.findChild<QLabel *>(u"commandBadge"_s);
    const QLineEdit &edit = *box.lineEdit();
    check(box.text() == model.text(), "another text");
    check(badge->isHidden() == model.command.isEmpty(), "a badge in the wrong state");
    check(badge->isHidden() || badge->text() == model.command, "another command in the badge");
    check(edit.text() == model.edit.text(), "another text in the edit");
    check(edit.cursorPosition() == model.edit.cursorPosition(), "the cursor at another place");
    check(edit.selectedText() == model.edit.selectedText(), "another selection");
    check(box.commandText().joined() == model.text(), "parts of another text");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    fuzz::startApplication(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static CommandLineEdit &box = *new CommandLineEdit;
    static Model &model = *new Model;
    box.setCommands(commands);
    box.setText({});
    model.setText({});
    for (std::size_t index = 0; index < size; ++index) {
        const std::size_t choice = data[index] % (std::size(keys) + std::size(texts));
        if (choice < std::size(keys)) {
            press(*box.lineEdit(), keys[choice]);
            model.press(keys[choice]);
        } else {
            box.setText(texts[choice - std::size(keys)]);
            model.setText(texts[choice - std::size(keys)]);
        }
        compare(box, model);
    }
    return 0;
}
