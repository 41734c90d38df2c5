#include "controls/demo/SliderDemo.h"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QPainter>

#include "controls/BitmapSlider.h"
#include "controls/SliderEvent.h"

namespace tachyrun {
namespace {

// Ids of controls/bitmaps: 1xx horizontal, 2xx vertical, x1x keyed on magenta.
constexpr uint32_t kChannel = 101;
constexpr uint32_t kChannelActive = 102;
constexpr uint32_t kThumb = 103;
constexpr uint32_t kThumbActive = 104;
constexpr uint32_t kVerticalOffset = 100;
constexpr uint32_t kKeyedOffset = 10;

QLabel* AddLabel(QWidget* parent, const char* text, int x, int y) {
  auto* label = new QLabel(QString::fromUtf8(text), parent);
  label->move(x, y);
  return label;
}

}  // namespace

CSliderDemo::CSliderDemo(QWidget* parent) : QWidget(parent) {
  setWindowTitle(QStringLiteral("Bitmap slider"));
  setFixedSize(480, 268);

  AddLabel(this, "Horizontal, opaque", 16, 10);
  m_pHorizontal = AddSlider(kHorizontalId, 16, 30);
  m_pHorizontal->SetBitmapChannel(kChannel, kChannelActive);
  m_pHorizontal->SetBitmapThumb(kThumb, kThumbActive);
  m_pHorizontal->SetMargin(2, 0, 2, 0);
  m_pHorizontal->SetPos(30);

  AddLabel(this, "Transparent, keyed on magenta", 16, 74);
  m_pTransparent = AddSlider(kTransparentId, 16, PatternRect().top() + 10);
  m_pTransparent->SetBitmapChannel(kChannel + kKeyedOffset, kChannelActive + kKeyedOffset, true,
                                   kKeyFromPixel, 0, 0);
  m_pTransparent->SetBitmapThumb(kThumb + kKeyedOffset, kThumbActive + kKeyedOffset, true,
                                 kKeyFromPixel, 0, 0);
  m_pTransparent->SetMargin(2, 0, 2, 0);
  m_pTransparent->SetPos(70);

  AddLabel(this, "Vertical", 244, 10);
  m_pVertical = AddSlider(kVerticalId, 252, 30);
  m_pVertical->SetVertical(true);
  m_pVertical->SetBitmapChannel(kChannel + kVerticalOffset, kChannelActive + kVerticalOffset);
  m_pVertical->SetBitmapThumb(kThumb + kVerticalOffset, kThumbActive + kVerticalOffset);
  m_pVertical->SetMargin(0, 2, 0, 2);
  m_pVertical->MoveSlider(252, 30, 24, 200);
  m_pVertical->SetPos(45);

  auto* enabled = new QCheckBox(QStringLiteral("Enabled"), this);
  enabled->setChecked(true);
  enabled->move(16, 160);
  connect(enabled, &QCheckBox::toggled, this, [this](bool on) { SetAllEnabled(on); });

  m_pPositions = AddLabel(this, "", 16, 190);
  m_pPositions->resize(220, 60);
  m_pPositions->setAlignment(Qt::AlignLeft | Qt::AlignTop);

  AddLabel(this, "Notifications", 296, 10);
  m_pLog = new QListWidget(this);
  m_pLog->setGeometry(296, 30, 172, 226);
  m_pLog->setFocusPolicy(Qt::NoFocus);
  SetAllEnabled(true);
}

CBitmapSlider* CSliderDemo::AddSlider(int32_t id, int x, int y) {
  auto* slider = new CBitmapSlider(this);
  slider->setObjectName(QString::number(id));
  slider->move(x, y);
  return slider;
}

CBitmapSlider* CSliderDemo::Slider(int32_t id) const {
  switch (id) {
    case kHorizontalId:
      return m_pHorizontal;
    case kVerticalId:
      return m_pVertical;
    case kTransparentId:
      return m_pTransparent;
    default:
      return nullptr;
  }
}

QRect CSliderDemo::PatternRect() const {
  return QRect(8, 94, 216, 44);
}

void CSliderDemo::SetAllEnabled(bool enabled) {
  for (CBitmapSlider* slider : {m_pHorizontal, m_pVertical, m_pTransparent}) {
    slider->Enable(enabled);
  }
  ShowPositions();
}

void CSliderDemo::ShowPositions() {
  m_pPositions->setText(QStringLiteral("Positions: %1, %2, %3")
                            .arg(m_pHorizontal->GetPos())
                            .arg(m_pVertical->GetPos())
                            .arg(m_pTransparent->GetPos()));
}

bool CSliderDemo::event(QEvent* event) {
  const int type = static_cast<int>(event->type());
  if (type != WM_SLIDER_MOVING && type != WM_SLIDER_MOVED) return QWidget::event(event);
  const auto* moved = static_cast<const CSliderEvent*>(event);
  m_pLog->insertItem(
      0, QStringLiteral("%1  %2  pos %3")
             .arg(type == WM_SLIDER_MOVING ? QStringLiteral("MOVING") : QStringLiteral("MOVED "))
             .arg(moved->ControlId())
             .arg(moved->Position()));
  while (m_pLog->count() > kLogLines) delete m_pLog->takeItem(m_pLog->count() - 1);
  ShowPositions();
  return true;
}

// A striped band, so that the transparent slider shows what lies below it.
void CSliderDemo::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect band = PatternRect();
  painter.fillRect(band, QColor(255, 244, 200));
  painter.fillRect(band, QBrush(QColor(120, 160, 90), Qt::BDiagPattern));
}

}  // namespace tachyrun
