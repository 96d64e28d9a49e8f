import QtQuick 2.15
import QtTest 1.2

// Whether the tests that run beside this one are drawn by OpenGL.
TestCase {
    name: "OpenglBackend"
    when: windowShown
    width: 100
    height: 100
    visible: true

    Item { id: item }

    function test_isOpengl() {
        tryCompare(item.GraphicsInfo, "api", GraphicsInfo.OpenGL)
    }
}
