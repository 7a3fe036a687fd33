// One application object for all GUI tests of the process.
#include "adapters/qt/Application.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen"); // The tests need no screen, also when they are only listed.
    }
    quavernet::Application application(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9)); // Sizes in tests are those of this one.
    return RUN_ALL_TESTS();
}
