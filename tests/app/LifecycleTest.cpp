// Start and shut-down of the program: the engine library is released before
// the four engines are destroyed, and those go in reverse order. The engine's
// ReleaseConverterLib and destructor are wrapped here (this executable's
// definitions come first in symbol lookup) to log each call before handing
// it on to the library.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QTimer>
#include <cstdint>
#include <string>
#include <vector>

#include "app/AppGlobals.h"
#include "app/TachyrunApp.h"
#include "app/TachyrunDlg.h"
#include "engine/Pixmill.h"
#include "project/TrackList.h"

namespace {

struct Event {
  std::string strWhat;
  uintptr_t address;
};
std::vector<Event> g_Events;

}  // namespace

int ReleaseConverterLib() {
  g_Events.push_back({"release", 0});
  using Fn = int (*)();
  static const auto real = reinterpret_cast<Fn>(dlsym(RTLD_NEXT, "_Z19ReleaseConverterLibv"));
  return real != nullptr ? real() : -1;
}

CPixmill::~CPixmill() {
  g_Events.push_back({"engine", reinterpret_cast<uintptr_t>(this)});
  using Fn = void (*)(CPixmill*);
  static const auto real = reinterpret_cast<Fn>(dlsym(RTLD_NEXT, "_ZN8CPixmillD1Ev"));
  if (real != nullptr) real(this);
}

namespace tachyrun {
namespace {

void ExpectReleaseThenFourEnginesInReverse() {
  ASSERT_EQ(g_Events.size(), 5u);
  EXPECT_EQ(g_Events[0].strWhat, "release");
  for (size_t i = 1; i < 5; ++i) EXPECT_EQ(g_Events[i].strWhat, "engine");
  // Members are laid out in declaration order: reverse destruction walks
  // down in address, m_PixGpuHd first.
  for (size_t i = 2; i < 5; ++i) EXPECT_LT(g_Events[i].address, g_Events[i - 1].address);
}

TEST(Lifecycle, ClosingTheDialogReleasesTheLibraryBeforeTheEngines) {
  g_Events.clear();
  {
    CTachyrunDlg dlg;
    dlg.Create();
  }
  ExpectReleaseThenFourEnginesInReverse();
}

TEST(Lifecycle, InitInstanceRunsTheDialogModallyAndReturnsZero) {
  g_Events.clear();
  QWidget* pSeen = nullptr;
  QTimer::singleShot(0, [&pSeen] {
    pSeen = theApp.MainWnd();
    if (QWidget* modal = QApplication::activeModalWidget()) modal->close();
  });
  EXPECT_EQ(theApp.InitInstance(), 0);
  EXPECT_NE(pSeen, nullptr);
  EXPECT_EQ(theApp.MainWnd(), nullptr);
  EXPECT_STREQ(theApp.RegistryKey(),
               "Applicazioni locali generate tramite la Creazione guidata di applicazioni locali");
  ExpectReleaseThenFourEnginesInReverse();
}

TEST(Lifecycle, QuitEndsTheModalRunToo) {
  g_Events.clear();
  QTimer::singleShot(0, [] {
    if (auto* dlg = qobject_cast<CTachyrunDlg*>(theApp.MainWnd()))
      QMetaObject::invokeMethod(dlg->Control(1), "click");
  });
  EXPECT_EQ(theApp.InitInstance(), 0);
  EXPECT_EQ(g_Events.size(), 5u);
}

TEST(Lifecycle, ProgramHoldsTheLibraryGlobalsBesideItsOwn) {
  // Registry store and configuration, theApp, data lock, id generator,
  // track list, component list, two stores.
  ASSERT_EQ(g_nProgramGlobals, 9u);
  EXPECT_EQ(g_apProgramGlobals[2], &theApp);
  EXPECT_EQ(g_apProgramGlobals[3], &g_AppDataLock);
  EXPECT_EQ(g_apProgramGlobals[5], &g_AppTrackList);
  EXPECT_EQ(g_apProgramGlobals[6], &g_AppComponentList);
  EXPECT_EQ(g_AppTrackList.GetCount(), 0);
  EXPECT_EQ(g_AppComponentList.GetCount(), 0);
  for (size_t i = 0; i < g_nProgramGlobals; ++i) EXPECT_NE(g_apProgramGlobals[i], nullptr) << i;
  EXPECT_EQ(g_AppDataLock.Acquire(0), 1);
  EXPECT_EQ(g_AppDataLock.Release(), 1);
}

}  // namespace
}  // namespace tachyrun
