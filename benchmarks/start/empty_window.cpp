// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QToolBar>

/// The smallest program with a window: menus and a toolbar without any function.
int main(int argc, char *argv[]) {
    QApplication application(argc, argv);
    QMainWindow window;
    auto *bar = window.addToolBar("Tools");
    for (const char *title : {"&File", "Collect &Data", "&View", "&Help"}) {
        QMenu *menu = window.menuBar()->addMenu(title);
        for (int i = 1; i <= 8; ++i) {
            QAction *action = menu->addAction(QString{"Command &%1"}.arg(i));
            if (i <= 3)
                bar->addAction(action);
        }
    }
    window.resize(577, 420);
    window.show();
    return QApplication::exec();
}
