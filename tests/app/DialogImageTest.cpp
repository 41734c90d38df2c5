// The effect test and the image file choice inside the dialog.
#include <gtest/gtest.h>
#include <unistd.h>

#include <QApplication>
#include <QCursor>
#include <QFileDialog>
#include <QImage>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <filesystem>
#include <fstream>
#include <string>

#include "app/TachyrunDlg.h"

namespace tachyrun {
namespace {

constexpr const char* kEffectLinePrefix =
    "Img_ResizeARGB Lin IPPMEM+BUFF RGB32 720x576 1920x1080 Time: ";

class DialogImage : public ::testing::Test {
 protected:
  void TearDown() override {
    // The dialog leaves its bitmap alive on purpose; the test cleans it up.
    delete g_pTestImage;
    g_pTestImage = nullptr;
  }
  std::string Bitmap(const char* name, int w, int h) {
    QImage image(w, h, QImage::Format_ARGB32);
    image.fill(qRgba(10, 20, 30, 255));
    const QString path = m_Dir.filePath(QString::fromUtf8(name));
    EXPECT_TRUE(image.save(path, "BMP"));
    return path.toStdString();
  }
  void SetPath(CTachyrunDlg& dlg, const std::string& path) {
    qobject_cast<QLineEdit*>(dlg.Control(1034))->setText(QString::fromStdString(path));
  }
  QTemporaryDir m_Dir;
};

TEST_F(DialogImage, EffectTestRendersTheImageOfEdit1034WithStatusZero) {
  CTachyrunDlg dlg;
  dlg.Create();
  SetPath(dlg, Bitmap("frame.bmp", 720, 576));
  QTest::mouseClick(dlg.Control(1017), Qt::LeftButton);
  const QString line = dlg.ControlText(1012);
  EXPECT_TRUE(line.startsWith(kEffectLinePrefix)) << line.toStdString();
  EXPECT_TRUE(line.endsWith("  Res=0")) << line.toStdString();
  ASSERT_NE(g_pTestImage, nullptr);
  EXPECT_EQ(g_pTestImage->GetHeight(), 576u);
  EXPECT_EQ(dlg.ImageFile(), m_Dir.filePath("frame.bmp").toStdString());  // read from the edit
}

TEST_F(DialogImage, ASecondEffectTestDeletesTheEarlierBitmap) {
  CTachyrunDlg dlg;
  dlg.Create();
  const int iBefore = CTestBitmap::LiveCount();
  SetPath(dlg, Bitmap("a.bmp", 64, 32));
  dlg.RunControl(1017);
  EXPECT_EQ(CTestBitmap::LiveCount(), iBefore + 1);
  EXPECT_EQ(g_pTestImage->GetHeight(), 32u);
  SetPath(dlg, Bitmap("b.bmp", 64, 48));
  dlg.RunControl(1017);
  EXPECT_EQ(CTestBitmap::LiveCount(), iBefore + 1);
  EXPECT_EQ(g_pTestImage->GetHeight(), 48u);
}

TEST_F(DialogImage, SmallerAndLargerBitmapsBothRender) {
  CTachyrunDlg dlg;
  dlg.Create();
  for (auto [w, h] : {std::pair{100, 80}, std::pair{1280, 720}}) {
    SetPath(dlg, Bitmap("sized.bmp", w, h));
    dlg.RunControl(1017);
    EXPECT_EQ(g_pTestImage->GetHeight(), static_cast<uint32_t>(h));
    EXPECT_TRUE(dlg.ControlText(1012).endsWith("  Res=0")) << w;
  }
}

TEST_F(DialogImage, AFileThatCantBeLoadedStillGivesALineAndAFailedBitmap) {
  CTachyrunDlg dlg;
  dlg.Create();
  const std::string corrupt = m_Dir.filePath("corrupt.bmp").toStdString();
  std::ofstream(corrupt, std::ios::binary) << "BM not really a bitmap";
  for (const std::string& path :
       {std::string(CTachyrunDlg::kInitialImageFile), corrupt, std::string(400, 'p')}) {
    SetPath(dlg, path);
    dlg.RunControl(1017);
    ASSERT_NE(g_pTestImage, nullptr);
    EXPECT_EQ(g_pTestImage->GetHeight(), 0u);
    EXPECT_TRUE(dlg.ControlText(1012).startsWith(kEffectLinePrefix));
  }
}

TEST_F(DialogImage, LeavingTheDialogKeepsTheBitmap) {
  const int iBefore = CTestBitmap::LiveCount();
  {
    CTachyrunDlg dlg;
    dlg.Create();
    SetPath(dlg, Bitmap("kept.bmp", 8, 8));
    dlg.RunControl(1017);
  }
  ASSERT_NE(g_pTestImage, nullptr);
  EXPECT_EQ(CTestBitmap::LiveCount(), iBefore + 1);
  EXPECT_EQ(g_pTestImage->GetHeight(), 8u);
}

TEST_F(DialogImage, ANewDialogForgetsTheBitmapPointer) {
  CTestBitmap* pKept = CTestBitmap::FromFile(Bitmap("old.bmp", 4, 4).c_str());
  g_pTestImage = pKept;
  {
    CTachyrunDlg dlg;
    EXPECT_EQ(g_pTestImage, nullptr);
  }
  delete pKept;
}

struct ChooserCall {
  std::string strTitle, strStart, strFilter;
};

TEST_F(DialogImage, BrowseAsksWithTitleFilterAndTheCurrentPathAndTakesTheAnswer) {
  CTachyrunDlg dlg;
  std::vector<ChooserCall> calls;
  const std::string chosen = m_Dir.filePath("chosen.bmp").toStdString();
  dlg.SetFileChooser([&](const std::string& t, const std::string& s, const std::string& f) {
    calls.push_back({t, s, f});
    return std::optional<std::string>(chosen);
  });
  SetPath(dlg, "/typed/by/user.bmp");
  QTest::mouseClick(dlg.Control(1035), Qt::LeftButton);
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].strTitle, "Test Image");
  EXPECT_EQ(calls[0].strStart, "/typed/by/user.bmp");
  EXPECT_EQ(calls[0].strFilter, "*.bmp");
  EXPECT_EQ(dlg.ControlText(1034).toStdString(), chosen);
  EXPECT_EQ(dlg.ImageFile(), chosen);
}

TEST_F(DialogImage, TheFileDialogAsksForABitmapWithTheArrowAndItsAnswerLands) {
  const std::string start = Bitmap("start.bmp", 4, 4);
  const std::string other = Bitmap("other.bmp", 4, 4);
  for (const bool bAccept : {false, true}) {
    CTachyrunDlg dlg;
    SetPath(dlg, start);
    QString title, directory;
    QStringList filters;
    Qt::CursorShape shape = Qt::BlankCursor;
    QTimer::singleShot(0, [&] {
      auto* fd = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      if (fd == nullptr) return;
      title = fd->windowTitle();
      filters = fd->nameFilters();
      directory = fd->directory().absolutePath();
      shape = QApplication::overrideCursor() ? QApplication::overrideCursor()->shape()
                                             : Qt::BlankCursor;
      if (bAccept) {
        fd->selectFile(QString::fromStdString(other));
        QMetaObject::invokeMethod(fd, "accept");
      } else {
        fd->reject();
      }
    });
    dlg.RunControl(1035);
    EXPECT_EQ(title, QString("Test Image"));
    EXPECT_EQ(filters, QStringList{"*.bmp"});
    EXPECT_EQ(directory, m_Dir.path());
    EXPECT_EQ(shape, Qt::ArrowCursor);
    EXPECT_EQ(dlg.ImageFile(), bAccept ? other : start);
    EXPECT_EQ(dlg.ControlText(1034).toStdString(), bAccept ? other : start);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  }
}

TEST_F(DialogImage, CancelledOrTooLongChoicesLeaveThePath) {
  CTachyrunDlg dlg;
  std::optional<std::string> answer;
  dlg.SetFileChooser(
      [&](const std::string&, const std::string&, const std::string&) { return answer; });
  dlg.RunControl(1035);
  EXPECT_EQ(dlg.ControlText(1034).toStdString(), "C:\\exp\\bitmap5.bmp");
  answer = "/" + std::string(199, 'x');  // 200 characters do not fit the buffer
  dlg.RunControl(1035);
  EXPECT_EQ(dlg.ControlText(1034).toStdString(), "C:\\exp\\bitmap5.bmp");
  answer = "/" + std::string(198, 'y');
  dlg.RunControl(1035);
  EXPECT_EQ(dlg.ControlText(1034).toStdString(), *answer);
}

TEST_F(DialogImage, BrowseRestoresTheCurrentDirectory) {
  const std::filesystem::path before = std::filesystem::current_path();
  CTachyrunDlg dlg;
  dlg.SetFileChooser([&](const std::string&, const std::string&, const std::string&) {
    std::filesystem::current_path(m_Dir.path().toStdString());  // as a file dialog may
    return std::optional<std::string>("/x.bmp");
  });
  dlg.RunControl(1035);
  EXPECT_EQ(std::filesystem::current_path(), before);
}

TEST_F(DialogImage, ACurrentDirectoryThatIsGoneDoesNotStopTheDialog) {
  const std::filesystem::path before = std::filesystem::current_path();
  const std::filesystem::path gone = m_Dir.filePath("gone").toStdString();
  std::filesystem::create_directory(gone);
  std::filesystem::current_path(gone);
  std::filesystem::remove(gone);
  {
    CTachyrunDlg dlg;
    dlg.Create();
    dlg.SetFileChooser([](const std::string&, const std::string&, const std::string&) {
      return std::optional<std::string>("picked.bmp");
    });
    dlg.RunControl(1035);
    EXPECT_EQ(dlg.ImageFile(), "picked.bmp");
    dlg.RunControl(1017);
    EXPECT_TRUE(dlg.ControlText(1012).startsWith(kEffectLinePrefix));
  }
  std::filesystem::current_path(before);
}

}  // namespace
}  // namespace tachyrun
