// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/OverwriteFileDialog.h"

#include "ConvertImage/engine/Naming.h"
#include "core/CancelFlag.h"
#include "core/SizeText.h"
#include "imaging/DecoderPool.h"
#include "widgets/Controls.h"
#include "widgets/Theme.h"
#include "widgets/WrappedLabel.h"

#include <QComboBox>
#include <QDateTime>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QThreadPool>
#include <QVBoxLayout>

#include <algorithm>

namespace
{

constexpr int thumbnailSide = 64;
enum Column { Existing, New, Decision, ColumnCount };

struct Look {
    QImage thumbnail;
    QString facts;
};

// Disk.
Look lookAt(imaging::DecoderPool &decoders, const QString &path, const core::CancelFlag &cancel)
{
    const QFileInfo file(path);
    Look look{{},
              core::sizeText(static_cast<quint64>(file.size())) + u'\n' +
                  file.lastModified().toString(QStringLiteral("yyyy-MM-dd HH:mm"))};
    if (const auto picture = decoders.picture(path, cancel)) {
        const QSize size = picture->image.size();
        look.thumbnail = picture->image.scaled(2 * thumbnailSide, 2 * thumbnailSide, Qt::KeepAspectRatio,
                                               Qt::SmoothTransformation);
        look.facts.prepend(QStringLiteral("%1 x %2\n").arg(size.width()).arg(size.height()));
    }
    return look;
}

QString nameOf(const QString &path)
{
    return path.mid(path.lastIndexOf(u'\\') + 1);
}

} // namespace

struct OverwriteFileDialog::Looks {
    core::CancelFlag cancel;
    QThreadPool threads;
};

OverwriteFileDialog::OverwriteFileDialog(const QStringList &outputs, const QStringList &sources,
                                         const QStringList &allSources,
                                         std::shared_ptr<imaging::DecoderPool> decoders, QWidget *parent)
    : QDialog(parent),
      m_table(new QTableWidget(static_cast<int>(outputs.size()), ColumnCount, this)),
      m_all(new QComboBox(this)),
      m_decoders(std::move(decoders)),
      m_looks(std::make_unique<Looks>())
{
    setObjectName(QStringLiteral("overwriteFileDialog"));
    setWindowTitle(tr("Files that exist already"));
    m_looks->threads.setMaxThreadCount(1);
    buildLayout(outputs);
    for (int row = 0; row < outputs.size(); ++row) {
        const bool isSource = std::ranges::any_of(
            allSources, [&](const QString &source) { return conversion::isSameFile(source, outputs[row]); });
        addRow(row, outputs[row], sources[row], isSource);
    }
    resize(760, 480);
}

OverwriteFileDialog::~OverwriteFileDialog()
{
    m_looks->cancel.set();
    m_looks->threads.clear();
    m_looks->threads.waitForDone();
}

void OverwriteFileDialog::buildLayout(const QStringList &outputs)
{
    auto *text = new WrappedLabel(this);
    text->setText(outputs.size() == 1
                      ? tr("This file exists already. What is to become of it?")
                      : tr("%1 files exist already. What is to become of them?").arg(outputs.size()));
    m_table->setObjectName(QStringLiteral("overwriteTable"));
    m_table->setHorizontalHeaderLabels({tr("There now"), tr("To be converted"), tr("Answer")});
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(thumbnailSide + 2 * theme::spaceSnug);
    m_table->setIconSize({thumbnailSide, thumbnailSide});
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionMode(QAbstractItemView::NoSelection);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_table->horizontalHeader()->setSectionResizeMode(Decision, QHeaderView::ResizeToContents);
    m_all->setObjectName(QStringLiteral("answerAllComboBox"));
    m_all->setAccessibleName(tr("Answer for all"));
    m_all->addItems({tr("For all ..."), tr("Replace all"), tr("Keep both of all"), tr("Skip all")});
    connect(m_all, &QComboBox::activated, this, &OverwriteFileDialog::answerAll);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("Go on"));
    theme::makePrimary(buttons->button(QDialogButtonBox::Ok));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *bottom = new QHBoxLayout;
    bottom->addWidget(m_all);
    bottom->addWidget(buttons, 1);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(theme::spaceWide, theme::spaceWide, theme::spaceWide, theme::spaceWide);
    column->setSpacing(theme::space);
    column->addWidget(text);
    column->addWidget(m_table, 1);
    column->addLayout(bottom);
}

void OverwriteFileDialog::addRow(int row, const QString &output, const QString &source, bool isSource)
{
    auto *existing = new QTableWidgetItem(nameOf(output));
    if (isSource) {
        existing->setText(nameOf(output) + u'\n' + tr("This is one of the sources"));
        existing->setForeground(theme::colors(this).danger);
    }
    existing->setToolTip(output);
    auto *fresh = new QTableWidgetItem(nameOf(source));
    fresh->setToolTip(source);
    m_table->setItem(row, Existing, existing);
    m_table->setItem(row, New, fresh);
    auto *answer = new QComboBox(m_table);
    answer->setAccessibleName(tr("Answer for %1").arg(nameOf(output)));
    answer->addItems({tr("Replace"), tr("Keep both"), tr("Skip")});
    answer->setCurrentIndex(static_cast<int>(Answer::Skip));
    m_table->setCellWidget(row, Decision, answer);
    m_answers.push_back(answer);
    fillIn(row, Existing, output);
    fillIn(row, New, source);
}

void OverwriteFileDialog::fillIn(int row, int column, const QString &path)
{
    m_looks->threads.start([this, row, column, path] {
        const Look look = lookAt(*m_decoders, path, m_looks->cancel);
        QMetaObject::invokeMethod(this, [this, row, column, look] {
            QTableWidgetItem *item = m_table->item(row, column);
            item->setText(item->text() + u'\n' + look.facts);
            if (!look.thumbnail.isNull())
                item->setIcon(QIcon(QPixmap::fromImage(look.thumbnail)));
            m_table->resizeRowToContents(row);
        });
    });
}

void OverwriteFileDialog::answerAll(int answer)
{
    if (answer == 0)
        return;
    for (std::size_t row = 0; row < m_answers.size(); ++row)
        m_answers[row]->setCurrentIndex(answer - 1);
    m_all->setCurrentIndex(0);
}

std::vector<OverwriteFileDialog::Answer> OverwriteFileDialog::answers() const
{
    std::vector<Answer> all;
    for (const QComboBox *answer : m_answers)
        all.push_back(static_cast<Answer>(answer->currentIndex()));
    return all;
}
