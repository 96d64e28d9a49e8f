// Loaded into rfutils ahead of it: stands for a Qt whose codec follows an 8-bit locale. (Builds with
// ICU, as Debian's, take UTF-8 under most locales.)
#include <QTextCodec>

namespace {

const bool isSet = [] {
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO 8859-1"));
    return true;
}();

}  // namespace
