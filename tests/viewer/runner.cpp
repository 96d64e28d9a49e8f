// Runs the tests of the viewer's pages, which it holds as the viewer does, with types of their own: ViewerTest 1.0.
#include <qqml.h>
#include <QApplication>
#include <QtQuickTest>

#include "machine.h"

class Setup : public QObject {
    Q_OBJECT

public:
    Setup() { qmlRegisterType<Machine>("ViewerTest", 1, 0, "Machine"); }
};

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    Setup setup;
    return quick_test_main_with_setup(argc, argv, "viewer", RFUTILS_VIEWER_TESTS, &setup);
}

#include "runner.moc"
