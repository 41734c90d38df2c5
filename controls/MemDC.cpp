#include "controls/MemDC.h"

#include <QPagedPaintDevice>
#include <QTransform>

namespace tachyrun {

bool IsPrinting(const QPainter* pDC) {
  const QPaintDevice* device = pDC->device();
  return device != nullptr && (device->devType() == QInternal::Printer ||
                               dynamic_cast<const QPagedPaintDevice*>(device) != nullptr);
}

QRect ClipBox(const QPainter* pDC) {
  if (pDC->hasClipping()) return pDC->clipBoundingRect().toAlignedRect();
  const QPaintDevice* device = pDC->device();
  if (device == nullptr) return QRect();
  const QRect deviceRect(0, 0, device->width(), device->height());
  return pDC->combinedTransform().inverted().mapRect(deviceRect);
}

CMemDC::CMemDC(QPainter* pDC, const QRect* pRect)
    : m_pOldBitmap(nullptr), m_pDC(pDC), m_bMemDC(!IsPrinting(pDC)) {
  m_rect = pRect != nullptr ? *pRect : ClipBox(pDC);
  if (!m_bMemDC) return;  // a second name of the real painter: Dc() hands it out

  // The image is counted in device pixels (the painter's mapping includes
  // the device's pixel ratio)...
  const QTransform toDevice = pDC->combinedTransform();
  const QRect deviceRect = toDevice.mapRect(m_rect);
  if (deviceRect.isEmpty()) {
    m_rect = QRect();  // no area: nothing to draw on and nothing to copy
    return;
  }
  m_bitmap = QImage(deviceRect.size(), QImage::Format_ARGB32_Premultiplied);
  if (m_bitmap.isNull()) return;  // too large to allocate: nothing to draw on
  // ...and starts clear, so that what nobody draws on shows what lies below.
  m_bitmap.fill(Qt::transparent);
  m_pOldBitmap = m_painter.device();
  m_painter.begin(&m_bitmap);
  // ...while logical coordinates mean the same as on the real painter: its
  // mapping, then the area's device corner moved to the image's origin.
  m_painter.setWorldTransform(toDevice *
                              QTransform::fromTranslate(-deviceRect.left(), -deviceRect.top()));
  m_rect = toDevice.inverted().mapRect(deviceRect);
}

CMemDC::~CMemDC() {
  if (!m_bMemDC || !m_painter.isActive()) return;  // nothing of the real painter is ours
  m_painter.end();
  // Pixels left clear keep what the real target already shows.
  m_pDC->drawImage(QRectF(m_rect), m_bitmap);
}

}  // namespace tachyrun
