// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/FeaturePage.h"

#include "automation/AgentLink.h"
#include "automation/AgentLogView.h"
#include "automation/engine/Event.h"
#include "settings/AgentState.h"
#include "settings/Values.h"
#include "widgets/CardFrame.h"
#include "widgets/Controls.h"
#include "widgets/NoticeBar.h"
#include "widgets/PageHeader.h"
#include "widgets/Theme.h"
#include "widgets/WrappedLabel.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace automation
{

namespace
{

constexpr int refreshInterval = 1000; // ms, while the page is visible
constexpr int logHeight = 150;

QLabel *sectionTitle(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setFont(theme::sectionTitle(parent->font()));
    return label;
}

WrappedLabel *addLine(QGridLayout *lines, const QString &title, const char *name)
{
    auto *caption = new QLabel(title);
    theme::makeMuted(caption);
    auto *text = new WrappedLabel;
    text->setObjectName(QString::fromLatin1(name));
    const int row = lines->rowCount();
    lines->addWidget(caption, row, 0, Qt::AlignTop);
    lines->addWidget(text, row, 1);
    return text;
}

} // namespace

FeaturePage::FeaturePage(QStringView feature, const settings::Flag &enabled, const Texts &texts,
                         QWidget *parent)
    : FLWidget(parent),
      m_feature(feature),
      m_enabled(enabled)
{
    auto *header = new PageHeader(PageHeader::Kind::Start, this);
    header->setTitle(texts.title);
    header->setText(texts.description);
    m_notice = new NoticeBar(this);
    m_log = new AgentLogView(feature, this);
    m_log->setFixedHeight(logHeight);
    m_settings = new QFormLayout;
    m_settings->setHorizontalSpacing(theme::spaceWide);
    m_settings->setVerticalSpacing(theme::spaceSnug);
    m_settings->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    m_settings->setRowWrapPolicy(QFormLayout::WrapLongRows);

    auto *content = new QWidget;
    auto *rows = new QVBoxLayout(content);
    rows->setContentsMargins(0, 0, theme::spaceSnug, 0);
    rows->setSpacing(theme::space);
    rows->addWidget(statusCard(texts.switchText));
    rows->addWidget(sectionTitle(tr("Settings"), this));
    rows->addLayout(m_settings);
    rows->addWidget(sectionTitle(tr("What happened"), this));
    rows->addWidget(m_log);
    rows->addStretch();
    QScrollArea *area = controls::scrollArea(content, this);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::pageMargin, theme::pageMargin, theme::spaceWide, theme::space);
    layout->setSpacing(theme::space);
    layout->addWidget(header);
    layout->addWidget(m_notice);
    layout->addWidget(area, 1);

    showSwitch();
    connect(m_switch, &QCheckBox::toggled, this, &FeaturePage::turn);
    m_refresh.setInterval(refreshInterval);
    connect(&m_refresh, &QTimer::timeout, this, [this] {
        if (isVisible())
            refresh();
    });
    m_refresh.start();
    QTimer::singleShot(0, this, [this] { // when the derived class is fully constructed
        orderTabs();
        refresh();
    });
}

// Sets the tab order from top to bottom: a derived page creates its widgets after those that are below them.
void FeaturePage::orderTabs()
{
    const QWidget *card = m_switch->parentWidget();
    QWidget *lastInCard = m_startAgent;
    QWidget *last = m_log;
    for (QWidget *next = m_switch->nextInFocusChain(); next != m_switch && isAncestorOf(next);
         next = next->nextInFocusChain()) {
        if (!(next->focusPolicy() & Qt::TabFocus))
            continue;
        last = next;
        if (card->isAncestorOf(next))
            lastInCard = next;
    }
    if (lastInCard != m_startAgent)
        setTabOrder(lastInCard, m_startAgent);
    if (last != m_log)
        setTabOrder(last == lastInCard ? m_startAgent : last, m_log);
}

QWidget *FeaturePage::statusCard(const QString &switchText)
{
    auto *card = new CardFrame;
    m_switch = new QCheckBox(switchText, card);
    m_switch->setObjectName(QStringLiteral("checkBox"));
    m_switch->setFont(theme::sectionTitle(font()));
    m_actions = new QVBoxLayout;
    auto *top = new QHBoxLayout;
    top->addWidget(m_switch);
    top->addStretch();
    top->addLayout(m_actions);

    auto *lines = new QGridLayout;
    lines->setHorizontalSpacing(theme::spaceWide);
    lines->setVerticalSpacing(theme::spaceTight);
    lines->setColumnStretch(1, 1);
    m_now = addLine(lines, tr("Now"), "nowLabel");
    m_next = addLine(lines, tr("Next"), "nextLabel");
    m_last = addLine(lines, tr("Last"), "lastLabel");

    m_agentRow = new QWidget(card);
    auto *agent = new QHBoxLayout(m_agentRow);
    agent->setContentsMargins(0, 0, 0, 0);
    auto *absent = new WrappedLabel;
    absent->setText(tr("The background agent is not running. Nothing happens until it is started."));
    agent->addWidget(absent, 1);
    m_startAgent = controls::pushButton(m_agentRow, {"startAgentButton", "", tr("Start the Agent")});
    agent->addWidget(m_startAgent);
    connect(m_startAgent, &QPushButton::clicked, this, [this] {
        startAgent();
        refresh();
    });

    auto *layout = new QVBoxLayout(card);
    layout->setContentsMargins(theme::spaceWide, theme::space, theme::spaceWide, theme::space);
    layout->setSpacing(theme::spaceSnug);
    m_extras = new QVBoxLayout;
    m_extras->setSpacing(theme::space);
    layout->addLayout(top);
    layout->addLayout(m_extras);
    layout->addLayout(lines);
    layout->addWidget(m_agentRow);
    return card;
}

void FeaturePage::addAction(QPushButton *button)
{
    m_actions->addWidget(button);
}

void FeaturePage::addToCard(QWidget *widget)
{
    m_extras->addWidget(widget);
}

void FeaturePage::showSwitch()
{
    const QSignalBlocker silent(m_switch);
    m_switch->setChecked(m_enabled.read());
}

void FeaturePage::turn(bool on)
{
    if (mayTurn(on)) {
        if (!m_enabled.write(on))
            m_notice->showNotice(NoticeBar::Kind::Error, tr("Windows refused to store the setting."));
        apply();
    }
    showSwitch();
}

void FeaturePage::apply()
{
    applyToAgent(m_enabled.read());
    refresh();
}

void FeaturePage::refresh()
{
    const bool on = m_enabled.read();
    const bool runs = agentRuns();
    const settings::AgentState state = runs ? settings::readAgentState(m_feature) : settings::AgentState();
    showSwitch();
    m_log->refresh();
    m_now->setText(!on ? tr("Off") : state.now.isEmpty() ? tr("On") : tr("On. %1.").arg(state.now));
    const QString own = outlook();
    m_next->setText(on && !state.next.isEmpty() ? state.next : !own.isEmpty() ? own : tr("Nothing"));
    const LogEntry &last = m_log->latest();
    m_last->setText(last.time.isValid() ? tr("%1: %2. %3")
                                              .arg(momentText(last.time, QDateTime::currentDateTime()),
                                                   last.subject, last.text)
                                        : tr("Nothing yet"));
    m_agentRow->setVisible(on && !runs);
    refreshed();
}

} // namespace automation
