// Test main of the Qt tests: one QApplication on the offscreen platform (or
// the display xvfb-run provides), with the dialog font as application font.
#include <gtest/gtest.h>

#include <QApplication>
#include <cstdlib>

#include "app/DialogBuilder.h"

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  if (std::getenv("DISPLAY") == nullptr) setenv("QT_QPA_PLATFORM", "offscreen", 0);
  QApplication app(argc, argv);
  QApplication::setFont(tachyrun::DialogFont());
  return RUN_ALL_TESTS();
}
