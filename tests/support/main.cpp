// The main of every test program: takes the process's locale from RFUTILS_TEST_LOCALE, so that the
// same tests run under a decimal comma too, and gives Qt an application that needs no display.
#include <gtest/gtest.h>

#ifdef QT_GUI_LIB
#include <QGuiApplication>
using Application = QGuiApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif

#include <cstdio>
#include <cstdlib>
#include <locale>
#include <stdexcept>

#if defined(QT_GUI_LIB) && defined(__SANITIZE_ADDRESS__)
// Qt's offscreen platform never frees its screen. The stacks that name it need the slow unwinder.
// NOLINTBEGIN(bugprone-reserved-identifier): the sanitizers look for these names
extern "C" const char* __asan_default_options() {
    return "fast_unwind_on_malloc=0";
}
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libqoffscreen.so\n";
}
// NOLINTEND(bugprone-reserved-identifier)
#endif

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const Application application(argc, argv);
    if (const char* name = std::getenv("RFUTILS_TEST_LOCALE")) {
        try {
            std::locale::global(std::locale(name));
        } catch (const std::runtime_error&) {
            std::fprintf(stderr, "the locale %s is not installed\n", name);
            return 1;
        }
    }
    return RUN_ALL_TESTS();
}
