// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/HintLine.h"

#include <QBoxLayout>
#include <QPushButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// The box layout that holds the widget itself; a layout may be inside another one.
QBoxLayout *layoutOf(QLayout *layout, QWidget *widget)
{
    if (!layout || layout->indexOf(widget) >= 0) {
        return qobject_cast<QBoxLayout *>(layout);
    }
    for (int index = 0; index < layout->count(); ++index) {
        QLayout *inner = layout->itemAt(index)->layout();
        if (QBoxLayout *found = inner ? layoutOf(inner, widget) : nullptr) {
            return found;
        }
    }
    return nullptr;
}

} // namespace

HintLine::HintLine(QWidget *field)
    : QLabel(field->parentWidget())
    , m_field(field)
{
    setObjectName(u"muted"_s);
    setTextFormat(Qt::PlainText);
    setWordWrap(true); // a field may be narrow
    setIndent(0);      // aligns it with the field
    placeUnder();
}

void HintLine::setHint(QWidget *field, const QString &text)
{
    HintLine *line = of(field);
    if (!line) {
        if (text.isEmpty()) {
            return;
        }
        line = new HintLine(field);
    }
    line->setText(text);
    line->setVisible(!text.isEmpty());
    field->setAccessibleDescription(text);
}

void HintLine::setButton(QWidget *field, const QString &text, const std::function<void()> &pressed)
{
    HintLine *line = of(field);
    if (!line || (!line->m_button && !pressed)) {
        return;
    }
    if (!line->m_button) {
        line->addButton();
    }
    line->m_pressed = pressed;
    line->m_button->setText(text);
    line->m_button->setVisible(pressed != nullptr);
}

HintLine *HintLine::of(const QWidget *field)
{
    const QList<HintLine *> lines =
        field->parentWidget()->findChildren<HintLine *>(Qt::FindDirectChildrenOnly);
    const auto line =
        std::find_if(lines.cbegin(), lines.cend(),
                     [field](const HintLine *candidate) { return candidate->m_field == field; });
    return line == lines.cend() ? nullptr : *line;
}

// A column with the field and the line takes the place of the field, whatever the direction of the
// layout.
void HintLine::placeUnder()
{
    QBoxLayout *layout = layoutOf(m_field->parentWidget()->layout(), m_field);
    const int index = layout->indexOf(m_field);
    layout->removeWidget(m_field);
    auto *column = new QVBoxLayout;
    column->setSpacing(4);
    column->addWidget(m_field);
    column->addWidget(this);
    layout->insertLayout(index, column);
}

// A row with the line and the button takes the place of the line.
void HintLine::addButton()
{
    m_button = new QPushButton(parentWidget());
    connect(m_button, &QPushButton::clicked, this, [this] {
        const auto pressed = m_pressed; // the function may replace itself
        pressed();
    });
    QWidget::setTabOrder(m_field, m_button);
    QBoxLayout *column = layoutOf(parentWidget()->layout(), this);
    column->removeWidget(this);
    auto *row = new QHBoxLayout;
    row->addWidget(this, 1);
    row->addWidget(m_button);
    column->addLayout(row);
}
