// SPDX-License-Identifier: GPL-3.0-or-later
// The part of the results page that compares contents.
#include "FindDuplicate/FindDuplicateResultForm.h"

#include "FindDuplicate/MemberModel.h"
#include "widgets/ElidedLabel.h"

#include <QProgressBar>
#include <QPushButton>

#include <algorithm>

using duplicates::ContentState;

void FindDuplicateResultForm::compareContents()
{
    const int group = m_memberModel->groupIndex();
    if (group < 0 || isBusy())
        return;
    const duplicates::DuplicateGroup &compared = groupAt(group);
    QStringList paths;
    m_comparedMembers.clear();
    for (std::size_t member = 0; member < compared.members.size(); ++member) {
        if (compared.members[member].moved)
            continue;
        m_comparedMembers.push_back(static_cast<int>(member));
        paths.append(compared.members[member].fullPath());
    }
    if (paths.size() < 2) {
        showNotice(NoticeBar::Kind::Info, tr("There is only one file left in this group."));
        return;
    }
    m_comparedGroup = group;
    auto *worker = new FindDuplicateCompareThread(paths, compared.size);
    connect(worker, &FindDuplicateCompareThread::compareFinish, this,
            &FindDuplicateResultForm::onCompareFinish);
    jobs().begin({.busyText = tr("the comparison of files")}, [this] { cancelComparison(); });
    m_comparing.run(worker);
    m_compareBar->setValue(0);
    showComparing(true);
}

// Does not wait: the comparison may be in a read that takes minutes on a lost share.
void FindDuplicateResultForm::cancelComparison()
{
    if (!m_comparing.isWaiting())
        return;
    m_comparing.forget();
    jobs().end();
    showComparing(false);
    showNotice(NoticeBar::Kind::Info, tr("The comparison was cancelled."));
}

void FindDuplicateResultForm::showComparing(bool comparing)
{
    const bool hadFocus = m_compareCancel->hasFocus();
    m_compareBar->setVisible(comparing);
    m_compareCancel->setVisible(comparing);
    m_compare->setVisible(!comparing);
    m_groupTitle->setVisible(!comparing);
    if (comparing)
        m_compareTicker.start();
    else
        m_compareTicker.stop();
    enableTools();
    if (hadFocus)
        m_compare->setFocus();
}

void FindDuplicateResultForm::showCompareProgress()
{
    if (const auto *worker = m_comparing.current<FindDuplicateCompareThread>())
        m_compareBar->setValue(worker->permille());
}

void FindDuplicateResultForm::onCompareFinish()
{
    auto *worker = m_comparing.current<FindDuplicateCompareThread>();
    const std::vector<ContentState> states = worker->takeStates();
    const QString error = worker->error();
    m_comparing.forget();
    jobs().keepOpen();
    jobs().end();
    showComparing(false);

    std::vector<ContentState> byMember(groupAt(m_comparedGroup).members.size(), ContentState::NotCompared);
    for (std::size_t i = 0; i < states.size(); ++i)
        byMember[static_cast<std::size_t>(m_comparedMembers[i])] = states[i];
    m_contents.insert(m_comparedGroup, byMember);
    if (m_memberModel->groupIndex() == m_comparedGroup) {
        m_memberModel->setContents(byMember);
        factsChanged(m_comparedGroup);
    }
    showCompared(states, error);
}

void FindDuplicateResultForm::showCompared(const std::vector<ContentState> &states, const QString &error)
{
    using Kind = NoticeBar::Kind;
    const auto count = [&](ContentState state) { return std::count(states.cbegin(), states.cend(), state); };
    if (count(ContentState::Reference) == 0)
        showNotice(Kind::Warning, tr("None of these files could be compared. %1").arg(error).trimmed());
    else
        showNotice(
            count(ContentState::Different) > 0 ? Kind::Warning : Kind::Info,
            tr("Compared byte by byte with the first file that could be read: %1 identical, %2 "
               "different, %3 not read.")
                .arg(QString::number(count(ContentState::Identical)),
                     QString::number(count(ContentState::Different)),
                     QString::number(count(ContentState::Unreadable) + count(ContentState::Placeholder))));
}
