// The tests of the desktop front end, with the one application object that Qt wants.
#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", VK32_OFFSCREEN);
  QApplication::setDesktopSettingsAware(false);
  QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);  // a test has no hands in them
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
