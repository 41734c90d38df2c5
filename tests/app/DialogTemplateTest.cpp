// The widgets of the test dialog and the about box against their templates.
#include <gtest/gtest.h>

#include <QFontInfo>
#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <vector>

#include "app/AboutDlg.h"
#include "app/DialogBuilder.h"
#include "app/DialogTemplate.h"
#include "app/TachyrunDlg.h"

namespace tachyrun {
namespace {

// Base units worked out here from the font's metrics, apart from the code
// under test: the letters' average advance, halved and rounded up; the height.
QRect ExpectedRect(const QFont& font, int x, int y, int cx, int cy) {
  const QFontMetrics fm(font);
  const int iAdvance = fm.horizontalAdvance("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
  const int bx = (iAdvance / 26 + 1) / 2;
  const int by = fm.height();
  auto map = [](int v, int base, int div) { return (v * base + div / 2) / div; };
  return QRect(map(x, bx, 4), map(y, by, 8), map(cx, bx, 4), map(cy, by, 8));
}

void ExpectMatchesTemplate(QDialog& dlg, const DialogTemplate& tmpl) {
  EXPECT_EQ(dlg.windowTitle().toStdString(), tmpl.szCaption);
  const QRect size = ExpectedRect(dlg.font(), 0, 0, tmpl.cx, tmpl.cy);
  EXPECT_EQ(dlg.minimumSize(), size.size());
  EXPECT_EQ(dlg.maximumSize(), size.size());  // not resizable
  const QList<QWidget*> children = dlg.findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
  ASSERT_EQ(static_cast<size_t>(children.size()), tmpl.controls.size());
  for (size_t i = 0; i < tmpl.controls.size(); ++i) {
    const ControlTemplate& c = tmpl.controls[i];
    QWidget* w = children[static_cast<int>(i)];  // creation order is template order
    SCOPED_TRACE(c.iId);
    EXPECT_EQ(w->objectName().toInt(), c.iId);
    if (c.eKind != ControlKind::Icon) {
      EXPECT_EQ(w->geometry(), ExpectedRect(dlg.font(), c.x, c.y, c.cx, c.cy));
    }
    EXPECT_EQ(w->isEnabled(), c.bEnabled);
    EXPECT_EQ(w->isHidden(), !c.bVisible);
    switch (c.eKind) {
      case ControlKind::DefaultButton:
      case ControlKind::Button: {
        auto* b = qobject_cast<QPushButton*>(w);
        ASSERT_NE(b, nullptr);
        EXPECT_EQ(b->text().toStdString(), c.szText);
        EXPECT_EQ(b->isDefault(), c.eKind == ControlKind::DefaultButton);
        break;
      }
      case ControlKind::Edit: {
        auto* e = qobject_cast<QLineEdit*>(w);
        ASSERT_NE(e, nullptr);
        EXPECT_EQ(e->isReadOnly(), c.bReadOnly);
        EXPECT_TRUE(e->hasFrame());
        break;
      }
      case ControlKind::Static:
        ASSERT_NE(qobject_cast<QLabel*>(w), nullptr);
        EXPECT_EQ(qobject_cast<QLabel*>(w)->text().toStdString(), c.szText);
        break;
      case ControlKind::Icon:
        ASSERT_NE(qobject_cast<QLabel*>(w), nullptr);
        EXPECT_EQ(w->size(), QSize(32, 32));
        break;
    }
  }
}

TEST(DialogTemplate, MainDialogHasTheThirtyEightControlsOfItsTable) {
  const DialogTemplate& t = MainDialogTemplate();
  EXPECT_EQ(t.iId, 102);
  EXPECT_EQ(t.controls.size(), 38u);
  const ControlTemplate* quit = FindControl(t, 1);
  ASSERT_NE(quit, nullptr);
  EXPECT_STREQ(quit->szText, ">Quit");
  EXPECT_EQ(quit->x, 305);
  EXPECT_EQ(quit->cy, 16);
  const ControlTemplate* lockTest = FindControl(t, 1020);
  ASSERT_NE(lockTest, nullptr);
  EXPECT_EQ(lockTest->y, 328);
  EXPECT_TRUE(lockTest->bEnabled);
  EXPECT_EQ(FindControl(t, 1009)->y, 263);
  EXPECT_EQ(FindControl(t, 999), nullptr);
  for (int iId : {1000, 1001, 1002, 1003, 1004, 1010, 1011, 1012, 1013, 1014})
    EXPECT_TRUE(FindControl(t, iId)->bReadOnly) << iId;
  EXPECT_FALSE(FindControl(t, 1034)->bReadOnly);
}

TEST(DialogTemplate, StringsAndVersion) {
  EXPECT_STREQ(LoadStringResource(101), "&About su Tachyrun...");
  EXPECT_STREQ(LoadStringResource(102), "Prova text");
  EXPECT_EQ(LoadStringResource(103), nullptr);
  EXPECT_STREQ(kVersionText, "1.3.375.0");
  EXPECT_EQ(kVersionLanguage, 0x0410);
}

TEST(DialogWidgets, DialogFontIsThePinnedDejaVuSans) {
  CTachyrunDlg dlg;
  EXPECT_EQ(QFontInfo(dlg.font()).family(), QString("DejaVu Sans"));
  EXPECT_EQ(dlg.font().pointSize(), 8);
}

TEST(DialogWidgets, EveryControlOfTheTestDialogMatchesItsTemplate) {
  CTachyrunDlg dlg;
  ExpectMatchesTemplate(dlg, MainDialogTemplate());
  EXPECT_EQ(dlg.ControlText(1034).toStdString(), "C:\\exp\\bitmap5.bmp");
  EXPECT_EQ(dlg.ImageFile(), "C:\\exp\\bitmap5.bmp");
  for (int iId : {1000, 1001, 1002, 1003, 1004, 1010, 1011, 1012, 1013, 1014})
    EXPECT_TRUE(dlg.ControlText(iId).isEmpty());
}

TEST(DialogWidgets, AboutBoxMatchesItsTemplate) {
  CAboutDlg about;
  ExpectMatchesTemplate(about, AboutDialogTemplate());
  EXPECT_EQ(about.findChild<QPushButton*>("1")->text(), QString("OK"));
}

TEST(DialogWidgets, ControlsFromY107DownLieOutsideTheClientArea) {
  CTachyrunDlg dlg;
  for (const ControlTemplate& c : MainDialogTemplate().controls) {
    if (c.iId == kIdStaticNone) continue;
    const QWidget* w = dlg.Control(c.iId);
    const bool bInside = w->geometry().top() < dlg.height();
    EXPECT_EQ(bInside, c.y < 107) << c.iId;
  }
}

TEST(DialogWidgets, TabOrderFollowsTheTemplateOverEnabledVisibleControls) {
  CTachyrunDlg dlg;
  dlg.show();
  std::vector<int> expected;
  for (const ControlTemplate& c : MainDialogTemplate().controls)
    if (c.bEnabled && c.bVisible && c.eKind != ControlKind::Static) expected.push_back(c.iId);
  std::vector<int> seen;
  QWidget* w = dlg.Control(expected.front());
  for (size_t i = 0; i < expected.size(); ++i) {
    seen.push_back(w->objectName().toInt());
    do {
      w = w->nextInFocusChain();
    } while (!(w->isEnabled() && w->isVisible() && w->focusPolicy() & Qt::TabFocus) ||
             w->parentWidget() != &dlg);
  }
  EXPECT_EQ(seen, expected);
}

TEST(DialogWidgets, IconHasItsThreeSizes) {
  CTachyrunDlg dlg;
  const QList<QSize> sizes = dlg.OnQueryDragIcon().availableSizes();
  EXPECT_TRUE(sizes.contains(QSize(16, 16)));
  EXPECT_TRUE(sizes.contains(QSize(32, 32)));
  EXPECT_TRUE(sizes.contains(QSize(48, 48)));
}

}  // namespace
}  // namespace tachyrun
