// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/Clear.h"

#include <QAbstractTableModel>
#include <QDialog>

#include <memory>
#include <vector>

// What a clearing could not remove, and why.
class StayedModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Entry, Place, Why, ColumnTotal };

    StayedModel(std::shared_ptr<const tracks::ScanResult> found, std::vector<tracks::Stayed> stayed,
                QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    std::shared_ptr<const tracks::ScanResult> m_found;
    std::vector<tracks::Stayed> m_stayed;
};

class StayedDialog : public QDialog
{
    Q_OBJECT

public:
    StayedDialog(std::shared_ptr<const tracks::ScanResult> found, std::vector<tracks::Stayed> stayed,
                 QWidget *parent = nullptr);
};
