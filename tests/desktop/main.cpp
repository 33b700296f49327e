#include <gtest/gtest.h>

#include <QApplication>

#include "desktop/style.h"

int main(int argc, char** argv) {
  // No screen is needed, and none is disturbed.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  desktop::applyStyle(application);
  QApplication::setQuitOnLastWindowClosed(false);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
