// Window tests need an application, which has to be made before the first of them.
#include <QApplication>

#include <gtest/gtest.h>

#include "common/ui/theme.h"

int main(int argc, char** argv) {
    // Unless somebody wants to watch.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const zorvane::Theme theme(application);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
