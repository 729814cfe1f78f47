// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/FindDuplicateOptionsDialog.h"

#include "FindDuplicate/CustomFileTypeDialog.h"
#include "core/FileTypes.h"
#include "widgets/Controls.h"
#include "widgets/FLTreeView.h"
#include "widgets/Theme.h"

#include <QAction>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>

using duplicates::CustomFileType;
using duplicates::FinderSettings;
using duplicates::SelectableCategory;

using controls::image;

namespace
{

QString rowText(const SelectableCategory &category)
{
    return core::FileTypeCategory{category.name, category.extensions, true}.displayText();
}

int builtIn()
{
    return static_cast<int>(core::defaultFileTypes().size());
}

} // namespace

FindDuplicateOptionsDialog::FindDuplicateOptionsDialog(FinderSettings settings, QWidget *parent)
    : QDialog(parent),
      m_settings(std::move(settings)),
      m_categories(new FLTreeWidget(this)),
      m_selectAll(new QPushButton(tr("Select All"), this)),
      m_selectNone(new QPushButton(tr("Select None"), this)),
      m_add(new QPushButton(image("Add24"), tr("Add"), this)),
      m_edit(new QPushButton(image("Edit24"), tr("Edit"), this)),
      m_remove(new QPushButton(image("Delete24"), tr("Remove"), this)),
      m_ignoreSmall(new QCheckBox(tr("Ignore files smaller than"), this)),
      m_smallSize(new QSpinBox(this)),
      m_nothing(new QLabel(tr("No file type is selected: a search would find nothing."), this)),
      m_notStored(new QLabel(tr("The options could not be stored: Windows refused it."), this))
{
    setWindowTitle(tr("Options"));
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(theme::space);
    buildList(layout);
    buildSize(layout);
    buildButtons(layout);
    resize(640, 560);
    connectAll();
    showCategories();
}

void FindDuplicateOptionsDialog::buildList(QVBoxLayout *layout)
{
    auto *title = new QLabel(tr("File types to search for"), this);
    title->setFont(theme::sectionTitle(font()));
    m_categories->setObjectName(QStringLiteral("fileTypesTreeWidget"));
    m_categories->setAccessibleName(title->text());
    m_categories->setHeaderHidden(true);
    m_categories->setRootIsDecorated(false);
    m_categories->setTextElideMode(Qt::ElideRight);
    m_selectAll->setObjectName(QStringLiteral("selectAllButton"));
    m_selectNone->setObjectName(QStringLiteral("selectNoneButton"));
    m_add->setObjectName(QStringLiteral("addButton"));
    m_add->setToolTip(tr("Add a file type of your own"));
    m_edit->setObjectName(QStringLiteral("editButton"));
    m_edit->setToolTip(tr("Edit a file type that you have added (F2)"));
    m_remove->setObjectName(QStringLiteral("removeButton"));
    m_remove->setToolTip(tr("Remove a file type that you have added (Delete)"));
    m_nothing->setObjectName(QStringLiteral("nothingSelectedLabel"));
    m_nothing->setWordWrap(true);

    auto *side = new QVBoxLayout;
    side->setSpacing(theme::spaceSnug);
    for (QPushButton *button : {m_selectAll, m_selectNone, m_add, m_edit, m_remove}) {
        button->setAutoDefault(false);
        side->addWidget(button);
        if (button == m_selectNone)
            side->addSpacing(theme::space);
    }
    side->addStretch();
    auto *row = new QHBoxLayout;
    row->setSpacing(theme::space);
    row->addWidget(m_categories, 1);
    row->addLayout(side);
    layout->addWidget(title);
    layout->addLayout(row, 1);
    layout->addWidget(m_nothing);
}

void FindDuplicateOptionsDialog::buildSize(QVBoxLayout *layout)
{
    m_ignoreSmall->setObjectName(QStringLiteral("ignoreSmallFileCheckBox"));
    m_ignoreSmall->setChecked(m_settings.ignoreSmallFile);
    m_smallSize->setObjectName(QStringLiteral("smallFileSizeSpinBox"));
    m_smallSize->setAccessibleName(m_ignoreSmall->text());
    // A stored number beyond the dialog's limit is in effect, so it is shown and kept until it is changed.
    m_smallSize->setRange(std::min(0, m_settings.smallFileSize),
                          std::max(duplicates::maxSmallFileSize, m_settings.smallFileSize));
    m_smallSize->setValue(m_settings.smallFileSize);
    auto *unit = new QLabel(tr("KB"), this);
    auto *row = new QHBoxLayout;
    row->setSpacing(theme::spaceSnug);
    row->addWidget(m_ignoreSmall);
    row->addWidget(m_smallSize);
    row->addWidget(unit);
    row->addStretch();
    // The label and the scan deliberately use different units; this text explains it to the user.
    const QString help = tr("The number is compared with the size of a file in bytes, and it is in force "
                            "whether the box is checked or not: 20 leaves out files of up to 19 bytes.");
    m_ignoreSmall->setToolTip(help);
    m_smallSize->setToolTip(help);
    layout->addLayout(row);
}

void FindDuplicateOptionsDialog::buildButtons(QVBoxLayout *layout)
{
    auto *ok = new QPushButton(tr("OK"), this);
    ok->setObjectName(QStringLiteral("OKButton"));
    ok->setDefault(true);
    theme::makePrimary(ok);
    auto *cancel = new QPushButton(tr("Cancel"), this);
    cancel->setObjectName(QStringLiteral("CancelButton"));
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(ok, QDialogButtonBox::AcceptRole);
    buttons->addButton(cancel, QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &FindDuplicateOptionsDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_notStored->setObjectName(QStringLiteral("notStoredLabel"));
    m_notStored->setWordWrap(true);
    m_notStored->hide();
    layout->addWidget(m_notStored);
    layout->addWidget(buttons);
}

void FindDuplicateOptionsDialog::connectAll()
{
    connect(m_selectAll, &QAbstractButton::clicked, this, [this] { checkAll(Qt::Checked); });
    connect(m_selectNone, &QAbstractButton::clicked, this, [this] { checkAll(Qt::Unchecked); });
    connect(m_add, &QAbstractButton::clicked, this, [this] { editCustomType(-1); });
    connect(m_edit, &QAbstractButton::clicked, this, [this] { editCustomType(currentCustomType()); });
    connect(m_remove, &QAbstractButton::clicked, this, &FindDuplicateOptionsDialog::removeCustomType);
    connect(m_categories, &QTreeWidget::currentItemChanged, this, &FindDuplicateOptionsDialog::enableButtons);
    connect(m_categories, &QTreeWidget::itemChanged, this, &FindDuplicateOptionsDialog::enableButtons);
    const auto key = [this](const QKeySequence &sequence, QAbstractButton *button) {
        auto *action = new QAction(m_categories);
        action->setShortcut(sequence);
        action->setShortcutContext(Qt::WidgetShortcut);
        m_categories->addAction(action);
        connect(action, &QAction::triggered, button, &QAbstractButton::click);
    };
    key(Qt::Key_F2, m_edit);
    key(QKeySequence::Delete, m_remove);
}

void FindDuplicateOptionsDialog::showCategories()
{
    const int row = m_categories->indexOfTopLevelItem(m_categories->currentItem());
    // While the list is rebuilt it emits changes of the current row, and contains rows of removed categories.
    const QSignalBlocker untilItFits(m_categories);
    m_categories->clear();
    for (const SelectableCategory &category : m_settings.categories) {
        auto *item = new QTreeWidgetItem(m_categories, {rowText(category)});
        item->setIcon(0, QIcon(core::fileTypeIcon(category.name)));
        item->setToolTip(0, rowText(category));
        item->setCheckState(0, category.selected ? Qt::Checked : Qt::Unchecked);
    }
    const int last = m_categories->topLevelItemCount() - 1;
    m_categories->setCurrentItem(m_categories->topLevelItem(std::clamp(row, 0, last)));
    enableButtons();
}

void FindDuplicateOptionsDialog::checkAll(Qt::CheckState state)
{
    for (int row = 0; row < m_categories->topLevelItemCount(); ++row)
        m_categories->topLevelItem(row)->setCheckState(0, state);
}

void FindDuplicateOptionsDialog::enableButtons()
{
    const bool custom = currentCustomType() >= 0;
    m_edit->setEnabled(custom);
    m_remove->setEnabled(custom);
    const duplicates::CategorySelection categories = edited().categories;
    m_nothing->setVisible(std::none_of(categories.cbegin(), categories.cend(),
                                       [](const SelectableCategory &category) { return category.selected; }));
}

FinderSettings FindDuplicateOptionsDialog::edited() const
{
    FinderSettings edited = m_settings;
    int row = 0;
    for (SelectableCategory &category : edited.categories)
        if (const QTreeWidgetItem *item = m_categories->topLevelItem(row++))
            category.selected = item->checkState(0) == Qt::Checked;
    edited.ignoreSmallFile = m_ignoreSmall->isChecked();
    edited.smallFileSize = m_smallSize->value();
    return edited;
}

int FindDuplicateOptionsDialog::currentCustomType() const
{
    return std::max(-1, m_categories->indexOfTopLevelItem(m_categories->currentItem()) - builtIn());
}

void FindDuplicateOptionsDialog::editCustomType(int index)
{
    duplicates::CategorySelection others = edited().categories;
    const std::size_t before =
        index < 0 ? others.size() : static_cast<std::size_t>(builtIn()) + static_cast<std::size_t>(index);
    if (index >= 0)
        others.erase(others.begin() + builtIn() + index);
    const CustomFileType type =
        index < 0 ? CustomFileType() : m_settings.customTypes[static_cast<std::size_t>(index)];
    auto *dialog = new CustomFileTypeDialog(type, std::move(others), before, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &CustomFileTypeDialog::typeEntered, this,
            [this, index](const CustomFileType &entered) { putCustomType(index, entered); });
    dialog->open();
}

void FindDuplicateOptionsDialog::putCustomType(int index, const CustomFileType &type)
{
    m_settings = edited();
    const SelectableCategory category{type.name, type.extensions, true};
    if (index < 0) {
        m_settings.customTypes.push_back(type);
        m_settings.categories.push_back(category);
    } else {
        m_settings.customTypes[static_cast<std::size_t>(index)] = type;
        SelectableCategory &changed = m_settings.categories[static_cast<std::size_t>(builtIn() + index)];
        changed.name = type.name;
        changed.extensions = type.extensions;
    }
    showCategories();
    if (index < 0)
        m_categories->setCurrentItem(m_categories->topLevelItem(m_categories->topLevelItemCount() - 1));
}

void FindDuplicateOptionsDialog::removeCustomType()
{
    const int index = currentCustomType();
    if (index < 0)
        return;
    m_settings = edited();
    m_settings.customTypes.erase(m_settings.customTypes.begin() + index);
    m_settings.categories.erase(m_settings.categories.begin() + builtIn() + index);
    showCategories();
}

void FindDuplicateOptionsDialog::accept()
{
    const bool stored = duplicates::saveFinderSettings(edited());
    m_notStored->setVisible(!stored);
    if (stored)
        QDialog::accept();
}
