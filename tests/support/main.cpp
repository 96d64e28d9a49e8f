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

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    // Fonts and pictures without a display. Qt's platform "offscreen" would never free its screen.
    qputenv("QT_QPA_PLATFORM", "minimal:enable_fonts");
    const Application application(argc, argv);
    if (const char* name = std::getenv("RFUTILS_TEST_LOCALE")) {
        try {
            std::locale::global(std::locale(name));
            qputenv("LC_ALL", name);  // for whoever asks the environment
        } catch (const std::runtime_error&) {
            std::fprintf(stderr, "the locale %s is not installed\n", name);
            return 1;
        }
    }
    return RUN_ALL_TESTS();
}
