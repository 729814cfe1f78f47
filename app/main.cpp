// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/InstallationFolder.h"
#include "app/MainWindow.h"
#include "app/Product.h"
#include "app/Resources.h"
#include "app/SingleInstance.h"
#include "platform/Drives.h"
#include "widgets/Theme.h"

#include <QApplication>
#include <QIcon>

int main(int argc, char *argv[])
{
    // The JIT of regular expressions allocates a stack per thread for long texts. With this compiler it is
    // freed after the allocator that owns it, which crashes the program when the thread ends.
    qputenv("QT_ENABLE_REGEXP_JIT", "0");
    initResources();
    // Uses 125 % and 150 % as they are, instead of rounding to whole factors.
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication application(argc, argv);
    theme::install();
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/resources/images/rocket.ico")));
    QApplication::setApplicationVersion(product::version().toString());

    platform::neverAskForDisks();
    installation::load();

    const QString title(product::name);
    const SingleInstance instance;
    if (instance.activateFirst(title))
        return 0;

    MainWindow window;
    window.setWindowTitle(title);
    // Exits even if other windows are still open: Qt would wait until all of them are closed.
    QObject::connect(
        &window, &MainWindow::closed, &application, [] { QCoreApplication::exit(); }, Qt::QueuedConnection);
    window.show();
    return QApplication::exec();
}
