// SPDX-License-Identifier: GPL-3.0-or-later
//
// The cost of painting a row of the result list with its match, compared with the delegate of Qt,
// which paints the same texts and icon in one font and colour.
#include "core/ResultRecord.h"
#include "settings/ThemeManager.h"
#include "ui/ApplicationStyle.h"
#include "ui/ResultDelegate.h"
#include "ui/ResultItem.h"
#include "widgets/ItemFocusDelegate.h"

#include <QApplication>
#include <QImage>
#include <QListWidget>
#include <QPainter>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int rowCount = 8;
constexpr QSize rowSize(710, 62);

class List : public QListWidget
{
public:
    List(const QString &icon)
    {
        setObjectName(u"resultList"_s);
        setIconSize(QSize(40, 40));
        for (int row = 0; row < rowCount; ++row) {
            addItem(
                new ResultItem(makeProgramRecord(u"Image Viewer and Editor %1"_s.arg(row),
                                                 u"/viewer"_s, icon, u"Start Menu / Graphics"_s)));
        }
        ensurePolished();
    }

    QStyleOptionViewItem option(int row) const
    {
        QStyleOptionViewItem option;
        initViewItemOption(&option);
        option.rect = QRect(QPoint(), rowSize);
        option.state.setFlag(QStyle::State_Selected, row == 0);
        return option;
    }
};

/// The result list's delegate without its own painting: the same space for the icon, and both lines
/// in one font.
class PlainDelegate : public ItemFocusDelegate
{
public:
    using ItemFocusDelegate::ItemFocusDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        const QSize decorationSize = option->decorationSize;
        QStyledItemDelegate::initStyleOption(option, index);
        option->decorationSize = decorationSize;
        const bool isProgram = !recordPath(recordOf(index)).isEmpty();
        const QModelIndex next = index.siblingAtRow(index.row() + 1);
        if (isProgram || next.data(Qt::DecorationRole).isValid()) {
            option->features |= QStyleOptionViewItem::HasDecoration;
        }
    }
};

void paintRows(benchmark::State &state, const List &list, const QAbstractItemDelegate &delegate)
{
    QImage image(rowSize, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    while (state.KeepRunning()) {
        for (int row = 0; row < rowCount; ++row) {
            delegate.paint(&painter, list.option(row), list.model()->index(row, 0));
        }
    }
}

} // namespace

int main(int argc, char *argv[])
{
    benchmark::Initialize(&argc, argv);
    QApplication app(argc, argv);
    QApplication::setStyle(new ApplicationStyle);
    app.setStyleSheet(ThemeManager().styleSheet());

    const QTemporaryDir folder;
    const QString icon = folder.filePath(u"icon.png"_s);
    QImage image(32, 32, QImage::Format_ARGB32);
    image.fill(Qt::darkCyan);
    image.save(icon);
    const List list(icon);

    ResultDelegate delegate;
    delegate.setSearchTexts({u"viewer"_s});
    benchmark::RegisterBenchmark("ResultDelegate.paint/measured", [&](benchmark::State &state) {
        paintRows(state, list, delegate);
    })->Unit(benchmark::kMicrosecond);
    const PlainDelegate plain;
    benchmark::RegisterBenchmark("ResultDelegate.paint/floor", [&](benchmark::State &state) {
        paintRows(state, list, plain);
    })->Unit(benchmark::kMicrosecond);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
