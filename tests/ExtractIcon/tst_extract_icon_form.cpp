// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/ExportIconDialog.h"
#include "ExtractIcon/ExtractIconForm.h"
#include "ExtractIcon/IconFiles.h"
#include "ExtractIcon/Settings.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/RegistryTest.h"
#include "tests/support/TestFolder.h"
#include "widgets/ElidedLabel.h"
#include "widgets/NoticeBar.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QTest>

#include <memory>

namespace
{

QString sample(const QString &name)
{
    return QDir::toNativeSeparators(QCoreApplication::applicationDirPath() +
                                    QStringLiteral("/lib%1.dll").arg(name));
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class tst_extract_icon_form : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dialogs = std::make_unique<tests::FakeDialogs>();
        m_folder = std::make_unique<tests::TestFolder>();
        m_form = std::make_unique<ExtractIconForm>();
        m_form->resize(900, 600);
        m_form->show();
    }
    void cleanup()
    {
        m_form.reset();
        m_folder.reset();
        m_dialogs.reset();
    }

    void namesOfTheWindow();
    void listsNumberedGroups();
    void newerFileTakesThePlace();
    void exportsTheChosenSizes();
    void exportsAnIconFile();
    void exportsSeveral();
    void tellsOfAFailure();
    void followsToTheResourceFile();
    void remembersRecentFiles();

private:
    template <class Widget>
    Widget *find(const char *name)
    {
        return m_form->findChild<Widget *>(QLatin1StringView(name));
    }
    QListView *list() { return find<QListView>("listView"); }
    QStringList shown()
    {
        QStringList texts;
        for (int row = 0; row < list()->model()->rowCount(); ++row)
            texts.append(list()->model()->index(row, 0).data().toString());
        return texts;
    }
    // The window under test is no main window: what that would pass on is passed on here.
    void open(const QString &path, const QStringList &expected)
    {
        m_form->open(path);
        for (int i = 0; i < 200 && shown() != expected; ++i) {
            QTest::qWait(20);
            m_form->shellEvent(ShellEvent::RefreshIcons, 0);
        }
        QCOMPARE(shown(), expected);
    }
    ExportIconDialog *dialog()
    {
        ExportIconDialog *found = nullptr;
        [&] { QTRY_VERIFY((found = m_form->findChild<ExportIconDialog *>()) && found->isVisible()); }();
        return found;
    }

    std::unique_ptr<tests::FakeDialogs> m_dialogs;
    std::unique_ptr<tests::TestFolder> m_folder;
    std::unique_ptr<ExtractIconForm> m_form;
};

void tst_extract_icon_form::namesOfTheWindow()
{
    const std::pair<const char *, const char *> buttons[] = {
        {"loadButton", "Load Icons from Windows Library"},
        {"loadFileButton", "Load Icons from File"},
        {"exportButton", "Export Icon"}};
    for (const auto &[name, text] : buttons)
        QCOMPARE(find<QPushButton>(name)->text(), QLatin1StringView(text));
    QVERIFY(!find<QPushButton>("exportButton")->isEnabled());
    QCOMPARE(find<ElidedLabel>("openFileLabel")->text(), QStringLiteral("No icon file is opened."));
    QCOMPARE(icons::libraryNames().size(), 25);
    QVERIFY(icons::libraryPath(QStringLiteral("explorer.exe"))
                .endsWith(QStringLiteral("windows\\explorer.exe"), Qt::CaseInsensitive));
    QVERIFY(icons::libraryPath(QStringLiteral("shell32.dll"))
                .endsWith(QStringLiteral("system32\\shell32.dll"), Qt::CaseInsensitive));
}

void tst_extract_icon_form::listsNumberedGroups()
{
    open(sample(QStringLiteral("icon_samples")), {QStringLiteral("3"), QStringLiteral("70")});
    QTRY_VERIFY(!list()->model()->index(1, 0).data(Qt::DecorationRole).isNull());
    QVERIFY(find<QPushButton>("exportButton")->isEnabled()); // the first one is selected
    list()->clearSelection();
    QVERIFY(!find<QPushButton>("exportButton")->isEnabled());
    QTest::keyClicks(find<QLineEdit>("searchLine"), QStringLiteral("7"));
    QTRY_COMPARE(shown(), QStringList{QStringLiteral("70")});

    open(icons::libraryPath(QStringLiteral("no such.dll")), {});
    m_folder->makeFile(QStringLiteral("text.ico"), "neither icon nor library");
    open(m_folder->path(QStringLiteral("text.ico")), {});
}

// Both are asked for before a single message has been passed on.
void tst_extract_icon_form::newerFileTakesThePlace()
{
    const QString icon = QStringLiteral("one.ico");
    const auto source = icons::openIcons(sample(QStringLiteral("icon_samples")));
    const auto stored = icons::readIcon(*source, 3);
    m_folder->makeFile(icon, icons::iconFile(stored->directory, stored->bytes));
    m_form->open(sample(QStringLiteral("icon_samples")));
    open(m_folder->path(icon), {icon});
    QTest::qWait(200);
    m_form->shellEvent(ShellEvent::RefreshIcons, 0);
    QCOMPARE(shown(), QStringList{icon});
}

void tst_extract_icon_form::exportsTheChosenSizes()
{
    open(sample(QStringLiteral("icon_samples")), {QStringLiteral("3"), QStringLiteral("70")});
    m_form->OnDoubleClickListView(list()->model()->index(1, 0));
    QPointer<ExportIconDialog> open = dialog();
    QVERIFY(open);
    auto *sizes = open->findChild<QListWidget *>(QStringLiteral("listWidget"));
    const auto source = icons::openIcons(sample(QStringLiteral("icon_samples")));
    const QList<icons::IconImage> images = icons::decodeIcon(*icons::readIcon(*source, 70));
    QCOMPARE(sizes->count(), images.size());
    QCOMPARE(open->findChild<QLineEdit *>(QStringLiteral("nameLineEdit"))->text(),
             QStringLiteral("libicon_samples_70"));
    open->on_uncheckAllButton_clicked();
    QVERIFY(!open->findChild<QPushButton *>(QStringLiteral("exportPngButton"))->isEnabled());
    sizes->item(0)->setCheckState(Qt::Checked); // the last image
    m_dialogs->nextFolder.enqueue(m_folder->path());
    open->findChild<QPushButton *>(QStringLiteral("exportPngButton"))->click();
    QTRY_VERIFY(!open);
    const icons::ImageFacts last = images.last().facts;
    const QString name =
        QStringLiteral("libicon_samples_70_%1x%1_%2bits.png").arg(last.width).arg(last.depth);
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{name});
    QCOMPARE(QImage(m_folder->path(name)).convertToFormat(QImage::Format_ARGB32),
             images.last().image.convertToFormat(QImage::Format_ARGB32));
    QCOMPARE(m_dialogs->fileDialogs.first().title, QStringLiteral("Select folder ..."));
    QCOMPARE(icons::exportFolder.read(), m_folder->path());
}

// The file that the library was made of comes out again.
void tst_extract_icon_form::exportsAnIconFile()
{
    open(sample(QStringLiteral("icon_samples")), {QStringLiteral("3"), QStringLiteral("70")});
    m_form->OnDoubleClickListView(list()->model()->index(0, 0));
    QPointer<ExportIconDialog> open = dialog();
    open->on_uncheckAllButton_clicked(); // counts for PNG only
    m_dialogs->nextFileToSave.enqueue(m_folder->path(QStringLiteral("rocket.ico")));
    open->findChild<QPushButton *>(QStringLiteral("exportIcoButton"))->click();
    QTRY_VERIFY(!open);
    const QByteArray original =
        contents(QCoreApplication::applicationDirPath() + QStringLiteral("/rocket.ico"));
    const QByteArray written = contents(m_folder->path(QStringLiteral("rocket.ico")));
    QVERIFY(!original.isEmpty());
    icons::IconFileSource first(original), second(written);
    QCOMPARE(icons::readIcon(second, 0)->bytes, icons::readIcon(first, 0)->bytes);
    QCOMPARE(written.first(icons::headerBytes), original.first(icons::headerBytes));
}

void tst_extract_icon_form::exportsSeveral()
{
    open(sample(QStringLiteral("icon_samples")), {QStringLiteral("3"), QStringLiteral("70")});
    list()->selectAll();
    find<QPushButton>("exportButton")->click();
    QPointer<ExportIconDialog> open = dialog();
    m_dialogs->nextFolder.enqueue(m_folder->path());
    open->findChild<QPushButton *>(QStringLiteral("exportIcoButton"))->click();
    QTRY_VERIFY(!open);
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files).join(u' '),
             QStringLiteral("libicon_samples_3.ico libicon_samples_70.ico"));
}

void tst_extract_icon_form::tellsOfAFailure()
{
    open(sample(QStringLiteral("icon_samples")), {QStringLiteral("3"), QStringLiteral("70")});
    find<QPushButton>("exportButton")->click();
    QPointer<ExportIconDialog> open = dialog();
    auto *name = open->findChild<QLineEdit *>(QStringLiteral("nameLineEdit"));
    name->setText(QStringLiteral("..\\elsewhere"));
    open->on_exportPngButton_clicked(); // no dialog is opened for such a name
    QCOMPARE(m_dialogs->fileDialogs.size(), 0);
    name->setText(QStringLiteral("x"));
    m_dialogs->nextFolder.enqueue(m_folder->path(QStringLiteral("not there")));
    open->on_exportPngButton_clicked();
    const auto *notice = open->findChild<NoticeBar *>();
    QTRY_COMPARE(notice->kind(), NoticeBar::Kind::Error);
    QVERIFY(open->isVisible());
    QVERIFY(QDir(m_folder->path()).isEmpty());
    open->on_cancelButton_clicked();
    QTRY_VERIFY(!open);
}

// A library of Windows without icons of its own.
void tst_extract_icon_form::followsToTheResourceFile()
{
    const QString library = m_folder->makeFile(QStringLiteral("System32\\a.dll"),
                                               contents(sample(QStringLiteral("icon_samples_empty"))));
    QVERIFY(icons::openIcons(library, m_folder->path())->iconIds().isEmpty());
    m_folder->makeFile(QStringLiteral("SystemResources\\a.dll.mun"),
                       contents(sample(QStringLiteral("icon_samples"))));
    QCOMPARE(icons::openIcons(library, m_folder->path())->iconIds(), (QList<quint32>{3, 70}));
    QVERIFY(icons::openIcons(library, QStringLiteral("C:\\elsewhere"))->iconIds().isEmpty());
    // One that is cut short has no icons, and brings nothing down.
    const QByteArray whole = contents(sample(QStringLiteral("icon_samples")));
    const QString cut = m_folder->makeFile(QStringLiteral("cut.dll"), whole.first(whole.size() * 3 / 4));
    core::CancelFlag cancel;
    icons::listIcons(*icons::openIcons(cut, m_folder->path()), cancel);
}

void tst_extract_icon_form::remembersRecentFiles()
{
    for (int i = 0; i < 10; ++i)
        icons::addRecentFile(QStringLiteral("C:\\%1.dll").arg(i));
    icons::addRecentFile(QStringLiteral("c:\\5.DLL"));
    settings::writeString(settings::keys::extractIcon, u"recentFile1", u"not a path");
    QCOMPARE(icons::recentFiles().join(u' '),
             QStringLiteral("c:\\5.DLL C:\\8.dll C:\\7.dll C:\\6.dll C:\\4.dll C:\\3.dll C:\\2.dll"));
    open(sample(QStringLiteral("icon_samples")), {QStringLiteral("3"), QStringLiteral("70")});
    QTRY_COMPARE(icons::recentFiles().first(), sample(QStringLiteral("icon_samples")));
}

QTEST_MAIN(tst_extract_icon_form)
#include "tst_extract_icon_form.moc"
