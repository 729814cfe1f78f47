// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/Settings.h"

#include <QDialog>

class QButtonGroup;
class QLabel;
class QSpinBox;

// Selects the overwrite method. Changes are stored at once, so there is no OK button.
class SecureDeleteOptionsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit SecureDeleteOptionsDialog(QWidget *parent = nullptr);

private:
    void buildMethods(class QVBoxLayout *layout);
    void store();

    QButtonGroup *m_methods;
    QSpinBox *m_passes;
    QLabel *m_notStored;
};
