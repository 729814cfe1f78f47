// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/Catalogue.h"

#include <QWidget>

class QCheckBox;
class QLabel;
class QPushButton;
class WrappedLabel;

namespace tracks
{

// One catalogue item on the page: check box, count, a button for the list, a description, and a note about
// obstacles.
class ItemRow : public QWidget
{
    Q_OBJECT

public:
    explicit ItemRow(const CatalogueRow &row, QWidget *parent = nullptr);

    Item item() const { return m_item; }
    bool isChecked() const;
    void setChecked(bool checked);
    // Empty before the first analysis.
    void showFound(const QString &text, const QString &note, bool canView);
    void setBusy(bool busy);

signals:
    void checkedChanged(bool checked);
    void viewRequested(Item item);

private:
    Item m_item;
    QCheckBox *m_check;
    QLabel *m_found;
    QPushButton *m_view;
    WrappedLabel *m_text;
    WrappedLabel *m_note;
    bool m_canView = false;
};

} // namespace tracks
