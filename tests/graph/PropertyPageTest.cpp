// The "Property Page" dialog on the offscreen platform: it opens at (1, 1)
// of its parent, shows the element's editable properties, sets what the user
// changed, refuses text that is no value, and uses up the caller's reference.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <functional>

#include "graph/GraphWalk.h"
#include "graph/PropertyPage.h"
#include "graph/PropertyPages.h"

extern "C" {
// An element with nothing to edit: only the name and parent of every object.
typedef struct {
  GstElement parent;
} TachyrunBare;
typedef struct {
  GstElementClass parent_class;
} TachyrunBareClass;
G_DEFINE_TYPE(TachyrunBare, tachyrun_bare, GST_TYPE_ELEMENT)
static void tachyrun_bare_init(TachyrunBare*) {}
static void tachyrun_bare_class_init(TachyrunBareClass*) {}
}

namespace {

// Runs `step` on the page once the modal loop shows it.
void WhenShown(const std::function<void(CPropertyPage*)>& step) {
  QTimer::singleShot(0, [step] {
    auto* page = qobject_cast<CPropertyPage*>(QApplication::activeModalWidget());
    ASSERT_NE(page, nullptr);
    step(page);
  });
}

QPushButton* Button(CPropertyPage* page, QDialogButtonBox::StandardButton which) {
  return page->findChild<QDialogButtonBox*>()->button(which);
}

ElementRef NewSource() {
  return ElementRef(
      GST_ELEMENT(gst_object_ref_sink(gst_element_factory_make("videotestsrc", "src"))));
}

}  // namespace

TEST(PropertyPageTest, OpensAtItsParentsCornerAndSetsWhatChanged) {
  ElementRef source = NewSource();
  const int refs = GST_OBJECT_REFCOUNT_VALUE(source.get());
  QWidget parent;
  parent.setGeometry(200, 150, 300, 200);
  QString title;
  QPoint position;
  bool shown = false;
  WhenShown([&](CPropertyPage* page) {
    shown = true;
    title = page->windowTitle();
    position = page->pos();
    static_cast<QLineEdit*>(page->EditorOf("num-buffers"))->setText("7");
    auto* pattern = static_cast<QComboBox*>(page->EditorOf("pattern"));
    pattern->setCurrentIndex(pattern->findText("ball"));
    static_cast<QCheckBox*>(page->EditorOf("is-live"))->setChecked(true);
    EXPECT_EQ(page->EditorOf("name"), nullptr);
    Button(page, QDialogButtonBox::Ok)->click();
  });
  gst_object_ref(source.get());  // the reference the call uses up
  EXPECT_EQ(ShowPropertyPages(source.get(), &parent), S_OK);
  ASSERT_TRUE(shown);
  EXPECT_EQ(title, "Property Page");
  EXPECT_EQ(position, parent.mapToGlobal(QPoint(1, 1)));
  EXPECT_EQ(GST_OBJECT_REFCOUNT_VALUE(source.get()), refs);
  gint buffers = 0;
  gint pattern = 0;
  gboolean live = FALSE;
  g_object_get(source.get(), "num-buffers", &buffers, "pattern", &pattern, "is-live", &live,
               nullptr);
  EXPECT_EQ(buffers, 7);
  EXPECT_EQ(pattern, 18);  // ball
  EXPECT_TRUE(live);
}

TEST(PropertyPageTest, TextThatIsNoValueKeepsThePageOpen) {
  ElementRef source = NewSource();
  bool stayedOpen = false;
  QString status;
  WhenShown([&](CPropertyPage* page) {
    static_cast<QLineEdit*>(page->EditorOf("num-buffers"))->setText("many");
    static_cast<QLineEdit*>(page->EditorOf("horizontal-speed"))->setText("3");
    Button(page, QDialogButtonBox::Ok)->click();
    stayedOpen = page->isVisible();
    for (QLabel* label : page->findChildren<QLabel*>()) {
      if (label->text().startsWith("Not a value")) status = label->text();
    }
    Button(page, QDialogButtonBox::Cancel)->click();
  });
  gst_object_ref(source.get());
  EXPECT_EQ(ShowPropertyPages(source.get(), nullptr), S_OK);
  EXPECT_TRUE(stayedOpen);
  EXPECT_EQ(status, "Not a value of: num-buffers");
  gint buffers = 0;
  gint speed = 0;
  g_object_get(source.get(), "num-buffers", &buffers, "horizontal-speed", &speed, nullptr);
  EXPECT_EQ(buffers, -1);
  EXPECT_EQ(speed, 3);  // the valid row was set
}

TEST(PropertyPageTest, ApplySetsAndCancelKeepsWhatWasApplied) {
  ElementRef source = NewSource();
  WhenShown([&](CPropertyPage* page) {
    static_cast<QLineEdit*>(page->EditorOf("num-buffers"))->setText("9");
    Button(page, QDialogButtonBox::Apply)->click();
    static_cast<QLineEdit*>(page->EditorOf("num-buffers"))->setText("11");
    Button(page, QDialogButtonBox::Cancel)->click();
  });
  gst_object_ref(source.get());
  EXPECT_EQ(ShowPropertyPages(source.get(), nullptr), S_OK);
  gint buffers = 0;
  g_object_get(source.get(), "num-buffers", &buffers, nullptr);
  EXPECT_EQ(buffers, 9);
}

TEST(PropertyPageTest, NothingToEditIsNoInterfaceAndStillUsesTheReference) {
  ElementRef bare(
      GST_ELEMENT(gst_object_ref_sink(g_object_new(tachyrun_bare_get_type(), nullptr))));
  const int refs = GST_OBJECT_REFCOUNT_VALUE(bare.get());
  gst_object_ref(bare.get());
  EXPECT_EQ(ShowPropertyPages(bare.get(), nullptr), E_NOINTERFACE);
  EXPECT_EQ(GST_OBJECT_REFCOUNT_VALUE(bare.get()), refs);
  EXPECT_EQ(ShowPropertyPages(nullptr, nullptr), E_NOINTERFACE);
}
