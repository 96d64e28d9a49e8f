#include "views/page.h"

#include <QApplication>
#include <QQmlComponent>

#include <stdexcept>

namespace rfu::bench {

namespace {

bool startApplication() {
    static int count = 1;
    static char name[] = "bench_views";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "minimal:enable_fonts");
    qputenv("QT_QUICK_BACKEND", "software");
    // With widgets, which Qt Charts draws on.
    static const QApplication application(count, arguments);
    return true;
}

}  // namespace

Page::Page(const QByteArray& qml) : isStarted_(startApplication()), window_(&control_) {
    engine_.addImportPath(QStringLiteral(RFUTILS_QML_FOLDER));
    QQmlComponent component(&engine_);
    component.setData(qml, {});
    root_.reset(qobject_cast<QQuickItem*>(component.create()));
    if (root_ == nullptr) {
        throw std::runtime_error(component.errorString().toStdString());
    }
    window_.setGeometry(QRect({0, 0}, kSize));
    window_.setColor(Qt::white);
    root_->setParentItem(window_.contentItem());
    root_->setSize(kSize);
    control_.initialize(nullptr);
}

QImage Page::frame() {
    QCoreApplication::processEvents();
    control_.polishItems();
    control_.sync();
    return control_.grab();
}

}  // namespace rfu::bench
