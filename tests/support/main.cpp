// The main() of every test program: sets the process's locale to RFUTILS_TEST_LOCALE and makes a Qt application that
// needs no display.
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

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    // Fonts and pictures without a display. Qt's platform "offscreen" leaks its screen.
    qputenv("QT_QPA_PLATFORM", "minimal:enable_fonts");
    const Application application(argc, argv);
    if (const char* name = std::getenv("RFUTILS_TEST_LOCALE")) {
        try {
            std::locale::global(std::locale(name));
            qputenv("LC_ALL", name);  // for code that reads the environment
        } catch (const std::runtime_error&) {
            std::fprintf(stderr, "the locale %s is not installed\n", name);
            return 1;
        }
    }
    return RUN_ALL_TESTS();
}
