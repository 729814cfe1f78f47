// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/SourceModel.h"
#include "ConvertImage/options/Settings.h"
#include "ConvertImage/preview/PreviewRenderer.h"
#include "widgets/DropFrame.h"

#include <QTimer>

class EmptyState;
class NoticeBar;
class PageHeader;
class PreviewView;
class QComboBox;
class QLabel;
class QListView;
class QPushButton;
class QStackedLayout;
class QToolButton;
class SettingsBinding;
class SettingsPanel;

// The page on which a conversion is set up: the list of images, a live preview of the selected one, and the
// settings.
class ConvertPage : public DropFrame
{
    Q_OBJECT

public:
    ConvertPage(std::shared_ptr<imaging::DecoderPool> decoders, SettingsBinding *binding,
                QWidget *parent = nullptr);

    SourceModel *sources() const { return m_sources; }
    NoticeBar *notice() const { return m_notice; }
    // Reloads the preview's source: files may have changed.
    void refreshPreview();

signals:
    void pathsAdded(const QStringList &paths);
    void convertRequested();

private:
    QWidget *makeList();
    QWidget *makePreview();
    QWidget *makeSettings();
    void addTools(class QHBoxLayout *row);
    void chooseFiles();
    void chooseFolder();
    void paste();
    void removeSelected();
    void showList();
    void wishPreview();
    void showImage(const std::shared_ptr<const PreviewImage> &picture);
    void placeMark(conversion::MarkKind kind, conversion::Position position, int margin);
    void fillPresets();
    void choosePreset(int index);
    void savePreset();
    void removePreset();

    SettingsBinding *m_binding;
    const settings::NamedSets m_sets{conversion::stored::presets};
    SourceModel *m_sources;
    PreviewRenderer *m_renderer;
    PageHeader *m_header;
    NoticeBar *m_notice;
    QPushButton *m_convert;
    QListView *m_list = nullptr;
    QStackedLayout *m_listStack = nullptr;
    QLabel *m_totals = nullptr;
    PreviewView *m_preview = nullptr;
    QString m_sizes; // of the image, before and after
    QLabel *m_facts = nullptr;
    QLabel *m_zoom = nullptr;
    QComboBox *m_presets = nullptr;
    QToolButton *m_removePreset = nullptr;
    SettingsPanel *m_settings = nullptr;
    QTimer m_wishTimer;
};
