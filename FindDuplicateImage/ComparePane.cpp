// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/ComparePane.h"

#include "FindDuplicateImage/CompareView.h"
#include "imaging/DecoderPool.h"
#include "widgets/Controls.h"
#include "widgets/ElidedLabel.h"
#include "widgets/RowDelegate.h"
#include "widgets/Theme.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QStringBuilder>
#include <QToolButton>
#include <QVBoxLayout>

namespace
{
constexpr double buttonStep = 1.5;
}

ComparePane::ComparePane(QWidget *parent)
    : QWidget(parent),
      m_view(new CompareView(this)),
      m_firstText(new ElidedLabel(this, Qt::ElideMiddle)),
      m_secondText(new ElidedLabel(this, Qt::ElideMiddle))
{
    buildButtons();
    buildLayout();
    connect(m_view, &CompareView::zoomChanged, this, &ComparePane::showButtons);
    clear();
}

ComparePane::~ComparePane() = default;

QToolButton *ComparePane::addButton(const char *name, const char *icon, const QString &text,
                                    const QKeySequence &key)
{
    auto *button = new QToolButton(this);
    button->setObjectName(QLatin1String(name));
    button->setText(text);
    button->setAccessibleName(text);
    button->setToolTip(QString(text % u" (" % key.toString(QKeySequence::NativeText) % u')'));
    button->setShortcut(key);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    if (icon) {
        button->setIcon(controls::image(icon));
        button->setIconSize({20, 20});
    }
    return button;
}

void ComparePane::buildButtons()
{
    m_difference = addButton("differenceButton", "Compare24", tr("Show Differences"),
                             QKeySequence(Qt::CTRL | Qt::Key_D));
    m_difference->setCheckable(true);
    m_difference->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_zoomOut =
        addButton("zoomOutButton", "ZoomOut24", tr("Zoom Out"), QKeySequence(Qt::CTRL | Qt::Key_Minus));
    m_fit = addButton("fitButton", nullptr, tr("Fit"), QKeySequence(Qt::CTRL | Qt::Key_0));
    m_actual = addButton("actualSizeButton", nullptr, tr("1:1"), QKeySequence(Qt::CTRL | Qt::Key_1));
    m_actual->setAccessibleName(tr("Actual size"));
    m_zoomIn = addButton("zoomInButton", "ZoomIn24", tr("Zoom In"), QKeySequence(Qt::CTRL | Qt::Key_Plus));
    connect(m_difference, &QAbstractButton::toggled, this, [this](bool on) {
        m_view->setDifference(on);
        showButtons();
    });
    connect(m_zoomOut, &QAbstractButton::clicked, this,
            [this] { m_view->setZoom(m_view->zoom() / buttonStep); });
    connect(m_zoomIn, &QAbstractButton::clicked, this,
            [this] { m_view->setZoom(m_view->zoom() * buttonStep); });
    connect(m_fit, &QAbstractButton::clicked, this, [this] { m_view->setZoom(1); });
    connect(m_actual, &QAbstractButton::clicked, this, [this] { m_view->setZoom(m_view->actualSizeZoom()); });
}

void ComparePane::buildLayout()
{
    m_view->setObjectName(QStringLiteral("compareView"));
    m_firstText->setObjectName(QStringLiteral("firstPictureLabel"));
    m_secondText->setObjectName(QStringLiteral("secondPictureLabel"));
    theme::makeMuted(m_firstText);
    theme::makeMuted(m_secondText);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(theme::spaceTight);
    buttons->addWidget(m_difference);
    buttons->addStretch();
    for (QToolButton *button : {m_zoomOut, m_fit, m_actual, m_zoomIn})
        buttons->addWidget(button);
    auto *texts = new QHBoxLayout;
    texts->setSpacing(theme::spaceSnug);
    texts->addWidget(m_firstText, 1);
    texts->addWidget(m_secondText, 1);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::spaceTight);
    layout->addLayout(buttons);
    layout->addLayout(texts);
    layout->addWidget(m_view, 1);
}

void ComparePane::clear()
{
    m_loading.forget();
    m_wanted.clear();
    m_firstText->setText({});
    m_secondText->setText({});
    m_view->showMessage({});
    showButtons();
}

void ComparePane::compare(const QString &first, const QString &firstText, const QString &second,
                          const QString &secondText, std::shared_ptr<imaging::DecoderPool> decoders)
{
    const QString wanted = first % u'\n' % second;
    m_firstText->setText(firstText);
    m_secondCaption = secondText;
    m_secondText->setText(secondText);
    m_secondText->setVisible(!second.isEmpty());
    if (wanted == m_wanted)
        return;
    m_wanted = wanted;
    const PicturePair known = m_view->pair();
    // Keeps the current images while others load, so that differences are easier to see.
    if (known.first.path != first) {
        m_view->showMessage(tr("Loading ..."));
        m_view->setZoom(1);
    }
    m_loading.ask(
        [first, second, known, decoders = std::move(decoders)](const core::Asking &asking) {
            return loadPictures(first, second, known, *decoders, asking.cancel());
        },
        [this](const PicturePair &pair) { showPair(pair); },
        [this](const QString &error) {
            m_wanted.clear();
            m_view->showMessage(tr("These pictures cannot be shown. %1").arg(error));
            showButtons();
        });
    showButtons();
}

void ComparePane::showPair(const PicturePair &pair)
{
    m_view->showPair(pair);
    if (!pair.difference.picture.isNull())
        m_secondText->setText(
            tr("%1, %2 differs").arg(m_secondCaption, BarDelegate::percentText(pair.difference.share * 100)));
    showButtons();
    emit shown();
}

void ComparePane::showButtons()
{
    const PicturePair &pair = m_view->pair();
    const bool any = !pair.first.full.isNull() || !pair.second.full.isNull();
    m_difference->setEnabled(!pair.difference.picture.isNull());
    m_zoomOut->setEnabled(any && m_view->zoom() > 1);
    m_fit->setEnabled(any && m_view->zoom() > 1);
    m_actual->setEnabled(any && !m_view->showsDifference());
    m_zoomIn->setEnabled(any && m_view->zoom() < CompareView::maxZoom);
}
