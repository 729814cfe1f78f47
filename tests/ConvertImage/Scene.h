// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/ConvertImageForm.h"
#include "settings/Keys.h"
#include "settings/Settings.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QListView>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

#include <memory>

namespace tests::convert
{

using namespace Qt::StringLiterals;

inline constexpr QStringView key = settings::keys::convertImage;

inline QImage photograph(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgb(x * 255 / width, y * 255 / height, 128 + (x * 5 + y * 3) % 31));
    }
    return image;
}

// A form with some pictures in a folder.
struct Scene {
    TestFolder folder;
    FakeDialogs dialogs;
    std::unique_ptr<ConvertImageForm> form;

    Scene()
    {
        folder.makeFolder(u"in\\deep"_s);
        folder.makeFolder(u"out"_s);
        photograph(320, 200).save(folder.path(u"in\\a.png"_s));
        QFile noEnd(folder.path(u"in\\deep\\\u65e5\u672c.jpg"_s));
        photograph(200, 120).save(noEnd.fileName());
        noEnd.resize(noEnd.size() - 2);
        folder.makeFile(u"in\\broken.jpg"_s, "\xff\xd8\xff\xe0 no picture");
        settings::writeString(key, u"OutputFolder", folder.path(u"out"_s));
    }
    void open()
    {
        form = std::make_unique<ConvertImageForm>();
        form->resize(986, 513);
        form->show();
    }
    QListView *list() const { return form->findChild<QListView *>(u"sourceListView"_s); }
    bool add(const QStringList &paths, int expected)
    {
        form->addPaths(paths);
        return QTest::qWaitFor([&] { return list()->model()->rowCount() == expected; }, 20'000);
    }
    bool convert()
    {
        QSignalSpy shown(form.get(), &ConvertImageForm::resultsShown);
        form->convert();
        return shown.count() > 0 || shown.wait(60'000);
    }
    QStringList results(int column = 1) const
    {
        const auto *table = form->findChild<QTableView *>(u"conversionTableView"_s);
        QStringList texts;
        for (int row = 0; row < table->model()->rowCount(); ++row)
            texts.append(table->model()->index(row, column).data().toString());
        return texts;
    }
    QStringList outputs() const { return QDir(folder.path(u"out"_s)).entryList(QDir::Files, QDir::Name); }
};

} // namespace tests::convert
