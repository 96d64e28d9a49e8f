// Runs the tests of the QML module, with types of their own: RfUtilsTest 1.0.
#include <qqml.h>
#include <QtQuickTest>

#include "allocationCounter.h"
#include "commandOutput.h"
#include "documentPages.h"
#include "itemPicture.h"
#include "modelTester.h"
#include "stage.h"
#include "testFolder.h"

class Setup : public QObject {
    Q_OBJECT

public:
    Setup() {
        qunsetenv("LD_PRELOAD");  // not for the programs that tests start
        qmlRegisterType<AllocationCounter>("RfUtilsTest", 1, 0, "AllocationCounter");
        qmlRegisterType<CommandOutput>("RfUtilsTest", 1, 0, "CommandOutput");
        qmlRegisterType<DocumentPages>("RfUtilsTest", 1, 0, "DocumentPages");
        qmlRegisterType<ItemPicture>("RfUtilsTest", 1, 0, "ItemPicture");
        qmlRegisterType<ModelTester>("RfUtilsTest", 1, 0, "ModelTester");
        qmlRegisterType<Stage>("RfUtilsTest", 1, 0, "Stage");
        qmlRegisterType<TestFolder>("RfUtilsTest", 1, 0, "TestFolder");
    }
};

QUICK_TEST_MAIN_WITH_SETUP(qml, Setup)

#include "runner.moc"
