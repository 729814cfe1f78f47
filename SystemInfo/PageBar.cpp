// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/PageBar.h"

#include "widgets/Controls.h"
#include "widgets/SearchLine.h"
#include "widgets/Theme.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QHBoxLayout>
#include <QMenu>
#include <QToolButton>

namespace systeminfo
{

namespace
{

constexpr int listWidth = 560; // wide enough for a hit's page, section and value

} // namespace

PageBar::PageBar(QWidget *parent)
    : QWidget(parent),
      m_search(new SearchLine(this)),
      m_refresh(controls::toolButton(this,
                                     {.objectName = "refreshButton",
                                      .image = "Refresh24",
                                      .text = tr("Refresh"),
                                      .tip = tr("Gather this page again"),
                                      .key = QKeySequence::Refresh},
                                     true)),
      m_list(new QCompleter(&m_lines, this))
{
    m_search->setObjectName(QStringLiteral("searchLineEdit"));
    m_search->setPlaceholderText(tr("Search all pages"));
    m_search->setAccessibleName(tr("Search all pages"));
    auto *report = controls::toolButton(this,
                                        {.objectName = "reportButton",
                                         .image = "Export24",
                                         .text = tr("Report"),
                                         .tip = tr("Copy, save or compare what is shown")},
                                        true);
    buildMenu(report);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(theme::spaceSnug, theme::spaceSnug, theme::spaceSnug, theme::spaceSnug);
    layout->addWidget(m_search);
    layout->addStretch(1);
    layout->addWidget(m_refresh);
    layout->addWidget(report);

    m_list->setWidget(m_search);
    m_list->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    m_list->setMaxVisibleItems(12);
    connect(m_list, qOverload<const QModelIndex &>(&QCompleter::activated), this, &PageBar::choose);
    connect(m_search, &SearchLine::searched, this, &PageBar::searched);
    connect(m_refresh, &QToolButton::clicked, this, &PageBar::refreshRequested);
}

void PageBar::buildMenu(QToolButton *button)
{
    auto *menu = new QMenu(button); // reused each time
    const auto add = [this, menu](const char *name, const QString &text, void (PageBar::*request)()) {
        QAction *action = menu->addAction(text, this, request);
        action->setObjectName(QLatin1String(name));
    };
    add("copyPageAction", tr("Copy This Page"), &PageBar::copyRequested);
    add("saveReportAction", tr("Save Report ..."), &PageBar::saveRequested);
    add("compareReportsAction", tr("Compare Two Saved Reports ..."), &PageBar::compareRequested);
    button->setMenu(menu);
    button->setPopupMode(QToolButton::InstantPopup);
}

void PageBar::setLoading(bool loading)
{
    m_refresh->setEnabled(!loading);
}

void PageBar::showHits(const std::vector<Hit> &hits, const QString &note)
{
    m_hits = hits;
    m_lines.clear();
    for (const Hit &hit : hits) {
        const QString path = hit.path.join(QStringLiteral(" \u203a "));
        m_lines.appendRow(
            new QStandardItem(hit.value.isEmpty() ? path : path + QStringLiteral(": ") + hit.value));
    }
    if (!note.isEmpty()) {
        auto *line = new QStandardItem(note);
        line->setFlags(Qt::ItemIsEnabled);
        m_lines.appendRow(line);
    }
    if (m_lines.rowCount() > 0)
        m_list->complete(QRect(0, 0, qMax(m_search->width(), listWidth), m_search->height()));
    else
        m_list->popup()->hide();
}

void PageBar::choose(const QModelIndex &index)
{
    // The index belongs to the completer's own model, which has the same rows as m_lines.
    const auto row = static_cast<std::size_t>(index.row());
    if (row < m_hits.size())
        emit hitChosen(m_hits[row]);
}

} // namespace systeminfo
