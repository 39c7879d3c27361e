// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/AccessibleName.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QScrollBar>

void setAccessibleNames(QAbstractScrollArea *area, const QString &name)
{
    area->setAccessibleName(name);
    area->verticalScrollBar()->setAccessibleName(name);
}

void setAccessibleNames(QComboBox *combo, const QString &name)
{
    combo->setAccessibleName(name);
    setAccessibleNames(combo->view(), name);
}
