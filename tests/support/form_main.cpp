#include "tests/support/test_environment.h"

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    // Without a display, unless one is asked for or always there; with the same fonts on every machine.
    if (!onWindows() && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("FONTCONFIG_FILE", DOUISHO_FONTS);
    // Windows' widths that a person at this machine keeps are neither read nor changed.
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    QApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
