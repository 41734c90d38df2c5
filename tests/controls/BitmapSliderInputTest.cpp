// Mouse, keys and focus of the bitmap slider, and the exact notifications it
// posts to its parent.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTest>

#include "controls/BitmapSlider.h"
#include "tests/support/SliderTesting.h"

namespace tachyrun {
namespace {

using namespace tachyrun::testing;
using Notes = std::vector<SliderNote>;

constexpr int32_t kId = 1001;

void SendMouse(QWidget* widget, QEvent::Type type, int x, int y, Qt::MouseButton button,
               Qt::MouseButtons buttons) {
  const QPointF local(x, y);
  QMouseEvent event(type, local, widget->mapToGlobal(local), button, buttons, Qt::NoModifier);
  QCoreApplication::sendEvent(widget, &event);
}
void Press(QWidget* w, int x, int y) {
  SendMouse(w, QEvent::MouseButtonPress, x, y, Qt::LeftButton, Qt::LeftButton);
}
void Move(QWidget* w, int x, int y) {
  SendMouse(w, QEvent::MouseMove, x, y, Qt::NoButton, Qt::LeftButton);
}
void Release(QWidget* w, int x, int y) {
  SendMouse(w, QEvent::MouseButtonRelease, x, y, Qt::LeftButton, Qt::NoButton);
}

class SliderInput : public ::testing::Test {
 protected:
  void SetUp() override {
    m_Parent.resize(300, 100);
    m_pSlider = new CBitmapSlider(&m_Parent);
    m_pSlider->setObjectName(QString::number(kId));
    m_Parent.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_Parent));
  }
  void TearDown() override {
    if (QWidget::mouseGrabber() != nullptr) QWidget::mouseGrabber()->releaseMouse();
  }
  // One pixel per value: a 220-pixel channel, a 20-pixel thumb, range 0..200,
  // so the thumb's centre is at pos + 10.
  void Exact() {
    LoadTestBitmaps(*m_pSlider, 220, 20, 20, 20);
    m_pSlider->SetRange(0, 200);
  }

  CRecordingParent m_Parent;
  CBitmapSlider* m_pSlider = nullptr;
};

TEST_F(SliderInput, DragPostsEachChangeAndTheReleaseInOrder) {
  Exact();
  m_pSlider->SetPos(50);  // centre 60
  Press(m_pSlider, 63, 10);
  EXPECT_EQ(m_pSlider->m_bDragging, 1);
  EXPECT_EQ(m_pSlider->m_iMouseOffset, 3);
  EXPECT_EQ(QWidget::mouseGrabber(), m_pSlider);
  Move(m_pSlider, 73, 10);
  Move(m_pSlider, 73, 14);  // same column: no change, no notification
  Move(m_pSlider, 78, 12);
  Move(m_pSlider, 500, 10);  // held at the right end
  Move(m_pSlider, 600, 10);
  EXPECT_TRUE(m_Parent.notes.empty());  // posted, not sent
  Release(m_pSlider, 600, 10);
  EXPECT_EQ(m_pSlider->m_bDragging, 0);
  EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
  EXPECT_EQ(m_Parent.Deliver(),
            (Notes{Moving(kId, 60), Moving(kId, 65), Moving(kId, 200), Moved(kId, 200)}));
}

TEST_F(SliderInput, GrabbedThumbMovesByThePointersDistance) {
  Exact();
  m_pSlider->SetPos(50);
  const int32_t centre = m_pSlider->Pos2Pixel(50);
  Press(m_pSlider, centre + 3, 10);
  Move(m_pSlider, centre + 13, 10);
  EXPECT_EQ(m_pSlider->Pos2Pixel(m_pSlider->GetPos()), centre + 10);  // not 13
  Release(m_pSlider, centre + 13, 10);
  EXPECT_EQ(m_Parent.Deliver(), (Notes{Moving(kId, 60), Moved(kId, 60)}));
}

TEST_F(SliderInput, PressOnTheTrackJumpsTheThumbAndPostsAtOnce) {
  Exact();
  m_pSlider->SetPos(50);
  Press(m_pSlider, 150, 10);
  EXPECT_EQ(m_pSlider->m_iMouseOffset, 0);
  EXPECT_EQ(m_pSlider->Pos2Pixel(m_pSlider->GetPos()), 150);
  EXPECT_EQ(m_Parent.Deliver(), (Notes{Moving(kId, 140)}));
  Release(m_pSlider, 150, 10);
  EXPECT_EQ(m_Parent.Deliver(), (Notes{Moved(kId, 140)}));
}

TEST_F(SliderInput, HalfAThumbFromTheCentreStillGrabs) {
  Exact();
  m_pSlider->SetPos(50);  // centre 60, half a thumb 10
  Press(m_pSlider, 70, 10);
  EXPECT_EQ(m_pSlider->m_iMouseOffset, 10);
  EXPECT_EQ(m_pSlider->GetPos(), 50);
  Release(m_pSlider, 70, 10);
  Press(m_pSlider, 71, 10);
  EXPECT_EQ(m_pSlider->m_iMouseOffset, 0);
  EXPECT_EQ(m_pSlider->GetPos(), 61);
}

TEST_F(SliderInput, VerticalDragFollowsTheRows) {
  m_pSlider->SetVertical(true);
  LoadTestBitmaps(*m_pSlider, 20, 220, 20, 20);
  m_pSlider->SetRange(0, 200);
  Press(m_pSlider, 300, 110);  // x plays no part
  Move(m_pSlider, 0, -40);     // held at the top
  Release(m_pSlider, 0, -40);
  EXPECT_EQ(m_Parent.Deliver(), (Notes{Moving(kId, 100), Moving(kId, 0), Moved(kId, 0)}));
}

TEST_F(SliderInput, TooSmallControlClampsInTheirOrder) {
  LoadTestBitmaps(*m_pSlider, 10, 10, 20, 20);
  // Horizontal: the lower limit first, then the upper one wins.
  Press(m_pSlider, 5, 5);
  EXPECT_EQ(m_pSlider->GetPos(), 100);
  Release(m_pSlider, 5, 5);
  EXPECT_EQ(m_Parent.Deliver(), (Notes{Moving(kId, 100), Moved(kId, 100)}));

  // Vertical: the upper limit first, then the lower one (the top) wins.
  m_pSlider->SetVertical(true);
  m_pSlider->SetPos(0);
  Press(m_pSlider, 5, 5);
  Move(m_pSlider, 5, 9);
  EXPECT_EQ(m_pSlider->GetPos(), 0);
  Release(m_pSlider, 5, 9);
  EXPECT_EQ(m_Parent.Deliver(), (Notes{Moved(kId, 0)}));
}

TEST_F(SliderInput, EmptyRangeDragStaysAtTheOnePosition) {
  Exact();
  m_pSlider->SetRange(40, 40);
  m_pSlider->SetPos(0);
  Press(m_pSlider, 150, 10);
  Move(m_pSlider, 30, 10);
  Release(m_pSlider, 30, 10);
  EXPECT_EQ(m_pSlider->GetPos(), 40);
  const Notes notes = m_Parent.Deliver();
  ASSERT_FALSE(notes.empty());
  for (const SliderNote& note : notes) EXPECT_EQ(note.iPosition, 40);
  EXPECT_EQ(notes.back(), Moved(kId, 40));
}

TEST_F(SliderInput, DisablingDuringADragReleasesTheMouseAndPostsNoMoved) {
  Exact();
  m_pSlider->SetPos(50);
  Press(m_pSlider, 60, 10);
  Move(m_pSlider, 80, 10);
  ASSERT_EQ(QWidget::mouseGrabber(), m_pSlider);
  m_pSlider->Enable(false);
  EXPECT_EQ(m_pSlider->m_bDragging, 0);
  EXPECT_EQ(m_pSlider->m_bEnabled, 0);
  EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
  Move(m_pSlider, 120, 10);
  Release(m_pSlider, 120, 10);
  EXPECT_EQ(m_pSlider->GetPos(), 70);
  EXPECT_EQ(m_Parent.Deliver(), (Notes{Moving(kId, 70)}));
}

TEST_F(SliderInput, DisabledSliderIgnoresMouseAndKeys) {
  Exact();
  m_pSlider->Enable(false);
  Press(m_pSlider, 150, 10);
  EXPECT_EQ(m_pSlider->m_bDragging, 0);
  EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
  Release(m_pSlider, 150, 10);
  QTest::keyClick(m_pSlider, Qt::Key_End);
  EXPECT_FALSE(m_pSlider->OnKeyDown(CBitmapSlider::VK_END, 0, 0));
  EXPECT_EQ(m_pSlider->GetPos(), 0);
  EXPECT_TRUE(m_Parent.Deliver().empty());
}

TEST_F(SliderInput, EachHandledKeyMovesAndPostsOneMoved) {
  struct Case {
    Qt::Key key;
    uint32_t vk;
    int32_t pos;
  };
  const Case cases[] = {{Qt::Key_PageUp, 33, 30}, {Qt::Key_PageDown, 34, 70},
                        {Qt::Key_End, 35, 100},   {Qt::Key_Home, 36, 0},
                        {Qt::Key_Left, 37, 49},   {Qt::Key_Up, 38, 49},
                        {Qt::Key_Right, 39, 51},  {Qt::Key_Down, 40, 51}};
  for (const Case& c : cases) {
    m_pSlider->SetPos(50);
    QTest::keyClick(m_pSlider, c.key);
    EXPECT_TRUE(m_Parent.notes.empty()) << c.vk;  // posted, not sent
    EXPECT_EQ(m_pSlider->GetPos(), c.pos) << c.vk;
    EXPECT_EQ(m_Parent.Deliver(), (Notes{Moved(kId, c.pos)})) << c.vk;
    // The same by the virtual-key code.
    m_pSlider->SetPos(50);
    EXPECT_TRUE(m_pSlider->OnKeyDown(c.vk, 0, 0));
    EXPECT_EQ(m_Parent.Deliver(), (Notes{Moved(kId, c.pos)})) << c.vk;
  }
}

TEST_F(SliderInput, PageUpNearTheStartStopsAtTheMinimum) {
  m_pSlider->SetPos(10);
  QTest::keyClick(m_pSlider, Qt::Key_PageUp);
  EXPECT_EQ(m_pSlider->GetPos(), 0);
  EXPECT_EQ(m_Parent.Deliver(), (Notes{Moved(kId, 0)}));
}

TEST_F(SliderInput, KeyAtTheEndPostsMovedAlthoughNothingMoved) {
  m_pSlider->SetPos(100);
  QTest::keyClick(m_pSlider, Qt::Key_Right);
  QTest::keyClick(m_pSlider, Qt::Key_End);
  QTest::keyClick(m_pSlider, Qt::Key_PageDown);
  m_pSlider->SetPos(0);
  QTest::keyClick(m_pSlider, Qt::Key_Home);
  QTest::keyClick(m_pSlider, Qt::Key_Up);
  EXPECT_EQ(m_Parent.Deliver(), (Notes{Moved(kId, 100), Moved(kId, 100), Moved(kId, 100),
                                       Moved(kId, 0), Moved(kId, 0)}));
}

TEST_F(SliderInput, PageKeysNeverOverflow) {
  m_pSlider->SetRange(std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max());
  m_pSlider->SetPageSize(std::numeric_limits<int32_t>::max());
  m_pSlider->SetPos(std::numeric_limits<int32_t>::max() - 5);
  QTest::keyClick(m_pSlider, Qt::Key_PageDown);
  EXPECT_EQ(m_pSlider->GetPos(), std::numeric_limits<int32_t>::max());
  m_pSlider->SetPos(std::numeric_limits<int32_t>::min() + 5);
  QTest::keyClick(m_pSlider, Qt::Key_PageUp);
  EXPECT_EQ(m_pSlider->GetPos(), std::numeric_limits<int32_t>::min());
}

TEST_F(SliderInput, OtherKeysPostNothing) {
  m_pSlider->SetPos(50);
  QTest::keyClick(m_pSlider, Qt::Key_A);
  QTest::keyClick(m_pSlider, Qt::Key_Space);
  EXPECT_FALSE(m_pSlider->OnKeyDown(41, 0, 0));
  EXPECT_EQ(m_pSlider->GetPos(), 50);
  EXPECT_TRUE(m_Parent.Deliver().empty());
}

TEST_F(SliderInput, WithoutParentNothingIsPosted) {
  CBitmapSlider alone;
  alone.SetPos(50);
  EXPECT_TRUE(alone.OnKeyDown(CBitmapSlider::VK_NEXT, 0, 0));
  EXPECT_EQ(alone.GetPos(), 70);
}

TEST_F(SliderInput, FocusSetsTheFlagAndTabWalksOn) {
  auto* edit = new QLineEdit(&m_Parent);
  edit->move(0, 50);
  edit->show();
  QApplication::setActiveWindow(&m_Parent);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&m_Parent));
  Exact();
  Press(m_pSlider, 150, 10);  // a press takes the focus
  Release(m_pSlider, 150, 10);
  EXPECT_TRUE(m_pSlider->hasFocus());
  EXPECT_EQ(m_pSlider->m_bFocused, 1);
  m_Parent.Deliver();
  QTest::keyClick(m_pSlider, Qt::Key_Tab);
  EXPECT_TRUE(edit->hasFocus());
  EXPECT_EQ(m_pSlider->m_bFocused, 0);
  EXPECT_TRUE(m_Parent.Deliver().empty());
}

}  // namespace
}  // namespace tachyrun
