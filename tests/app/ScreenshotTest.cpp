// Shows the dialog on a real X display (xvfb-run), runs the two visible
// measuring kinds, and saves what the screen shows to a PNG in the build tree.
#include <gtest/gtest.h>

#include <QApplication>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QSet>
#include <QTest>

#include "app/TachyrunDlg.h"

namespace tachyrun {
namespace {

TEST(Screenshot, VisibleDialogIsSavedAsPng) {
  CTachyrunDlg dlg;
  dlg.Create();
  dlg.LimitRoundsForTesting(200);
  dlg.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&dlg));
  dlg.RunControl(1021);
  dlg.RunControl(1033);
  QTest::qWait(200);

  QPixmap shot;
  if (QGuiApplication::platformName() == "xcb") {
    shot = dlg.screen()->grabWindow(dlg.winId());
  } else {
    shot = dlg.grab();
  }
  const QImage image = shot.toImage();
  ASSERT_EQ(image.size(), dlg.size());
  QSet<QRgb> colours;
  for (int y = 0; y < image.height(); y += 3)
    for (int x = 0; x < image.width(); x += 3) colours.insert(image.pixel(x, y));
  EXPECT_GT(colours.size(), 8);  // text and buttons, not a blank window
  ASSERT_TRUE(image.save(TACHYRUN_SCREENSHOT_PATH, "PNG"));
}

}  // namespace
}  // namespace tachyrun
