// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonParseError>
#include <QString>

namespace jsonreason {

/// What Qt calls a byte that begins no value: "illegal value", but in Qt 6.11 "illegal number".
inline QString noValue()
{
    QJsonParseError error;
    QJsonDocument::fromJson(QByteArrayLiteral("x"), &error);
    return error.errorString();
}

} // namespace jsonreason
