// Test main of the controls: one QApplication on the offscreen platform (or
// the virtual display that the screenshot test gets), with a font pinned for the demo's labels.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>
#include <cstdlib>

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  if (std::getenv("DISPLAY") == nullptr) setenv("QT_QPA_PLATFORM", "offscreen", 0);
  QApplication app(argc, argv);
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setPointSize(8);
  QApplication::setFont(font);
  return RUN_ALL_TESTS();
}
