// SPDX-License-Identifier: MIT
#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // Off-screen, unless somebody wants to watch.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
