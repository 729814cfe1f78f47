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
    // Just-in-time compiled expressions keep a stack on each thread that saw a long text. With this compiler
    // it is freed after the memory that knew of it, and the program goes down when the thread ends.
    qputenv("QT_ENABLE_REGEXP_JIT", "0");
    initResources();
    // 125 % and 150 % are drawn as such, not rounded to whole factors.
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
    // Whatever else may still be open: Qt itself waits for every window that it takes for one of the user's.
    QObject::connect(
        &window, &MainWindow::closed, &application, [] { QCoreApplication::exit(); }, Qt::QueuedConnection);
    window.show();
    return QApplication::exec();
}
