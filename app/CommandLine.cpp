// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CommandLine.h"

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

struct QtOption
{
    QLatin1StringView name; ///< Qt accepts a second dash
    bool takesValue;
};

// Those of QApplication, QGuiApplication and the platform "xcb".
constexpr QtOption qtOptions[] = {
    {"-display"_L1, true},       {"-dograb"_L1, false},
    {"-geometry"_L1, true},      {"-icon"_L1, true},
    {"-name"_L1, true},          {"-nograb"_L1, false},
    {"-platform"_L1, true},      {"-platformpluginpath"_L1, true},
    {"-platformtheme"_L1, true}, {"-plugin"_L1, true},
    {"-qmljsdebugger"_L1, true}, {"-qwindowgeometry"_L1, true},
    {"-qwindowicon"_L1, true},   {"-qwindowtitle"_L1, true},
    {"-reverse"_L1, false},      {"-session"_L1, true},
    {"-style"_L1, true},         {"-stylesheet"_L1, true},
    {"-testability"_L1, false},  {"-title"_L1, true},
    {"-visual"_L1, true},        {"-widgetcount"_L1, false},
};

} // namespace

CommandLine CommandLine::parse(int argc, const char *const argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    return parse(arguments);
}

CommandLine CommandLine::parse(const QStringList &arguments)
{
    CommandLine result;
    result.wantsCheck = arguments.value(1) == "--check-command"_L1;
    if (result.wantsCheck) {
        return result;
    }
    for (int i = 1; i < arguments.size() && result.error == Error::None; ++i) {
        if (!skipQtOption(arguments, i)) {
            result.parseOwnOption(arguments, i);
        }
    }
    return result;
}

// Moves the index to the value of the option, which may also follow "=".
bool CommandLine::skipQtOption(const QStringList &arguments, int &index)
{
    QStringView name = arguments.at(index);
    if (name.startsWith("--"_L1)) {
        name = name.sliced(1);
    }
    const qsizetype equals = name.indexOf(u'=');
    const QStringView withoutValue = equals == -1 ? name : name.first(equals);
    const auto *option =
        std::find_if(std::begin(qtOptions), std::end(qtOptions),
                     [&](const QtOption &one) { return one.name == withoutValue; });
    if (option == std::end(qtOptions) || (equals != -1 && !option->takesValue)) {
        return false;
    }
    if (option->takesValue && equals == -1) {
        ++index;
    }
    return true;
}

void CommandLine::parseOwnOption(const QStringList &arguments, int &index)
{
    const QString &argument = arguments.at(index);
    ownArguments.append(index);
    if (argument == "--help"_L1) {
        wantsHelp = true;
    } else if (argument == "--version"_L1) {
        wantsVersion = true;
    } else if (!argument.startsWith(u'-')) {
        fail(Error::UnexpectedArgument, argument);
    } else {
        parseRequest(arguments, index);
    }
}

void CommandLine::parseRequest(const QStringList &arguments, int &index)
{
    const QString &argument = arguments.at(index);
    const std::optional<InstanceRequest::Verb> verb =
        argument.startsWith("--"_L1) ? InstanceRequest::verbOf(QStringView(argument).sliced(2))
                                     : std::nullopt;
    const bool isQuery = verb == InstanceRequest::Verb::Query;
    if (!verb) {
        fail(Error::UnknownOption, argument);
    } else if (request) {
        fail(Error::TwoRequests, argument);
    } else if (isQuery && index + 1 == arguments.size()) {
        fail(Error::MissingText, argument);
    } else if (isQuery) {
        ownArguments.append(++index);
        request = {*verb, arguments.at(index)};
    } else {
        request = {*verb, {}};
    }
    if (request && request->toMessage().size() > InstanceRequest::maximumSize) {
        fail(Error::TooLong, argument);
    }
}

void CommandLine::fail(Error reason, const QString &argument)
{
    error = reason;
    culprit = argument;
}
