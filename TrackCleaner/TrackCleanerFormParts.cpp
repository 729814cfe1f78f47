// SPDX-License-Identifier: GPL-3.0-or-later

// Construction of the track cleaner's page.

#include "TrackCleaner/ItemRow.h"
#include "TrackCleaner/Settings.h"
#include "TrackCleaner/TraceTexts.h"
#include "TrackCleaner/TrackCleanerForm.h"
#include "widgets/CardFrame.h"
#include "widgets/Controls.h"
#include "widgets/ElidedLabel.h"
#include "widgets/PageHeader.h"
#include "widgets/Theme.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>

using tracks::Group;
using tracks::ItemRow;

void TrackCleanerForm::buildHeader(QVBoxLayout *page)
{
    m_header->setTitle(tr("Clear Tracking Data"));
    m_header->setText(tr("To save your privacy you may want to clear the following data:"));
    m_save = m_header->addToolButton({"saveRegistryButton", "Save24", tr("Save Entries"),
                                      tr("Save the registry entries that were found to a file")});
    m_putBack = m_header->addToolButton(
        {"putBackButton", "Refresh24", tr("Put Back"), tr("Put back registry entries from a saved file")});
    connect(m_save, &QToolButton::clicked, this, &TrackCleanerForm::saveRegistryEntries);
    connect(m_putBack, &QToolButton::clicked, this, &TrackCleanerForm::putRegistryEntriesBack);
    page->addWidget(m_header);
    page->addWidget(m_notice);
}

void TrackCleanerForm::buildGroups(QVBoxLayout *page)
{
    auto *content = new QWidget(this);
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(theme::space);
    column->addWidget(buildGroup(Group::FileExplorer));
    column->addWidget(buildGroup(Group::Windows));
    column->addStretch();
    QScrollArea *area = controls::scrollArea(content, this);
    area->setFocusPolicy(Qt::NoFocus); // it scrolls to the focused row
    page->addWidget(area, 1);
}

QWidget *TrackCleanerForm::buildGroup(Group group)
{
    constexpr int iconSide = 24;
    const bool explorer = group == Group::FileExplorer;
    const QString name =
        explorer ? QStringLiteral("TrackCleanerFileExplorer") : QStringLiteral("TrackCleanerWindows");
    auto *card = new CardFrame(this);
    auto *icon = new QLabel(card);
    icon->setObjectName(name + QStringLiteral("Icon"));
    icon->setPixmap(controls::image(explorer ? "Explorer24" : "Windows24")
                        .pixmap(QSize(iconSide, iconSide), devicePixelRatio()));
    auto *title = new QLabel(explorer ? tr("File Explorer") : tr("Windows"), card);
    title->setObjectName(name);
    title->setFont(theme::sectionTitle(font()));

    auto *head = new QHBoxLayout;
    head->setSpacing(theme::spaceSnug);
    head->addWidget(icon);
    head->addWidget(title, 1);
    auto *layout = new QVBoxLayout(card);
    layout->setContentsMargins(theme::spaceWide, theme::space, theme::spaceWide, theme::space);
    layout->setSpacing(theme::space);
    layout->addLayout(head);
    for (const tracks::CatalogueRow &row : tracks::catalogue()) {
        if (row.group != group)
            continue;
        auto *item = new ItemRow(row, card);
        m_rows[tracks::indexOf(row.item)] = item;
        layout->addWidget(item);
        connect(item, &ItemRow::checkedChanged, this, [this, item](bool checked) {
            tracks::checkedItems[tracks::indexOf(item->item())].write(checked);
            showState();
        });
        connect(item, &ItemRow::viewRequested, this, &TrackCleanerForm::showDetails);
    }
    if (!explorer) {
        m_keepUsedToday = new QCheckBox(tr("Keep temporary files that were used today"), card);
        m_keepUsedToday->setObjectName(QStringLiteral("keepUsedTodayCheckBox"));
        layout->addWidget(m_keepUsedToday);
        connect(m_keepUsedToday, &QCheckBox::toggled, this, [this](bool keep) {
            tracks::keepUsedToday.write(keep);
            forget(); // the scan used the other setting
        });
    }
    return card;
}

void TrackCleanerForm::buildFooter(QVBoxLayout *page)
{
    m_summary->setObjectName(QStringLiteral("summaryLabel"));
    m_summary->setWordWrap(true);
    m_progressLabel->setObjectName(QStringLiteral("TrackCleanerProgressBarLabel"));
    m_progress->setObjectName(QStringLiteral("TrackCleanerProgressBar"));
    m_progress->setTextVisible(false);
    m_progress->setFixedHeight(theme::barHeight);
    theme::makeMuted(m_progressPath);

    m_cancel = controls::pushButton(
        this, {"TrackCleanerCancelButton", "Cancel24", tr("Cancel"), {}, Qt::Key_Escape});
    m_analyze = controls::pushButton(this, {"TrackCleanerAnalyzeButton", "FolderSearch24", tr("Analyze")});
    m_clear = controls::pushButton(this, {"TrackCleanerClearButton", "Delete24", tr("Clear")},
                                   controls::Rank::Primary);
    connect(m_cancel, &QPushButton::clicked, this, &TrackCleanerForm::cancel);
    connect(m_analyze, &QPushButton::clicked, this, &TrackCleanerForm::analyze);
    connect(m_clear, &QPushButton::clicked, this, &TrackCleanerForm::clear);

    auto *texts = new QVBoxLayout;
    texts->setSpacing(theme::spaceTight);
    for (QWidget *widget :
         std::initializer_list<QWidget *>{m_summary, m_progressLabel, m_progress, m_progressPath})
        texts->addWidget(widget);
    auto *row = new QHBoxLayout;
    row->setSpacing(theme::spaceSnug);
    row->addLayout(texts, 1);
    for (QPushButton *button : {m_cancel, m_analyze, m_clear})
        row->addWidget(button, 0, Qt::AlignBottom);
    page->addLayout(row);
}

void TrackCleanerForm::loadSettings()
{
    for (ItemRow *row : m_rows) {
        const QSignalBlocker blocker(row);
        row->setChecked(tracks::checkedItems[tracks::indexOf(row->item())].read());
    }
    const QSignalBlocker blocker(m_keepUsedToday);
    m_keepUsedToday->setChecked(tracks::keepUsedToday.read());
}
