// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/ScriptAnswer.h"

#include "core/ResultRecord.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringDecoder>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

// The documented form of a line: its text, and after a NUL pairs of key and value, all separated by
// this character.
constexpr QChar optionSeparator = u'\x1f';

// Programs also print numbers where a text is expected.
QString textOf(const QJsonValue &value)
{
    return value.isDouble() ? value.toVariant().toString() : value.toString();
}

// Several arguments are separated by line feeds.
QString argumentOf(const QJsonValue &value)
{
    if (!value.isArray()) {
        return textOf(value);
    }
    QStringList arguments;
    const QJsonArray array = value.toArray();
    for (const auto &argument : array) {
        arguments.append(textOf(argument));
    }
    return arguments.join(u'\n');
}

// The path of the picture as the item has it; empty for the icon of the command.
QString iconPathOf(const QJsonObject &item)
{
    const QJsonValue value = item.value("icon"_L1);
    const QJsonObject icon = value.toObject();
    const QString path = value.isString() ? value.toString() : icon.value("path"_L1).toString();
    // With a type, the path is no picture: it names a file or a file type whose icon is meant.
    return icon.contains("type"_L1) ? QString() : path;
}

QVariantMap openAction(const QString &argument, const CommandFile &file)
{
    const QUrl url(argument);
    if (url.isLocalFile()) {
        return makeAction(actiontype::openFile, url.toLocalFile(), file.command);
    }
    // A scheme of one letter is the drive of a Windows path.
    if (url.scheme().size() > 1 && !QDir::isAbsolutePath(argument)) {
        return makeAction(actiontype::openUrl, argument, file.command);
    }
    return makeAction(actiontype::openFile, file.absolutePath(argument), file.command);
}

QVariantMap makeScriptRecord(const QString &title, const QString &subtitle, const QString &icon,
                             const QString &argument, const CommandFile &file)
{
    const bool isRun = file.action == CommandFile::Action::Run;
    if (argument.isEmpty() && !isRun) { // there is nothing to copy or to open
        return makeInertRecord(title, subtitle, icon, file.command);
    }
    if (file.action == CommandFile::Action::Open) {
        return makeRecord(title, subtitle, icon, openAction(argument, file));
    }
    const QString type = isRun ? ScriptAnswer::runType : actiontype::copy;
    return makeRecord(title, subtitle, icon, makeAction(type, argument, file.command));
}

} // namespace

const QString ScriptAnswer::runType = u"run"_s;

ScriptAnswer ScriptAnswer::parse(const QByteArray &output, const CommandFile &file)
{
    ScriptAnswer answer;
    if (!QUtf8StringView(output).isValidUtf8()) {
        answer.error = tr("The answer is not valid UTF-8.");
    } else if (file.output == CommandFile::Output::Lines) {
        QStringDecoder decoder(QStringDecoder::Utf8); // drops the byte-order mark
        answer.readLines(decoder(output), file);
    } else {
        answer.readItems(output, file);
    }
    if (!answer.error.isEmpty()) {
        answer.records.clear();
    }
    return answer;
}

void ScriptAnswer::readItems(const QByteArray &output, const CommandFile &file)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(output, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        error = tr("The answer is not valid JSON: %1 at byte %2.")
                    .arg(parseError.errorString())
                    .arg(parseError.offset);
        return;
    }
    const QJsonValue items = document.object().value("items"_L1);
    if (!items.isArray()) {
        error = tr("The answer is no JSON object with a list \"items\".");
        return;
    }
    const QJsonArray array = items.toArray();
    for (const auto &item : array) {
        if (records.size() == maximumRows || !error.isEmpty()) {
            return;
        }
        readItem(item.toObject(), file);
    }
}

void ScriptAnswer::readItem(const QJsonObject &item, const CommandFile &file)
{
    const QString title = textOf(item.value("title"_L1));
    if (title.isEmpty()) {
        error = tr("Item %1 of the answer has no title.").arg(records.size() + 1);
        return;
    }
    const QString subtitle = textOf(item.value("subtitle"_L1));
    const QString icon = iconFor(iconPathOf(item), file);
    const bool isValid = item.value("valid"_L1).toBool(true);
    QVariantMap record =
        isValid ? makeScriptRecord(title, subtitle, icon, argumentOf(item.value("arg"_L1)), file)
                : makeInertRecord(title, subtitle, icon, file.command);
    const QString completion = textOf(item.value("autocomplete"_L1));
    if (!completion.isEmpty()) {
        setRecordCompletion(record, completion);
    }
    records.append(record);
}

// The rows of a program mostly have the same few pictures, often one after the other.
const QString &ScriptAnswer::iconFor(const QString &path, const CommandFile &file)
{
    if (path.isEmpty()) {
        return file.icon;
    }
    if (path != m_iconPath) {
        m_iconPath = path;
        m_icon = file.absolutePath(path);
    }
    return m_icon;
}

void ScriptAnswer::readLines(const QString &text, const CommandFile &file)
{
    for (QStringView line : QStringView(text).split(u'\n')) {
        if (records.size() == maximumRows) {
            return;
        }
        if (line.endsWith(u'\r')) {
            line.chop(1);
        }
        readLine(line.toString(), file);
    }
}

void ScriptAnswer::readLine(const QString &line, const CommandFile &file)
{
    const qsizetype end = line.indexOf(QChar::Null);
    const QString text = line.left(end);
    if (text.trimmed().isEmpty()) { // or a line that sets options of the whole list
        return;
    }
    QString icon = file.icon;
    QString title = text;
    bool isValid = true;
    const QStringList options = end < 0 ? QStringList() : line.mid(end + 1).split(optionSeparator);
    for (qsizetype i = 0; i + 1 < options.size(); i += 2) {
        // A name of a themed icon has no slash.
        if (options[i] == "icon"_L1 && options[i + 1].contains(u'/')) {
            icon = iconFor(options[i + 1], file);
        } else if (options[i] == "display"_L1) {
            title = options[i + 1];
        } else if (options[i] == "nonselectable"_L1) {
            isValid = options[i + 1] != "true"_L1;
        }
    }
    records.append(isValid ? makeScriptRecord(title, QString(), icon, text, file)
                           : makeInertRecord(title, QString(), icon, file.command));
}
