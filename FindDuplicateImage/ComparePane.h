// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/PicturePair.h"
#include "core/LatestAnswer.h"

#include <QWidget>

#include <memory>

class CompareView;
class ElidedLabel;
class QToolButton;

// Shows the first image of a group beside the selected one, with zoom and a difference view. Images are
// loaded in the background; nothing waits for them.
class ComparePane : public QWidget
{
    Q_OBJECT

public:
    explicit ComparePane(QWidget *parent = nullptr);
    ~ComparePane() override;

    // `second` is empty if the first image itself is selected. The texts are shown above the images.
    void compare(const QString &first, const QString &firstText, const QString &second,
                 const QString &secondText, std::shared_ptr<imaging::DecoderPool> decoders);
    void clear();

signals:
    // The images requested last are shown.
    void shown();

private:
    void buildButtons();
    void buildLayout();
    QToolButton *addButton(const char *name, const char *icon, const QString &text, const QKeySequence &key);
    void showPair(const PicturePair &pair);
    void showButtons();

    CompareView *m_view;
    ElidedLabel *m_firstText;
    ElidedLabel *m_secondText;
    QToolButton *m_difference;
    QToolButton *m_zoomOut;
    QToolButton *m_fit;
    QToolButton *m_actual;
    QToolButton *m_zoomIn;
    QString m_secondCaption;
    QString m_wanted; // what is being loaded or shown
    core::LatestAnswer m_loading;
};
