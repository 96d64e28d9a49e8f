import QtQml 2.15
import QtQuick 2.15
import QtTest 1.2
import RfUtils 1.0
import RfUtilsTest 1.0

TestCase {
    id: test
    name: "ToastModel"
    when: windowShown

    Component {
        id: page
        Item {
            property ToastModel toasts: ToastModel { id: toasts }
            property ModelTester tester: ModelTester { model: toasts }
            property SignalSpy counts: SignalSpy { target: toasts; signalName: "countChanged" }
            property SignalSpy fulls: SignalSpy { target: toasts; signalName: "fullChanged" }
        }
    }

    function test_keepsTen() {
        const p = createTemporaryObject(page, test)
        compare(p.tester.roles(), ["text"])
        compare(p.toasts.count, 0)
        compare(p.toasts.full, false)
        for (let i = 0; i < 10; ++i) {
            verify(p.toasts.push("text " + i))
        }
        compare(p.toasts.count, 10)
        compare(p.toasts.full, true)
        compare(p.counts.count, 10)
        compare(p.fulls.count, 1)
        verify(!p.toasts.push("one too many"))
        compare(p.counts.count, 10)
        compare(p.tester.values("text"), Array.from({ length: 10 }, (_, i) => "text " + i))

        p.tester.takeChanges()
        p.toasts.clear()
        compare(p.tester.takeChanges(), ["remove 0-9"])
        compare(p.toasts.count, 0)
        compare(p.toasts.full, false)
        compare(p.counts.count, 11)
        compare(p.fulls.count, 2)
        p.toasts.clear()
        compare(p.tester.takeChanges(), [])
        compare(p.counts.count, 11)
        compare(p.fulls.count, 2)
    }

    function test_texts_data() {
        return [
            { tag: "empty", text: "" },
            { tag: "several scripts", text: "Überlast Перегрузка 過負荷 \u{1F4E1}" },
            { tag: "what a cleared slot holds", text: "None" }
        ]
    }
    function test_texts(row) {
        const p = createTemporaryObject(page, test)
        verify(p.toasts.push(row.text))
        compare(p.tester.takeChanges(), ["insert 0-0"])
        compare(p.tester.values("text"), [row.text])
    }
}
