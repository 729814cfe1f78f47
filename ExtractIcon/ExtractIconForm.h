// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ExtractIcon/IconListModel.h"
#include "core/LatestAnswer.h"
#include "widgets/FLWidget.h"

#include <QItemSelection>

class ElidedLabel;
class EmptyState;
class ExportIconDialog;
class IconSizesView;
class NoticeBar;
class PageHeader;
class QAction;
class QLabel;
class QPushButton;
class QStackedLayout;
class SearchLine;

namespace icons
{
class IconListView;
}

// The icon extractor: lists the icons of a library, program or icon file, shows all sizes of the selected
// one, and exports them. Files are read and decoded on worker threads; the list is updated when the window
// forwards message 1131.
class ExtractIconForm : public FLWidget
{
    Q_OBJECT

public:
    explicit ExtractIconForm(QWidget *parent = nullptr);

    void shellEvent(ShellEvent event, quint32 value) override;

    // Shows the icons of a file, given by absolute path. A later call replaces an earlier one.
    void open(const QString &path);

public slots:
    void OnDoubleClickListView(const QModelIndex &index);
    void OnSelectionChanged(const QItemSelection &selected, const QItemSelection &deselected);

private:
    struct Opened {
        int icons = 0;
    };

    QWidget *buildPage();
    QWidget *buildHeader();
    QWidget *buildBody();
    void chooseFile();
    void showLibraries();
    void showRecent();
    void refresh();
    void postRefresh();
    void addRecords(QList<icons::IconRecord> records);
    void setThumbnails(int first, QList<QImage> images);
    void loaded(const Opened &opened);
    void showSizes();
    void exportSelected();
    void openExport(const QList<int> &rows);
    void showExport(ExportIconDialog *dialog);
    void copySelected();
    void showFiltered(const QString &number);

    icons::IconListModel m_model;
    icons::IconListView *m_list = nullptr;
    QPushButton *m_load = nullptr;
    QPushButton *m_recent = nullptr;
    QPushButton *m_export = nullptr;
    ElidedLabel *m_openFile = nullptr;
    QLabel *m_count = nullptr;
    SearchLine *m_search = nullptr;
    NoticeBar *m_notice = nullptr;
    EmptyState *m_empty = nullptr;
    IconSizesView *m_sizes = nullptr;
    QStackedLayout *m_body = nullptr;
    QAction *m_reveal = nullptr;
    QString m_exported; // first file of the last export
    core::LatestAnswer m_loading;
    core::LatestAnswer m_reading;  // the sizes of the selected icon
    core::LatestAnswer m_choosing; // the images of the icon to export
};
