// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/results/OverwriteFileDialog.h"

#include "ConvertImage/results/ExistingFileModel.h"
#include "core/CountText.h"
#include "widgets/Controls.h"
#include "widgets/FLTableView.h"
#include "widgets/NoticeBar.h"
#include "widgets/Theme.h"
#include "widgets/WrappedLabel.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>

#include <QApplication>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>
#include <array>
#include <utility>

namespace
{

// A thumbnail, and lines beside it that are elided one by one.
class FileCellDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyleOptionViewItem item(option);
        initStyleOption(&item, index);
        const QStringList lines = index.data().toString().split(u'\n');
        item.text.clear();
        const QIcon icon = std::exchange(item.icon, {});
        const QStyle *style = item.widget ? item.widget->style() : QApplication::style();
        style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
        QRect rest = item.rect.adjusted(theme::spaceSnug, 0, -theme::spaceSnug, 0);
        const int side = ExistingFileModel::thumbnailSide;
        icon.paint(painter, {rest.left(), rest.center().y() - side / 2, side, side});
        rest.setLeft(rest.left() + side + theme::spaceSnug);
        const int height = item.fontMetrics.height();
        int top = rest.center().y() - height * static_cast<int>(lines.size()) / 2;
        const bool isSelected = item.state & QStyle::State_Selected;
        painter->save();
        painter->setFont(item.font);
        painter->setPen(item.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
        for (const QString &line : lines) {
            painter->drawText(QRect(rest.left(), top, rest.width(), height), Qt::AlignVCenter,
                              item.fontMetrics.elidedText(line, Qt::ElideRight, rest.width()));
            top += height;
        }
        painter->restore();
    }
};

} // namespace

OverwriteFileDialog::OverwriteFileDialog(const QStringList &outputs, const QStringList &sources,
                                         const QStringList &allSources,
                                         const std::shared_ptr<imaging::DecoderPool> &decoders,
                                         QWidget *parent)
    : QDialog(parent),
      m_model(new ExistingFileModel(outputs, sources, allSources, decoders, this)),
      m_table(new FLTableView(this)),
      m_notice(new NoticeBar(this))
{
    setObjectName(QStringLiteral("overwriteFileDialog"));
    setWindowTitle(tr("Files that exist already"));
    buildTable();
    buildLayout(core::countText(outputs.size(), tr("This file already exists. What should happen to it?"),
                                tr("%1 files already exist. What should happen to them?")));
    resize(760, 480);
    m_table->selectRow(0);
    m_table->setFocus();
}

void OverwriteFileDialog::buildTable()
{
    m_table->setObjectName(QStringLiteral("overwriteTable"));
    m_table->setAccessibleName(tr("Files that exist already"));
    m_table->setModel(m_model);
    for (const int column : {ExistingFileModel::Existing, ExistingFileModel::New})
        m_table->setItemDelegateForColumn(column, new FileCellDelegate(m_table));
    m_table->horizontalHeader()->setSortIndicatorShown(false);
    m_table->horizontalHeader()->setSectionsClickable(false);
    const int rowHeight = std::max(ExistingFileModel::thumbnailSide, 4 * fontMetrics().height());
    m_table->verticalHeader()->setDefaultSectionSize(rowHeight + theme::space);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->horizontalHeader()->setStretchLastSection(false);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_table->horizontalHeader()->setSectionResizeMode(ExistingFileModel::Decision, QHeaderView::Fixed);
    m_table->horizontalHeader()->resizeSection(
        ExistingFileModel::Decision, fontMetrics().horizontalAdvance(tr("Keep both")) + 4 * theme::space);
}

QHBoxLayout *OverwriteFileDialog::makeAnswers()
{
    struct Choice {
        Answer answer;
        const char *name;
        QString text;
        QKeySequence key;
    };
    const std::array<Choice, 3> choices{
        Choice{Answer::Replace, "replaceButton", tr("Replace"), Qt::ALT | Qt::Key_R},
        Choice{Answer::KeepBoth, "keepBothButton", tr("Keep both"), Qt::ALT | Qt::Key_K},
        Choice{Answer::Skip, "skipButton", tr("Skip"), Qt::ALT | Qt::Key_S}};
    auto *row = new QHBoxLayout;
    row->setSpacing(theme::spaceSnug);
    for (const Choice &choice : choices) {
        auto *button = controls::pushButton(this, {.objectName = choice.name,
                                                   .text = choice.text,
                                                   .tip = tr("The answer for the selected rows"),
                                                   .key = choice.key});
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this,
                [this, answer = choice.answer] { answerSelected(answer); });
        row->addWidget(button);
    }
    row->addStretch();
    auto *all = new QComboBox(this);
    all->setObjectName(QStringLiteral("answerAllComboBox"));
    all->setAccessibleName(tr("Answer for all"));
    all->addItems({tr("For all ..."), tr("Replace all"), tr("Keep both of all"), tr("Skip all")});
    connect(all, &QComboBox::activated, this, [this, all](int index) {
        if (index > 0)
            answerAll(static_cast<Answer>(index - 1));
        all->setCurrentIndex(0);
    });
    row->addWidget(all);
    return row;
}

void OverwriteFileDialog::buildLayout(const QString &question)
{
    auto *text = new WrappedLabel(this);
    text->setText(question);
    QHBoxLayout *answers = makeAnswers(); // before the buttons, for the tab order
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("Go on"));
    theme::makePrimary(buttons->button(QDialogButtonBox::Ok));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(theme::spaceWide, theme::spaceWide, theme::spaceWide, theme::spaceWide);
    column->setSpacing(theme::space);
    column->addWidget(text);
    column->addWidget(m_notice);
    column->addWidget(m_table, 1);
    column->addLayout(answers);
    column->addWidget(buttons);
}

const std::vector<OverwriteFileDialog::Answer> &OverwriteFileDialog::answers() const
{
    return m_model->answers();
}

void OverwriteFileDialog::answerSelected(Answer answer)
{
    const QModelIndexList rows = m_table->selectionModel()->selectedRows();
    for (const QModelIndex &row : rows)
        m_model->setAnswer(row.row(), answer);
    m_table->setFocus();
}

void OverwriteFileDialog::answerAll(Answer answer)
{
    for (int row = 0; row < m_model->rowCount(); ++row) {
        if (answer != Answer::Replace || !m_model->isSource(row))
            m_model->setAnswer(row, answer);
    }
    const int left = answer == Answer::Replace ? m_model->sourceCount() : 0;
    m_notice->setVisible(left > 0);
    if (left > 0)
        m_notice->showNotice(
            NoticeBar::Kind::Warning,
            core::countText(left,
                            tr("One of these files is itself a source and was left out. Select it "
                               "to replace it."),
                            tr("%1 of these files are themselves sources and were left out. "
                               "Select them to replace them.")));
}
