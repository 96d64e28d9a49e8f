import QtQml 2.15
import QtQuick 2.15
import QtTest 1.2
import RfUtilsTest 1.0

// The pages of README.md and docs/views.md show what stands under them, and the examples in headers are valid.
TestCase {
    id: test
    name: "Documents"
    when: windowShown // views judge what they show
    width: 800
    height: 600
    visible: true

    DocumentPages { id: documents }

    /// The texts of an item and those in it, a line each.
    function textsOf(item) {
        if (typeof item.text === "string") {
            return item.text + "\n"
        }
        const inner = [].slice.call(item.children)
        if (item.contentItem) {
            inner.push(item.contentItem)
        }
        return Array.from(new Set(inner)).map(test.textsOf).join("")
    }

    function test_pages_data() {
        const pages = documents.pages()
        verify(pages.length >= 7)
        return pages
    }
    function test_pages(row) {
        const component = Qt.createComponent(row.source)
        compare(component.errorString(), "")
        const page = createTemporaryObject(component, test)
        tryVerify(() => test.textsOf(page) === row.text, 5000, test.textsOf(page))
    }

    // They name what they do not show, such as a trace, so they are not made.
    function test_headerExamplesCompile_data() {
        const pages = documents.headerPages()
        verify(pages.length >= 14)
        return pages
    }
    function test_headerExamplesCompile(row) {
        compare(Qt.createComponent(row.source).errorString(), "")
    }
}
