#include "controls/RasterOps.h"

#include <QTransform>
#include <cmath>

namespace tachyrun {
namespace {

constexpr QImage::Format kFormat = QImage::Format_ARGB32_Premultiplied;
constexpr QRgb kColourBits = 0x00FFFFFFu;

// The image under a painter whose logical coordinates are its pixels moved by
// a whole offset; null for any other painter.
const QImage* DirectImage(QPainter& painter, QPoint* offset) {
  if (!painter.isActive() || painter.device() == nullptr) return nullptr;
  if (painter.device()->devType() != QInternal::Image) return nullptr;
  const auto* image = static_cast<const QImage*>(painter.device());
  if (image->format() != kFormat || image->devicePixelRatio() != 1.0) return nullptr;
  const QTransform t = painter.combinedTransform();
  if (t.type() > QTransform::TxTranslate || t.dx() != std::trunc(t.dx()) ||
      t.dy() != std::trunc(t.dy())) {
    return nullptr;
  }
  *offset = QPoint(static_cast<int>(t.dx()), static_cast<int>(t.dy()));
  return image;
}

QImage InFormat(const QImage& image) {
  return image.format() == kFormat ? image : image.convertToFormat(kFormat);
}

// Puts pixels back through the painter, replacing what stands there.
void PutBack(QPainter& dest, const QPoint& at, const QImage& pixels) {
  dest.save();
  dest.setCompositionMode(QPainter::CompositionMode_Source);
  dest.drawImage(at, pixels);
  dest.restore();
}

void CombineDirect(QPainter& dest, const QImage& target, const QPoint& offset, const QPoint& at,
                   const QImage& src, const QRect& srcRect, RasterOp op) {
  QImage pixels = target.copy(QRect(at + offset, srcRect.size()));
  for (int row = 0; row < srcRect.height(); ++row) {
    auto* out = reinterpret_cast<QRgb*>(pixels.scanLine(row));
    const auto* in =
        reinterpret_cast<const QRgb*>(src.constScanLine(srcRect.top() + row)) + srcRect.left();
    for (int col = 0; col < srcRect.width(); ++col) {
      out[col] = op == RasterOp::kAnd ? (out[col] & in[col]) : (out[col] | in[col]);
    }
  }
  PutBack(dest, at, pixels);
}

}  // namespace

void BitBlt(QPainter& dest, int x, int y, int w, int h, const QImage& src, int srcX, int srcY,
            RasterOp op) {
  if (w <= 0 || h <= 0 || src.isNull() || !dest.isActive()) return;
  const QRect srcRect = QRect(srcX, srcY, w, h).intersected(src.rect());
  if (srcRect.isEmpty()) return;
  const QPoint at(x + (srcRect.left() - srcX), y + (srcRect.top() - srcY));
  const QImage pixels = InFormat(src);
  if (op == RasterOp::kCopy) {
    dest.save();
    dest.setCompositionMode(QPainter::CompositionMode_Source);
    dest.drawImage(at, pixels, srcRect);
    dest.restore();
    return;
  }
  QPoint offset;
  if (const QImage* target = DirectImage(dest, &offset)) {
    CombineDirect(dest, *target, offset, at, pixels, srcRect, op);
    return;
  }
  dest.save();
  dest.setCompositionMode(op == RasterOp::kAnd ? QPainter::RasterOp_SourceAndDestination
                                               : QPainter::RasterOp_SourceOrDestination);
  dest.drawImage(at, pixels, srcRect);
  dest.restore();
}

void StretchBlt(QPainter& dest, const QRect& destRect, const QImage& src, const QRect& srcRect) {
  if (destRect.width() <= 0 || destRect.height() <= 0 || srcRect.width() <= 0 ||
      srcRect.height() <= 0 || src.isNull() || !dest.isActive()) {
    return;
  }
  dest.save();
  dest.setCompositionMode(QPainter::CompositionMode_Source);
  dest.setRenderHint(QPainter::SmoothPixmapTransform, false);
  dest.drawImage(QRectF(destRect), InFormat(src), QRectF(srcRect));
  dest.restore();
}

void InvertFocusRect(QPainter& dest, const QRect& rect) {
  if (rect.width() <= 0 || rect.height() <= 0 || !dest.isActive()) return;
  QPoint offset;
  const QImage* target = DirectImage(dest, &offset);
  QImage pixels = target != nullptr ? target->copy(rect.translated(offset)) : QImage();
  dest.save();
  dest.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
  dest.setPen(QPen(Qt::white, 0));
  for (int y = rect.top(); y <= rect.bottom(); ++y) {
    const bool edgeRow = y == rect.top() || y == rect.bottom();
    const int step = edgeRow ? 1 : std::max(1, rect.width() - 1);
    for (int x = rect.left(); x <= rect.right(); x += step) {
      if (((x + y) & 1) != 0) continue;  // the dotted pattern
      if (target == nullptr) {
        dest.drawPoint(x, y);
        continue;
      }
      QRgb& pixel = reinterpret_cast<QRgb*>(pixels.scanLine(y - rect.top()))[x - rect.left()];
      if (qAlpha(pixel) != 0) pixel ^= kColourBits;
    }
  }
  dest.restore();
  if (target != nullptr) PutBack(dest, rect.topLeft(), pixels);
}

QImage CopyArea(QPainter& src, const QRect& rect) {
  if (rect.width() <= 0 || rect.height() <= 0) return QImage();
  QPoint offset;
  if (const QImage* image = DirectImage(src, &offset)) return image->copy(rect.translated(offset));
  QImage clear(rect.size(), kFormat);
  clear.fill(Qt::transparent);
  return clear;
}

}  // namespace tachyrun
