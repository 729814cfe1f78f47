// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>

#include <optional>

// A large button drawn as a card: icon, title (the button's text), a second line, and optionally a usage bar.
class FLCardButton : public QAbstractButton
{
    Q_OBJECT

public:
    explicit FLCardButton(QWidget *parent = nullptr);

    void setCaption(const QString &caption);
    QString caption() const { return m_caption; }
    // Where a long caption is elided; use the middle for paths.
    void setCaptionElide(Qt::TextElideMode mode);
    // 0 to 1; an almost full bar has the warning colour.
    void setShare(std::optional<double> share);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;

private:
    int textHeight() const;
    void paintTexts(QPainter &painter, const QRect &area) const;

    QString m_caption;
    Qt::TextElideMode m_captionElide = Qt::ElideRight;
    std::optional<double> m_share;
    bool m_focusVisible = false; // the focus was set by keyboard
};
