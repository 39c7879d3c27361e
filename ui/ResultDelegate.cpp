// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ResultDelegate.h"

#include "core/ResultRecord.h"
#include "launcher/AppLauncher.h"
#include "launcher/AppSearch.h"
#include "settings/ThemeManager.h"
#include "ui/PaintedSize.h"
#include "ui/ResultItem.h"
#include "ui/RowLine.h"
#include "ui/TitleFont.h"
#include "ui/VisibleText.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QBitArray>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int lineSpacing = 2;
constexpr int digitSize = 20; // of the frame around a digit
constexpr int digitMargin = 12;

bool nextRowHasIcon(const QModelIndex &index)
{
    return index.siblingAtRow(index.row() + 1).data(Qt::DecorationRole).isValid();
}

// Whether the row was found by the search text. A web search and an answer of the calculator are
// made from it.
bool isFound(const QVariantMap &record)
{
    return !recordPath(record).isEmpty()
           || actionType(recordAction(record)) == actiontype::openFile;
}

const QStyle &styleOf(const QStyleOptionViewItem &item)
{
    return item.widget ? *item.widget->style() : *QApplication::style();
}

bool isSelected(const QStyleOptionViewItem &item)
{
    return item.state.testFlag(QStyle::State_Selected);
}

QColor titleColor(const QStyleOptionViewItem &item)
{
    return isSelected(item) ? QColor(Qt::white) // as in the sheet
                            : item.palette.color(QPalette::Text);
}

QColor withOpacity(QColor color, float opacity)
{
    color.setAlphaF(opacity);
    return color;
}

// On a hovered row the secondary colour would be too close to the background.
QColor subtitleColor(const QStyleOptionViewItem &item)
{
    if (isSelected(item)) {
        return Qt::white; // on the accent colour nothing weaker is readable
    }
    const QColor text = item.palette.color(QPalette::Text);
    return item.state.testFlag(QStyle::State_MouseOver) ? withOpacity(text, 0.7F)
                                                        : secondaryTextColor(text);
}

QColor weakColor(const QStyleOptionViewItem &item)
{
    const QColor subtitle = subtitleColor(item);
    // As weak as a contrast of 4.5:1 allows, the least that WCAG 2 accepts for text.
    return isSelected(item) ? subtitle : withOpacity(subtitle, 0.93F * subtitle.alphaF());
}

// The ratio of the sheet's font sizes: 12 pixels for small text, 14 for text.
QFont subtitleFont(QFont font)
{
    if (font.pixelSize() > 0) {
        font.setPixelSize(qRound(font.pixelSize() * 6 / 7.0));
    } else {
        font.setPointSizeF(font.pointSizeF() * 6 / 7);
    }
    return font;
}

QBitArray hitsIn(const QString &text, const QStringList &queries,
                 QBitArray (*match)(const QString &, const QString &))
{
    QBitArray characters(text.size());
    for (const QString &query : queries) {
        characters |= match(text, query);
    }
    return characters;
}

void emphasize(RowLine &line, const QBitArray &characters)
{
    QTextCharFormat format;
    format.setFontWeight(QFont::Bold);
    format.setFontUnderline(true); // some fonts have no bold Chinese characters
    line.format(characters, format);
}

void paintIcon(QPainter *painter, const QStyleOptionViewItem &item, const QIcon &icon)
{
    if (icon.isNull()) {
        return;
    }
    const QRect space =
        styleOf(item).subElementRect(QStyle::SE_ItemViewItemDecoration, &item, item.widget);
    const QIcon::Mode mode = !item.state.testFlag(QStyle::State_Enabled) ? QIcon::Disabled
                             : isSelected(item)                          ? QIcon::Selected
                                                                         : QIcon::Normal;
    const QPixmap pixmap =
        icon.pixmap(paintedSize(icon, space.size()), painter->device()->devicePixelRatioF(), mode);
    styleOf(item).drawItemPixmap(painter, space, Qt::AlignCenter, pixmap);
}

// A title without a subtitle is in the middle.
void paintLines(QPainter *painter, const QStyleOptionViewItem &item, QRect rect,
                const RowLines &lines)
{
    const auto &[title, subtitle] = lines;
    const int titleHeight = QFontMetrics(title.font).height();
    const int advance = titleHeight + lineSpacing;
    const int height =
        subtitle.text.isEmpty() ? titleHeight : advance + QFontMetrics(subtitle.font).height();
    rect.setTop(rect.top() + (rect.height() - height) / 2);
    painter->setPen(titleColor(item));
    title.paint(painter, rect, item.direction);
    if (!subtitle.text.isEmpty()) {
        painter->setPen(subtitleColor(item));
        subtitle.paint(painter, rect.adjusted(0, advance, 0, 0), item.direction);
    }
}

QRect digitRect(const QStyleOptionViewItem &item)
{
    const QRect space = item.rect.adjusted(digitMargin, 0, -digitMargin, 0);
    return QStyle::alignedRect(item.direction, Qt::AlignRight | Qt::AlignVCenter,
                               QSize(digitSize, digitSize), space);
}

void paintDigit(QPainter *painter, const QStyleOptionViewItem &item, int digit)
{
    const QRect rect = digitRect(item);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setFont(subtitleFont(item.font));
    painter->setPen(subtitleColor(item));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    painter->drawText(rect, Qt::AlignCenter, QString::number(digit));
}

} // namespace

ResultDelegate::ResultDelegate(QObject *parent)
    : ItemFocusDelegate(parent)
    , m_startMenu(AppLauncher::startMenuText())
{
}

QSize ResultDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    // Measure Latin letters only. Chinese ones may be taller, but the padding of the style sheet
    // suffices for them, and measuring one would load its font at every start.
    item.text = u"Åg\u2028Åg"_s;
    item.features |= QStyleOptionViewItem::HasDisplay | QStyleOptionViewItem::HasDecoration;
    const QSize size =
        styleOf(item).sizeFromContents(QStyle::CT_ItemViewItem, &item, QSize(), item.widget);
    return {0, size.height()};
}

void ResultDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    // The base class shrinks this size to that of the icon, so the texts would not line up.
    const QSize decorationSize = option->decorationSize;
    QStyledItemDelegate::initStyleOption(option, index);
    option->decorationSize = decorationSize;
    if (!recordPath(recordOf(index)).isEmpty() || nextRowHasIcon(index)) {
        option->features |= QStyleOptionViewItem::HasDecoration;
    }
}

void ResultDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                           const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    // Let the style paint only the background; icon and texts follow.
    const QIcon icon = std::exchange(item.icon, QIcon());
    item.text.clear();
    styleOf(item).drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);

    painter->save();
    paintIcon(painter, item, icon);
    paintLines(painter, item, textRect(item, index), linesOf(item, recordOf(index)));
    if (const int digit = digitOf(index); digit > 0) {
        paintDigit(painter, item, digit);
    }
    painter->restore();
    paintOutline(painter, option);
}

bool ResultDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view,
                               const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (event->type() == QEvent::ToolTip && index.isValid()
        && !index.data(Qt::ToolTipRole).isValid()) {
        QStyleOptionViewItem item = option;
        initStyleOption(&item, index);
        const auto [title, subtitle] = linesOf(item, recordOf(index));
        const int width = textRect(item, index).width();
        if (title.isElided(width) || subtitle.isElided(width)) {
            showToolTip(*event, view, {title.text, subtitle.text});
            return true;
        }
    }
    return ItemFocusDelegate::helpEvent(event, view, option, index);
}

int ResultDelegate::digitOf(const QModelIndex &index) const
{
    const int digit = index.row() - m_firstDigitRow + 1;
    return m_firstDigitRow >= 0 && digit >= 1 && digit <= digitCount ? digit : 0;
}

RowLines ResultDelegate::linesOf(const QStyleOptionViewItem &item, const QVariantMap &record) const
{
    RowLine title{visibleText(recordTitle(record)), titleFont(item.font), {}};
    // Arguments are not trimmed, so the subtitle of an answer may begin with a blank.
    RowLine subtitle{visibleText(recordSubtitle(record).trimmed()), subtitleFont(item.font), {}};
    const bool isProgram = !recordPath(record).isEmpty();
    if (isProgram && subtitle.text.startsWith(m_startMenu)) {
        QTextCharFormat weak;
        weak.setForeground(weakColor(item));
        subtitle.formats.append({0, static_cast<int>(m_startMenu.size()), weak});
    }
    if (!m_searchTexts.isEmpty() && isFound(record)) {
        const QBitArray hits = hitsIn(title.text, m_searchTexts, matchInName);
        if (hits.count(true) > 0) {
            emphasize(title, hits);
        } else if (isProgram) {
            emphasize(subtitle, hitsIn(subtitle.text, m_searchTexts, matchInText));
        }
    }
    return {title, subtitle};
}

// The style's text rectangle has a margin on both sides.
QRect ResultDelegate::textRect(const QStyleOptionViewItem &item, const QModelIndex &index) const
{
    QStyleOptionViewItem whole = item;
    whole.text.clear();
    whole.showDecorationSelected = true; // all the space, not that of the text
    const QStyle &style = styleOf(item);
    const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, &item, item.widget) + 1;
    QRect rect = style.subElementRect(QStyle::SE_ItemViewItemText, &whole, item.widget)
                     .adjusted(margin, 0, -margin, 0);
    if (digitOf(index) > 0) {
        const QRect digit = digitRect(item);
        if (item.direction == Qt::LeftToRight) {
            rect.setRight(digit.left() - digitMargin);
        } else {
            rect.setLeft(digit.right() + digitMargin);
        }
    }
    return rect;
}
