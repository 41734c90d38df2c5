#pragma once
// The double buffer of the controls: for the span of a paint it stands in for
// the real painter. What is drawn lands in an off-screen image the size of the
// area in device pixels, with the same logical coordinates as the real target,
// and is copied to the real painter once, when the object is destroyed. On a
// paged device (a printer, a PDF writer) it draws straight on the real painter.

#include <QImage>
#include <QPainter>
#include <QRect>

namespace tachyrun {

class CMemDC {
 public:
  // pRect: the area to buffer, in the real painter's logical units; null
  // means the clip box of the real painter.
  explicit CMemDC(QPainter* pDC, const QRect* pRect = nullptr);
  ~CMemDC();
  CMemDC(const CMemDC&) = delete;
  CMemDC& operator=(const CMemDC&) = delete;

  // The painter to draw with: the buffer's, or the real one when printing.
  QPainter* Dc() { return m_bMemDC ? &m_painter : m_pDC; }
  QPainter* operator->() { return Dc(); }
  QPainter& operator*() { return *Dc(); }

  // The off-screen image (empty when printing or for an empty area).
  QImage m_bitmap;
  // The device the buffer's painter stood on before the buffer; null here,
  // since a fresh painter stands on nothing.
  QPaintDevice* m_pOldBitmap;
  // The real painter; not owned.
  QPainter* m_pDC;
  // Area the buffer covers, in logical units.
  QRect m_rect;
  // True unless the real painter is printing.
  bool m_bMemDC;

 private:
  QPainter m_painter;
};

// True when the painter draws on a paged device: a printer or a PDF writer.
bool IsPrinting(const QPainter* pDC);

// The area a painter may draw on, in its logical units.
QRect ClipBox(const QPainter* pDC);

}  // namespace tachyrun
