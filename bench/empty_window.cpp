// SPDX-License-Identifier: GPL-3.0-or-later

// The least that a Qt Widgets program can do before its window is visible; the start of the application is
// measured against it.

#include <QApplication>
#include <QMainWindow>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Empty Window"));
    window.setGeometry(100, 100, 986, 513);
    window.show();
    return QApplication::exec();
}
