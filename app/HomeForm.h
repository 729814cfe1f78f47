// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/ModuleTable.h"
#include "app/StarredModules.h"

#include <QHash>
#include <QWidget>

class ModuleCard;
class QGridLayout;
class QLabel;
class QLineEdit;
class QScrollArea;

// The home page: a card for each module in a grid that adapts to the width, starred ones first. The starred
// list is read on creation and stored (value `StarredWidget` of the root key) at every change, except that an
// empty list is never stored, so the last removed star is back at the next start.
class HomeForm : public QWidget
{
    Q_OBJECT

public:
    explicit HomeForm(QWidget *parent = nullptr, const ModuleTable &table = moduleTable());
    ~HomeForm() override;

    ModuleCard *card(int id) const { return m_cards.value(id); }

signals:
    void openModule(int index);
    void closeApp();

public slots:
    void on_AutoDarkModeLabel_clicked() { emit openModule(0); }
    void on_AutoWallpaperChanger_clicked() { emit openModule(1); }
    void on_ConvertImage_clicked() { emit openModule(15); }
    void on_FolderSizeAnalyzer_clicked() { emit openModule(2); }
    void on_FindDuplicate_clicked() { emit openModule(3); }
    void on_FindDuplicateImage_clicked() { emit openModule(20); }
    void on_MyTrayIcon_clicked() { emit openModule(12); }
    void on_ProcessManager_clicked() { emit openModule(11); }
    void on_QRCodeCreator_clicked() { emit openModule(16); }
    void on_Regwick_clicked() { emit openModule(14); }
    void on_SecureDelete_clicked() { emit openModule(4); }
    void on_Hotkey_clicked() { emit openModule(13); }
    void on_SmartShortcut_clicked() { emit openModule(10); }
    void on_StayAwake_clicked() { emit openModule(19); }
    void on_SystemInformation_clicked() { emit openModule(5); }
    void on_TrackCleaner_clicked() { emit openModule(6); }
    void on_TransparentTaskbar_clicked() { emit openModule(7); }
    void on_Troubleshooter_clicked() { emit openModule(8); }
    void on_LarkspurSettings_clicked() { emit openModule(9); }
    void on_WinIconExtractor_clicked() { emit openModule(18); }
    void on_WinIconGenerator_clicked() { emit openModule(17); }

    void on_AutoDarkModeStarButton_clicked() { toggleStar(0); }
    void on_AutoWallpaperChangerStarButton_clicked() { toggleStar(1); }
    void on_ImageConvertStarButton_clicked() { toggleStar(15); }
    void on_FolderSizeAnalyzerStarButton_clicked() { toggleStar(2); }
    void on_FindDuplicateStarButton_clicked() { toggleStar(3); }
    void on_FindDuplicateImageStarButton_clicked() { toggleStar(20); }
    void on_MyTrayIconStarButton_clicked() { toggleStar(12); }
    void on_ProcessManagerStarButton_clicked() { toggleStar(11); }
    void on_QRCodeStarButton_clicked() { toggleStar(16); }
    void on_RegwickStarButton_clicked() { toggleStar(14); }
    void on_SecureDeleteStarButton_clicked() { toggleStar(4); }
    void on_HotkeyStarButton_clicked() { toggleStar(13); }
    void on_SmartShortcutStarButton_clicked() { toggleStar(10); }
    void on_StayAwakeStarButton_clicked() { toggleStar(19); }
    void on_SystemInformationStarButton_clicked() { toggleStar(5); }
    void on_TrackCleanerStarButton_clicked() { toggleStar(6); }
    void on_TransparentTaskbarStarButton_clicked() { toggleStar(7); }
    void on_TroubleshooterStarButton_clicked() { toggleStar(8); }
    void on_LarkspurSettingsStarButton_clicked() { toggleStar(9); }
    void on_WinIconExtractorStarButton_clicked() { toggleStar(18); }
    void on_WinIconGeneratorStarButton_clicked() { toggleStar(17); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QLayout *buildHeader();
    QWidget *buildGrid();
    void buildCards(const ModuleTable &table);
    void connectCard(ModuleCard *card);
    void loadStarredWidgetList();
    void showStars();
    void saveStarredWidgetList();
    void toggleStar(int id);

    // Arranges the cards again if the number of columns has changed, or always with `force`.
    void columnCount(bool force = false);
    void relayout();
    void placeCards();
    int columns() const;
    bool matchesSearch(const ModuleCard &card) const;
    void spreadColumns();

    void makeCurrent(ModuleCard *card);
    void focusCard(ModuleCard *card);
    void moveFrom(ModuleCard *card, int key);
    void openFirstMatch();

    QHash<int, ModuleCard *> m_cards; // by module id
    QList<int> m_catalogue;
    StarredModules m_starred;
    int m_columnCount = -1;
    bool m_onScreen = false;     // since the first show event
    QList<ModuleCard *> m_shown; // the cards in the grid, row by row

    ModuleCard *m_current = nullptr; // the only card in the tab order
    QLineEdit *m_search = nullptr;
    QLabel *m_nothingFound = nullptr;
    QScrollArea *m_scrollArea = nullptr;
    QWidget *m_contents = nullptr;
    QGridLayout *m_grid = nullptr;
};
