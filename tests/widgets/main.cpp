#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // By hand as well as from ctest, no window may come up and take keys from whoever works here.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
