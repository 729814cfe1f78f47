// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/Settings.h"

#include <QDialog>

class FLTreeWidget;
class QCheckBox;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QSpinBox;
class QTreeWidgetItem;
class QVBoxLayout;

// Selects the file types to search, the minimum size, and the user's own types. Stores the edits on accept,
// and stays open if that fails.
class FindDuplicateOptionsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit FindDuplicateOptionsDialog(duplicates::FinderSettings settings, QWidget *parent = nullptr);

    duplicates::FinderSettings edited() const;

    void accept() override;

private:
    void buildList(QVBoxLayout *layout);
    void buildSize(QVBoxLayout *layout);
    void buildButtons(QVBoxLayout *layout);
    void connectAll();
    void showCategories();
    void checkAll(Qt::CheckState state);
    void enableButtons();

    // The index of the current custom type, -1 for none.
    int currentCustomType() const;
    // Edits the custom type of that index, or with -1 a new one.
    void editCustomType(int index);
    void putCustomType(int index, const duplicates::CustomFileType &type);
    void removeCustomType();

    duplicates::FinderSettings m_settings;
    FLTreeWidget *m_categories;
    QPushButton *m_selectAll;
    QPushButton *m_selectNone;
    QPushButton *m_add;
    QPushButton *m_edit;
    QPushButton *m_remove;
    QCheckBox *m_ignoreSmall;
    QSpinBox *m_smallSize;
    QLabel *m_nothing;
    QLabel *m_notStored;
};
