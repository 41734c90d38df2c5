// The test dialog with the real engine: clicks, keys, result lines, the
// about command, the effect test and the file choice.
#include <gtest/gtest.h>
#include <unistd.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QCursor>
#include <QDir>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <filesystem>
#include <string>

#include "app/TachyrunDlg.h"
#include "measure/ResultLines.h"

namespace tachyrun {
namespace {

constexpr int kFewRounds = 2;
const char* const kTimeLine = R"(Time: \d+\.\d{3} ms  Res=-?\d+$)";

QString Text(const CTachyrunDlg& dlg, int iEdit) {
  return dlg.ControlText(iEdit);
}

bool Matches(const QString& text, const QString& pattern) {
  return QRegularExpression(pattern).match(text).hasMatch();
}

// A button, the edit that shows its line, and how that line begins.
struct LineCase {
  int iButton;
  int iEdit;
  const char* szPrefix;
};

class DialogWithEngine : public ::testing::Test {
 protected:
  void SetUp() override {
    m_Dlg.Create();
    m_Dlg.LimitRoundsForTesting(kFewRounds);
  }
  void Click(int iId) { QTest::mouseClick(m_Dlg.Control(iId), Qt::LeftButton); }
  CTachyrunDlg m_Dlg;
};

TEST_F(DialogWithEngine, CpuButtonsWriteTheirLinesWithStatusZero) {
  for (const LineCase& c :
       {LineCase{1015, 1010, "Img_ResizeARGB Lin IPPMEM\\+BUFF RGB32 720x576 1920x1080 "},
        LineCase{1016, 1011, "Img_ResizeARGB Lin Multi IPPMEM RGB32 720x576 1920x1080 "},
        LineCase{1019, 1014, "Img_Resize IPPMEM RGB32 720x576 1920x1080 LIN1 "}}) {
    Click(c.iButton);
    const QString line = Text(m_Dlg, c.iEdit);
    EXPECT_TRUE(Matches(line, QString("^") + c.szPrefix + kTimeLine)) << line.toStdString();
    EXPECT_TRUE(line.endsWith("Res=0")) << line.toStdString();
  }
}

TEST_F(DialogWithEngine, DisabledTestButtonsIgnoreClicksButTheirHandlersRun) {
  for (const LineCase& c :
       {LineCase{1006, 1001, "Img_Resize YUY2 720x576 1920x1080 "},
        LineCase{1007, 1002, "Img_Convert2 IPPMEM 4P 1920x1080 1920x1080 YUY2 RGB32 "},
        LineCase{1008, 1003, "Img_Convert2 IPPMEM 1P 1920x1080 1920x1080 YUY2 RGB32 "},
        LineCase{1009, 1004, "Img_Convert2 IPPMEM 1P 1920x1080 1920x1080 YUY2 RGB32 "}}) {
    Click(c.iButton);
    EXPECT_TRUE(Text(m_Dlg, c.iEdit).isEmpty()) << c.iButton;
    ASSERT_TRUE(m_Dlg.RunControl(c.iButton));
    const QString line = Text(m_Dlg, c.iEdit);
    EXPECT_TRUE(Matches(line, QString("^") + c.szPrefix + kTimeLine)) << line.toStdString();
    EXPECT_TRUE(line.endsWith("Res=0")) << line.toStdString();
  }
  EXPECT_FALSE(m_Dlg.RunControl(1000));  // an edit has no handler
}

TEST_F(DialogWithEngine, MemCopyAtItsRealCountKeepsItsFiguresConsistent) {
  m_Dlg.LimitRoundsForTesting(0);  // the one run at 2000 rounds
  Click(1033);
  const std::string line = Text(m_Dlg, 1001).toStdString();
  const QRegularExpressionMatch m =
      QRegularExpression(
          R"(^1CPU  Mem copy  1920x1080  1920x1080  FPS=(\S+)  FrameTime:(\d+\.\d{3})ms  )"
          R"(MBSec=(\S+)   Res=0$)")
          .match(QString::fromStdString(line));
  ASSERT_TRUE(m.hasMatch()) << line;
  const double dFrame = m.captured(2).toDouble();
  if (dFrame == 0.0) {
    EXPECT_EQ(m.captured(1), "inf");
    EXPECT_EQ(m.captured(3), "inf");
  } else {
    const double dFps = m.captured(1).toDouble();
    // The frame time is printed rounded to 0.001 ms.
    EXPECT_NEAR(dFps, 1000.0 / dFrame, 1000.0 / (dFrame - 0.0005) - 1000.0 / dFrame + 0.001);
    EXPECT_NEAR(m.captured(3).toDouble(), 8.2944 * dFps, 8.2944 * dFps * 1e-6 + 0.001);
  }
}

TEST_F(DialogWithEngine, EveryLineIsWrittenUnderTheWaitCursorWhichEndsWithTheTest) {
  for (const auto& [iButton, iEdit] :
       {std::pair{1015, 1010}, std::pair{1017, 1012}, std::pair{1021, 1000}}) {
    std::vector<bool> waiting;
    auto* edit = qobject_cast<QLineEdit*>(m_Dlg.Control(iEdit));
    const QMetaObject::Connection watch = QObject::connect(edit, &QLineEdit::textChanged, [&] {
      const QCursor* cursor = QApplication::overrideCursor();
      waiting.push_back(cursor != nullptr && cursor->shape() == Qt::WaitCursor);
    });
    m_Dlg.RunControl(iButton);
    QObject::disconnect(watch);
    ASSERT_FALSE(waiting.empty()) << iButton;
    EXPECT_EQ(std::count(waiting.begin(), waiting.end(), false), 0) << iButton;
    EXPECT_EQ(QApplication::overrideCursor(), nullptr) << iButton;
  }
  delete g_pTestImage;
  g_pTestImage = nullptr;
}

TEST_F(DialogWithEngine, RunningATestTwiceOverwritesItsLine) {
  Click(1016);
  Click(1016);
  const QString line = Text(m_Dlg, 1011);
  EXPECT_EQ(line.count("Img_ResizeARGB"), 1);
  EXPECT_TRUE(Matches(
      line, QString("^Img_ResizeARGB Lin Multi IPPMEM RGB32 720x576 1920x1080 ") + kTimeLine));
}

TEST_F(DialogWithEngine, GpuButtonsShowTheEngineMessageAndShareEdit1001WithTheCpuTests) {
  Click(1033);
  EXPECT_TRUE(Text(m_Dlg, 1001).startsWith("1CPU  Mem copy"));
  Click(1022);
  const QString hd = Text(m_Dlg, 1001);
  EXPECT_FALSE(hd.isEmpty());
  EXPECT_FALSE(hd.startsWith("1CPU"));
  EXPECT_LE(hd.size(), 149);
  Click(1033);
  EXPECT_TRUE(Text(m_Dlg, 1001).startsWith("1CPU  Mem copy"));
  m_Dlg.RunControl(1006);
  EXPECT_TRUE(Text(m_Dlg, 1001).startsWith("Img_Resize YUY2"));
  Click(1021);
  EXPECT_FALSE(Text(m_Dlg, 1000).isEmpty());
  EXPECT_LE(Text(m_Dlg, 1000).size(), 149);
}

TEST_F(DialogWithEngine, ALineWiderThanItsEditShowsWholeAsTheTooltip) {
  auto* edit = qobject_cast<QLineEdit*>(m_Dlg.Control(1000));
  ASSERT_NE(edit, nullptr);
  edit->setFixedWidth(40);
  Click(1021);
  EXPECT_FALSE(edit->text().isEmpty());
  EXPECT_EQ(edit->toolTip(), edit->text());
  edit->setFixedWidth(4000);
  Click(1021);
  EXPECT_TRUE(edit->toolTip().isEmpty()) << edit->toolTip().toStdString();
}

TEST_F(DialogWithEngine, TheHandlersAreThePathThatRunsAndHandBackLineAndFigures) {
  m_Dlg.OnResizeArgb1Cpu();
  EXPECT_TRUE(Text(m_Dlg, 1010).startsWith("Img_ResizeARGB Lin IPPMEM+BUFF"));
  m_Dlg.OnMemCopy();
  EXPECT_TRUE(Text(m_Dlg, 1001).startsWith("1CPU  Mem copy"));
  const std::optional<RunResult> cpu = m_Dlg.RunControl(1015);
  ASSERT_TRUE(cpu);
  EXPECT_EQ(cpu->iControl, 1015);
  EXPECT_EQ(QString::fromStdString(cpu->strLine), Text(m_Dlg, 1010));
  ASSERT_EQ(cpu->aFigures.size(), 2u);
  EXPECT_EQ(cpu->aFigures[0].strName, "Time");
  EXPECT_EQ(cpu->aFigures[1].strName, "Res");
  EXPECT_EQ(cpu->iStatus, 0);
  const std::optional<RunResult> gpu = m_Dlg.RunControl(1022);
  ASSERT_TRUE(gpu);
  EXPECT_EQ(QString::fromStdString(gpu->strLine), Text(m_Dlg, 1001));
  EXPECT_TRUE(gpu->dFrameMs.has_value()) << gpu->strLine;
  const std::optional<RunResult> hidden = m_Dlg.RunControl(1025);
  ASSERT_TRUE(hidden);
  EXPECT_TRUE(hidden->strLine.empty());
}

TEST_F(DialogWithEngine, HiddenGpuCommandsChangeNothingInTheDialog) {
  // Every code's path is covered on a recording engine; two run for real.
  ASSERT_TRUE(m_Dlg.RunControl(1018));
  ASSERT_TRUE(m_Dlg.RunControl(1032));
  for (int iEdit : {1000, 1001, 1002, 1003, 1004, 1010, 1011, 1012, 1013, 1014})
    EXPECT_TRUE(Text(m_Dlg, iEdit).isEmpty()) << iEdit;
}

TEST_F(DialogWithEngine, TabAndSpaceRunAnEnabledButtonOutsideTheClientArea) {
  m_Dlg.show();
  QApplication::setActiveWindow(&m_Dlg);
  QWidget* first = m_Dlg.Control(1015);
  QWidget* target = m_Dlg.Control(1016);
  ASSERT_GE(target->y(), m_Dlg.height());  // below the dialog's edge
  first->setFocus(Qt::OtherFocusReason);
  QTest::keyClick(first, Qt::Key_Tab);
  ASSERT_EQ(QApplication::focusWidget(), target);
  QTest::keyClick(target, Qt::Key_Space);
  EXPECT_TRUE(Text(m_Dlg, 1011).startsWith("Img_ResizeARGB Lin Multi"));
}

TEST_F(DialogWithEngine, QuitClosesTheDialogAccepted) {
  m_Dlg.show();
  Click(1);
  EXPECT_FALSE(m_Dlg.isVisible());
  EXPECT_EQ(m_Dlg.result(), QDialog::Accepted);
}

// Opens the about box through `open` and returns the caption of the modal
// dialog that came up, closing it; empty when none came.
QString ModalCaptionDuring(const std::function<void()>& open) {
  QString caption;
  QTimer::singleShot(0, [&caption] {
    if (QWidget* modal = QApplication::activeModalWidget()) {
      caption = modal->windowTitle();
      modal->close();
    }
  });
  open();
  QApplication::processEvents();
  return caption;
}

TEST(DialogAbout, SystemCommand16And17OpenTheAboutBox) {
  CTachyrunDlg dlg;
  EXPECT_EQ(ModalCaptionDuring([&] { dlg.OnSysCommand(16, 0); }), "About Tachyrun");
  EXPECT_EQ(ModalCaptionDuring([&] { dlg.OnSysCommand(17, 0); }), "About Tachyrun");
  EXPECT_EQ(ModalCaptionDuring([&] { dlg.OnSysCommand(0x1F, 0); }), "About Tachyrun");
  EXPECT_EQ(ModalCaptionDuring([&] { dlg.OnSysCommand(32, 0); }), "");
  EXPECT_EQ(ModalCaptionDuring([&] { dlg.OnSysCommand(0, 0); }), "");
}

TEST(DialogAbout, MenuOffersTheAboutEntryAfterASeparator) {
  CTachyrunDlg dlg;
  EXPECT_EQ(dlg.SystemMenu(), nullptr);  // made when the dialog starts
  dlg.Create();
  ASSERT_NE(dlg.SystemMenu(), nullptr);
  const QList<QAction*> actions = dlg.SystemMenu()->actions();
  ASSERT_EQ(actions.size(), 2);
  EXPECT_TRUE(actions[0]->isSeparator());
  EXPECT_EQ(actions[1]->text(), QString("&About su Tachyrun..."));
  EXPECT_EQ(ModalCaptionDuring([&] { actions[1]->trigger(); }), "About Tachyrun");
  EXPECT_FALSE(dlg.windowIcon().isNull());
}

TEST(DialogAbout, RightClickOnTheDialogOpensTheMenuWithTheAboutEntry) {
  CTachyrunDlg dlg;
  dlg.Create();
  dlg.show();
  QStringList seen;
  QTimer::singleShot(0, [&seen] {
    if (QWidget* popup = QApplication::activePopupWidget()) {
      for (QAction* action : popup->actions()) seen << action->text();
      popup->close();
    }
  });
  QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), dlg.mapToGlobal(QPoint(5, 5)));
  QApplication::sendEvent(&dlg, &event);
  EXPECT_EQ(seen, QStringList({"", "&About su Tachyrun..."}));
}

TEST(DialogAbout, SystemCloseCommandClosesTheDialog) {
  CTachyrunDlg dlg;
  dlg.show();
  dlg.OnSysCommand(0xF060, 0);
  EXPECT_FALSE(dlg.isVisible());
  EXPECT_EQ(dlg.result(), QDialog::Rejected);
}

TEST(DialogPaint, MinimisedDialogPaintsItsIconInTheMiddle) {
  CTachyrunDlg dlg;
  dlg.Create();
  auto paintDialogOnly = [&dlg] {
    QImage image(dlg.size(), QImage::Format_ARGB32);
    image.fill(Qt::white);
    dlg.render(&image, QPoint(), QRegion(), QWidget::DrawWindowBackground);
    return image;
  };
  const QPoint centre((dlg.width() - 32 + 1) / 2 + 16, (dlg.height() - 32 + 1) / 2 + 16);
  const QImage normal = paintDialogOnly();
  EXPECT_EQ(normal.pixelColor(centre), normal.pixelColor(2, 2));
  dlg.setWindowState(Qt::WindowMinimized);
  ASSERT_TRUE(dlg.isMinimized());
  const QImage iconic = paintDialogOnly();
  EXPECT_NE(iconic.pixelColor(centre), iconic.pixelColor(2, 2));
}

}  // namespace
}  // namespace tachyrun
