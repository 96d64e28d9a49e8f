import QtQuick 2.15
import QtTest 1.2
import RfUtils 1.0

// The panel of the installed examples reads its recording, and looks as its picture shows.
TestCase {
    id: test
    name: "Installed"
    when: windowShown
    width: 1024
    height: 600
    visible: true

    function test_instrument() {
        const panel = Qt.createComponent("file:///usr/share/doc/librfutils-doc/examples/instrument/Instrument.qml")
        compare(panel.errorString(), "")
        const page = createTemporaryObject(panel, test)
        const receiver = findChild(page, "receiver")
        tryCompare(receiver, "status", RecordingSource.Ready, 20000)
        compare(receiver.sweeps, 240)
        let saved = false
        page.grabToImage(picture => { saved = picture.saveToFile("installed_instrument.png") })
        tryVerify(() => saved)
    }
}
