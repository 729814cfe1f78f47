// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/ExportIconDialog.h"

#include "ExtractIcon/Settings.h"
#include "ExtractIcon/engine/ExportNames.h"
#include "platform/Dialogs.h"
#include "widgets/Controls.h"
#include "widgets/JobHost.h"
#include "widgets/NoticeBar.h"
#include "widgets/Theme.h"

#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSet>
#include <QVBoxLayout>

#include <algorithm>

namespace
{

constexpr int listIconSide = 48;
constexpr int maxFailuresShown = 3;

using Size = std::pair<int, int>; // width and depth

Size sizeOf(const icons::ImageFacts &facts)
{
    return {facts.width, facts.depth};
}

} // namespace

ExportIconDialog::ExportIconDialog(Choice choice, QWidget *parent)
    : QDialog(parent),
      m_choice(std::move(choice)),
      m_list(new QListWidget(this)),
      m_name(new QLineEdit(this)),
      m_notice(new NoticeBar(this)),
      m_job(new JobHost(this))
{
    setWindowTitle(tr("Export Icon"));
    buildContent();
    fillList();
    QString name = QFileInfo(m_choice.source).completeBaseName();
    if (m_choice.records.size() == 1 && m_choice.records.first().id != icons::IconFileSource::onlyId)
        name += QStringLiteral("_%1").arg(m_choice.records.first().id);
    m_name->setText(name);
    updateButtons();
}

void ExportIconDialog::buildContent()
{
    auto *column = new QVBoxLayout(this);
    column->setSpacing(theme::spaceSnug);
    column->addWidget(m_notice);
    const qsizetype count = m_choice.records.size();
    auto *label = new QLabel(tr("Icon size to export:"), this);
    column->addWidget(label);
    if (count > 1)
        column->addWidget(
            new QLabel(tr("%1 icons are exported, each with its number in the name.").arg(count), this));
    m_list->setObjectName(QStringLiteral("listWidget"));
    m_list->setIconSize(QSize(listIconSide, listIconSide));
    m_list->setMinimumSize(360, 220);
    m_list->setAccessibleName(label->text());
    column->addWidget(m_list, 1);

    auto *checks = new QHBoxLayout;
    const auto button = [this](const char *objectName, const QString &text) {
        QPushButton *made = controls::pushButton(this, {.objectName = objectName, .text = text});
        made->setAutoDefault(false);
        m_buttons.append(made);
        return made;
    };
    checks->addWidget(button("checkAllButton", tr("Check All")));
    checks->addWidget(button("uncheckAllButton", tr("Uncheck All")));
    checks->addStretch();
    column->addLayout(checks);

    m_name->setObjectName(QStringLiteral("nameLineEdit"));
    auto *nameLabel = new QLabel(tr("Name:"), this);
    nameLabel->setBuddy(m_name);
    column->addWidget(nameLabel);
    column->addWidget(m_name);
    auto *actions = new QHBoxLayout;
    actions->addStretch();
    m_png = button("exportPngButton", tr("Export to PNG"));
    actions->addWidget(m_png);
    actions->addWidget(button("exportIcoButton", tr("Export to ICO")));
    QPushButton *cancel = controls::pushButton(this, {.objectName = "cancelButton", .text = tr("Cancel")});
    cancel->setAutoDefault(false);
    actions->addWidget(cancel);
    column->addLayout(actions);
    connect(m_list, &QListWidget::itemChanged, this, &ExportIconDialog::updateButtons);
    QMetaObject::connectSlotsByName(this);
}

// Each new row is inserted at the top, so row 0 is the last image.
void ExportIconDialog::fillList()
{
    for (const icons::IconImage &image : m_choice.images) {
        m_sizes.append(image.facts);
        addItem(image.facts, image.image, image.image.isNull() ? tr(" (damaged)") : QString());
    }
    if (!m_choice.images.isEmpty())
        return;
    QMap<Size, int> counts;
    for (const icons::IconRecord &record : m_choice.records) {
        for (const icons::ImageFacts &facts : record.images) {
            if (counts[sizeOf(facts)]++ == 0)
                m_sizes.append(facts);
        }
    }
    std::ranges::stable_sort(m_sizes, {}, sizeOf);
    for (const icons::ImageFacts &facts : std::as_const(m_sizes))
        addItem(facts, {}, tr(" (%1 images)").arg(counts[sizeOf(facts)]));
}

void ExportIconDialog::addItem(const icons::ImageFacts &facts, const QImage &image, const QString &more)
{
    auto *item = new QListWidgetItem(icons::sizeAndDepth(facts) + more);
    if (!image.isNull())
        item->setIcon(QPixmap::fromImage(image));
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setCheckState(Qt::Checked);
    m_list->insertItem(0, item);
}

void ExportIconDialog::setAllChecked(bool checked)
{
    for (int row = 0; row < m_list->count(); ++row)
        m_list->item(row)->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
}

void ExportIconDialog::on_checkAllButton_clicked()
{
    setAllChecked(true);
}

void ExportIconDialog::on_uncheckAllButton_clicked()
{
    setAllChecked(false);
}

void ExportIconDialog::updateButtons()
{
    bool any = false;
    for (int row = 0; row < m_list->count(); ++row)
        any = any || m_list->item(row)->checkState() == Qt::Checked;
    for (QPushButton *button : std::as_const(m_buttons))
        button->setEnabled(!m_job->isBusy());
    m_png->setEnabled(any && !m_job->isBusy());
}

bool ExportIconDialog::nameIsUsable()
{
    if (icons::isUsableName(m_name->text()))
        return true;
    m_notice->showNotice(NoticeBar::Kind::Warning,
                         tr("The name cannot be used for a file: it is empty, too long, or has one of these "
                            "characters: < > : \" / \\ | ? *"));
    m_name->setFocus();
    return false;
}

QString ExportIconDialog::chosenFolder()
{
    const QString folder =
        platform::dialogs().chooseFolder(this, tr("Select folder ..."), icons::exportFolder.read());
    if (!folder.isEmpty())
        icons::exportFolder.write(folder);
    return folder;
}

icons::ExportTask ExportIconDialog::task() const
{
    icons::ExportTask task;
    task.source = m_choice.source;
    for (const icons::IconRecord &record : m_choice.records)
        task.ids.append(record.id);
    task.name = m_name->text().trimmed();
    return task;
}

void ExportIconDialog::on_exportPngButton_clicked()
{
    if (!nameIsUsable())
        return;
    icons::ExportTask wish = task();
    wish.folder = chosenFolder();
    if (wish.folder.isEmpty())
        return;
    QList<bool> checked;
    QSet<Size> sizes;
    for (qsizetype i = 0; i < m_sizes.size(); ++i) {
        const int row = static_cast<int>(m_sizes.size() - 1 - i);
        checked.append(m_list->item(row)->checkState() == Qt::Checked);
        if (checked.last())
            sizes.insert(sizeOf(m_sizes[i]));
    }
    if (m_choice.images.isEmpty())
        wish.isWanted = [sizes](const icons::ImageFacts &facts, qsizetype) {
            return sizes.contains(sizeOf(facts));
        };
    else
        wish.isWanted = [checked](const icons::ImageFacts &, qsizetype index) {
            return checked.value(index);
        };
    start(std::move(wish), true);
}

void ExportIconDialog::on_exportIcoButton_clicked()
{
    if (!nameIsUsable())
        return;
    icons::ExportTask wish = task();
    if (wish.ids.size() > 1) {
        wish.folder = chosenFolder();
        if (wish.folder.isEmpty())
            return;
    } else {
        const QString suggested =
            QDir(icons::exportFolder.read()).filePath(wish.name + QStringLiteral(".ico"));
        wish.file = platform::dialogs().chooseFileToSave(this, tr("Save to ICO File"), suggested,
                                                         tr("ICO files (*.ico)"));
        if (wish.file.isEmpty())
            return;
        icons::exportFolder.write(QDir::toNativeSeparators(QFileInfo(wish.file).path()));
    }
    start(std::move(wish), false);
}

void ExportIconDialog::start(icons::ExportTask task, bool png)
{
    m_job->run(
        {.busyText = tr("the export of icons")},
        [task = std::move(task), png](const core::JobControl &job) {
            return png ? icons::exportPng(task, job.cancel) : icons::exportIco(task, job.cancel);
        },
        [this](auto &job) {
            const std::optional<icons::ExportResult> result = job.takeResult();
            finish(result.value_or(icons::ExportResult{}), job.error());
        });
    updateButtons();
}

void ExportIconDialog::finish(const icons::ExportResult &result, const QString &error)
{
    updateButtons();
    QStringList failures = result.failures;
    if (!error.isEmpty())
        failures.append(error);
    if (result.written > 0)
        emit exported(result.written, result.firstWritten);
    if (failures.isEmpty()) {
        accept();
        deleteLater();
        return;
    }
    const qsizetype more = failures.size() - maxFailuresShown;
    QString text = tr("%1 files were written, %2 were not: %3")
                       .arg(result.written)
                       .arg(failures.size())
                       .arg(failures.first(std::min<qsizetype>(failures.size(), maxFailuresShown))
                                .join(QStringLiteral("; ")));
    if (more > 0)
        text += tr("; and %1 more").arg(more);
    m_notice->showNotice(NoticeBar::Kind::Error, text);
}

void ExportIconDialog::on_cancelButton_clicked()
{
    reject();
}

// During an export this cancels the export; files already written are kept.
void ExportIconDialog::reject()
{
    if (m_job->isBusy()) {
        m_job->cancel();
        return;
    }
    QDialog::reject();
    deleteLater();
}
