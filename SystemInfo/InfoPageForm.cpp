// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/InfoPageForm.h"

#include "SystemInfo/PageBar.h"
#include "SystemInfo/PageModel.h"
#include "SystemInfo/ProblemDelegate.h"
#include "SystemInfo/engine/Report.h"
#include "SystemInfo/engine/System.h"
#include "platform/Shell.h"
#include "widgets/Controls.h"
#include "widgets/FLTreeView.h"
#include "widgets/NoticeBar.h"
#include "widgets/ResultView.h"
#include "widgets/Theme.h"
#include "widgets/WrappedLabel.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QVBoxLayout>

#include <chrono>

using namespace systeminfo;

namespace
{

constexpr std::chrono::seconds uptimePause{5}; // its text changes once a minute

} // namespace

InfoPageForm::InfoPageForm(PageId id, const QString &treeName, MakeLoader makeLoader, QWidget *parent)
    : QWidget(parent),
      m_id(id),
      m_makeLoader(std::move(makeLoader)),
      m_bar(new PageBar(this)),
      m_notice(new NoticeBar(this)),
      m_summary(new WrappedLabel(this)),
      m_tree(new FieldValueTree(treeName, emptyPage(id).title, this))
{
    resize(735, 459);
    m_summary->setContentsMargins(theme::spaceSnug, 0, theme::spaceSnug, theme::spaceSnug);
    m_summary->hide();
    m_tree->tree()->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_tree->tree()->setItemDelegate(new ProblemDelegate(m_tree->tree()));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (QWidget *part :
         {static_cast<QWidget *>(m_bar), static_cast<QWidget *>(m_notice), static_cast<QWidget *>(m_summary)})
        layout->addWidget(part);
    layout->addWidget(m_tree, 1);
    buildActions();
    m_minute.setInterval(uptimePause);
    connect(&m_minute, &QTimer::timeout, this, &InfoPageForm::showUptime);
    load();
}

InfoPageForm::~InfoPageForm()
{
    m_tree->setModel(nullptr); // the model is destroyed before the tree
}

void InfoPageForm::buildActions()
{
    const auto add = [this](const char *name, const QString &text, void (InfoPageForm::*copy)()) {
        m_tree->addAction(controls::action(this, {.objectName = name, .image = "Copy24", .text = text},
                                           [this, copy] { (this->*copy)(); }));
    };
    add("copyValueAction", tr("Copy Value"), &InfoPageForm::copyValue);
    add("copySectionAction", tr("Copy Section"), &InfoPageForm::copySection);
    add("copyPageAction", tr("Copy Page"), &InfoPageForm::copyPage);
    connect(m_tree, &ResultView::activated, this, &InfoPageForm::open);
    connect(m_tree, &ResultView::told, m_notice,
            [this](NoticeBar::Kind kind, const QString &text) { m_notice->showNotice(kind, text); });
    connect(m_bar, &PageBar::refreshRequested, this, &InfoPageForm::refresh);
    connect(m_bar, &PageBar::copyRequested, this, &InfoPageForm::copyPage);
}

void InfoPageForm::load()
{
    m_isLoaded = false;
    m_minute.stop();
    m_sinceLoad.start();
    m_bar->setLoading(true);
    m_tree->setEmpty(controls::image("Refresh24"), tr("Asking Windows ..."));
    m_loader.reset(m_makeLoader(&m_model));
    m_loader->setParent(this);
    connect(m_loader.get(), SIGNAL(processFinish()), this, SLOT(onProcessFinish()));
    m_loader->start();
}

void InfoPageForm::refresh()
{
    if (!m_isLoaded)
        return;
    m_tree->setModel(nullptr); // the loader thread refills it
    load();
}

void InfoPageForm::onProcessFinish()
{
    m_page = m_loader->page();
    m_isLoaded = true;
    m_bar->setLoading(false);
    m_tree->setEmpty(controls::image("Info16"), tr("Windows reported nothing"));
    m_tree->showFacts(&m_model);
    m_summary->setText(m_page.summary);
    m_uptimeAtLoad = m_page.uptimeSeconds.value_or(0);
    if (m_page.uptimeSeconds)
        m_minute.start();
    m_summary->setVisible(!m_page.summary.isEmpty());
    if (m_page.notices.isEmpty())
        m_notice->hide();
    else
        notify(m_page.notices.join(QLatin1Char(' ')));
    emit loaded();
}

void InfoPageForm::showUptime()
{
    const quint64 elapsed = static_cast<quint64>(m_sinceLoad.elapsed()) / 1000;
    const std::vector<int> row =
        isVisible() ? updateUptime(m_page, m_uptimeAtLoad + elapsed) : std::vector<int>();
    if (row.empty())
        return;
    const QModelIndex index = indexOf(m_model, row);
    m_model.setData(index.siblingAtColumn(1), rowAt(m_page, index)->value.text);
    m_summary->setText(m_page.summary);
}

void InfoPageForm::notify(const QString &notice, bool isWarning)
{
    m_notice->showNotice(isWarning ? NoticeBar::Kind::Warning : NoticeBar::Kind::Info, notice);
}

void InfoPageForm::showRow(const std::vector<int> &row)
{
    const QModelIndex index = indexOf(m_model, row);
    if (m_isLoaded && index.isValid()) {
        m_tree->select(index);
        m_tree->tree()->setFocus();
    }
}

void InfoPageForm::open(const QModelIndex &index)
{
    const QString path = index.data(openPathRole).toString();
    if (!path.isEmpty() && !platform::shell().openFile(path))
        notify(tr("%1 could not be opened.").arg(path));
}

void InfoPageForm::copyValue()
{
    if (const Row *row = m_isLoaded ? rowAt(m_page, m_tree->current()) : nullptr)
        QGuiApplication::clipboard()->setText(row->value.text.isEmpty() ? row->label : row->value.text);
}

// Copies the row with its children, or the whole section if it has none.
void InfoPageForm::copySection()
{
    QModelIndex index = m_tree->current();
    const Row *row = m_isLoaded ? rowAt(m_page, index) : nullptr;
    if (row && row->children.empty() && index.parent().isValid())
        row = rowAt(m_page, index.parent());
    if (row)
        QGuiApplication::clipboard()->setText(plainText(*row));
}

void InfoPageForm::copyPage()
{
    if (m_isLoaded)
        QGuiApplication::clipboard()->setText(plainText(m_page));
}
