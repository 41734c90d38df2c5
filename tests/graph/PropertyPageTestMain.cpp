// Test main of the property page: GStreamer and one QApplication on the
// offscreen platform (or the display there is).
#include <gst/gst.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <cstdlib>

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  if (std::getenv("DISPLAY") == nullptr) setenv("QT_QPA_PLATFORM", "offscreen", 0);
  gst_init(&argc, &argv);
  QApplication app(argc, argv);
  return RUN_ALL_TESTS();
}
