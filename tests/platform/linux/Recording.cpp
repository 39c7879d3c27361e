// SPDX-License-Identifier: GPL-3.0-or-later
#include "Recording.h"

#include "support/TestHome.h"

#include <QFile>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace {

QString recordFile()
{
    return testhome::path() + "/record.json"_L1;
}

} // namespace

namespace recording {

QString program()
{
    return QStringLiteral(RECORDER);
}

void prepare()
{
    QFile::remove(recordFile());
    qputenv("RECORD", QFile::encodeName(recordFile()));
}

QJsonObject record()
{
    QFile file(recordFile());
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object()
                                          : QJsonObject();
}

} // namespace recording
