// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/PageHeader.h"

#include "widgets/ElidedLabel.h"
#include "widgets/Theme.h"
#include "widgets/WrappedLabel.h"

#include <QAction>
#include <QHBoxLayout>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

PageHeader::PageHeader(Kind kind, QWidget *parent)
    : QWidget(parent),
      m_title(new ElidedLabel(this, Qt::ElideMiddle)),
      m_row(new QHBoxLayout(this))
{
    auto *texts = new QVBoxLayout;
    texts->setSpacing(0);
    texts->addStretch();
    texts->addWidget(m_title);
    if (kind == Kind::Start) {
        m_title->setFont(theme::headline(font()));
        m_title->setObjectName(QStringLiteral("titleLabel"));
        texts->addWidget(m_description = new WrappedLabel(this));
        theme::makeMuted(m_description);
    } else {
        m_title->setFont(theme::sectionTitle(font()));
        m_title->setObjectName(QStringLiteral("resultTitleLabel"));
        texts->addWidget(m_totals = new ElidedLabel(this));
        m_totals->setObjectName(QStringLiteral("resultTotalsLabel"));
        theme::makeMuted(m_totals);
    }
    texts->addStretch();
    m_row->setContentsMargins(0, 0, 0, 0);
    m_row->setSpacing(theme::spaceSnug);
    m_row->addLayout(texts, 1);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
}

void PageHeader::setTitle(const QString &title)
{
    m_title->setText(title);
}

void PageHeader::setText(const QString &text)
{
    if (m_description)
        m_description->setText(text);
    else
        m_totals->setText(text);
}

void PageHeader::showBack(const QString &tip)
{
    m_back = controls::toolButton(
        this, {"backButton", "ArrowLeft24", tr("Back"),
               QStringLiteral("%1 (%2)").arg(
                   tip, QKeySequence(Qt::ALT | Qt::Key_Left).toString(QKeySequence::NativeText))});
    m_row->insertWidget(0, m_back);
    connect(m_back, &QAbstractButton::clicked, this, &PageHeader::back);
    controls::shortcut(parentWidget() ? parentWidget() : this, Qt::ALT | Qt::Key_Left, [this] {
        m_back->click();
    })->setObjectName(QStringLiteral("backAction"));
}

QPushButton *PageHeader::addButton(const controls::Button &button, controls::Rank rank)
{
    QPushButton *added = controls::pushButton(this, button, rank);
    addWidget(added);
    return added;
}

QToolButton *PageHeader::addToolButton(const controls::Button &button, bool showText)
{
    QToolButton *added = controls::toolButton(this, button, showText);
    addWidget(added);
    return added;
}

void PageHeader::addWidget(QWidget *widget)
{
    m_row->addWidget(widget);
}

// A layout limits the height to this hint, and a description wraps to more lines on a narrow page.
QSize PageHeader::sizeHint() const
{
    const QSize hint = QWidget::sizeHint();
    return {hint.width(), std::max(hint.height(), m_height)};
}

void PageHeader::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const int height = hasHeightForWidth() ? heightForWidth(width()) : 0;
    if (std::exchange(m_height, height) != height)
        updateGeometry();
}
