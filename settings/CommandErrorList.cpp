// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/CommandErrorList.h"

#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr QChar zeroWidthSpace = u'\x200b';

// A label breaks lines at blanks alone, and a path may be longer than a line and have none.
QString breakable(QString path)
{
    return path.replace(u'/', u'/' + QString(zeroWidthSpace))
        .replace(u'\\', u'\\' + QString(zeroWidthSpace));
}

} // namespace

void CommandErrorList::insertInto(QWidget *page, const QStringList &lines)
{
    auto *layout = qobject_cast<QBoxLayout *>(page->layout());
    const int firstCard = layout->indexOf(page->findChild<QWidget *>(u"pluginCard"_s));
    layout->insertWidget(firstCard, new CommandErrorList(lines, page));
}

CommandErrorList::CommandErrorList(const QStringList &lines, QWidget *parent)
    : QWidget(parent)
{
    auto *title = new QLabel(tr("Commands that could not be loaded"), this);
    title->setObjectName(u"section"_s);
    title->setIndent(0); // like the other titles
    const QString text = lines.join(u'\n');
    auto *list = new QLabel(breakable(text), this);
    list->setObjectName(u"muted"_s);
    list->setTextFormat(Qt::PlainText);
    list->setIndent(0);
    list->setWordWrap(true);
    list->setAccessibleName(text);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(10);
    layout->addWidget(title);
    layout->addWidget(list);
}
