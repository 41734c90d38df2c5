#include "controls/RasterOps.h"

#include <QTransform>
#include <cmath>

namespace tachyrun {
namespace {

constexpr QImage::Format kFormat = QImage::Format_ARGB32_Premultiplied;
constexpr QRgb kColourBits = 0x00FFFFFFu;

// A painter over an image whose device pixels are its logical ones scaled by
// a whole number (the image's pixel ratio) and moved by a whole offset.
struct DirectTarget {
  const QImage* image = nullptr;  // null: no such painter
  int scale = 1;
  QPoint offset;

  QRect DeviceRect(const QRect& logical) const {
    return QRect(logical.topLeft() * scale + offset, logical.size() * scale);
  }
};

bool IsWhole(qreal value) {
  return value == std::trunc(value);
}

DirectTarget DirectImage(QPainter& painter) {
  if (!painter.isActive() || painter.device() == nullptr) return {};
  if (painter.device()->devType() != QInternal::Image) return {};
  const auto* image = static_cast<const QImage*>(painter.device());
  if (image->format() != kFormat) return {};
  const QTransform t = painter.deviceTransform();  // pixel ratio included
  if (t.type() > QTransform::TxScale || t.m11() != t.m22() || t.m11() < 1 || t.m11() > 16 ||
      !IsWhole(t.m11()) || !IsWhole(t.dx()) || !IsWhole(t.dy())) {
    return {};
  }
  return {image, static_cast<int>(t.m11()),
          QPoint(static_cast<int>(t.dx()), static_cast<int>(t.dy()))};
}

QImage InFormat(const QImage& image) {
  return image.format() == kFormat ? image : image.convertToFormat(kFormat);
}

// Puts device pixels back through the painter, replacing what stands there.
void PutBack(QPainter& dest, const DirectTarget& target, const QPoint& at, QImage pixels) {
  pixels.setDevicePixelRatio(target.scale);
  dest.save();
  dest.setCompositionMode(QPainter::CompositionMode_Source);
  dest.drawImage(at, pixels);
  dest.restore();
}

// AND or OR of src's piece srcRect onto the target at the logical point at;
// each source pixel covers scale x scale device pixels.
void CombineDirect(QPainter& dest, const DirectTarget& target, const QPoint& at, const QImage& src,
                   const QRect& srcRect, RasterOp op) {
  QImage pixels = target.image->copy(target.DeviceRect(QRect(at, srcRect.size())));
  for (int row = 0; row < pixels.height(); ++row) {
    auto* out = reinterpret_cast<QRgb*>(pixels.scanLine(row));
    const auto* in =
        reinterpret_cast<const QRgb*>(src.constScanLine(srcRect.top() + row / target.scale)) +
        srcRect.left();
    for (int col = 0; col < pixels.width(); ++col) {
      const QRgb s = in[col / target.scale];
      out[col] = op == RasterOp::kAnd ? (out[col] & s) : (out[col] | s);
    }
  }
  PutBack(dest, target, at, pixels);
}

bool OnDottedOutline(const QRect& rect, int x, int y) {
  const bool outline =
      x == rect.left() || x == rect.right() || y == rect.top() || y == rect.bottom();
  return outline && ((x + y) & 1) == 0;
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
  const DirectTarget target = DirectImage(dest);
  if (target.image != nullptr) {
    CombineDirect(dest, target, at, pixels, srcRect, op);
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
  const DirectTarget target = DirectImage(dest);
  if (target.image == nullptr) {
    dest.save();
    dest.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
    dest.setPen(QPen(Qt::white, 0));
    for (int y = rect.top(); y <= rect.bottom(); ++y)
      for (int x = rect.left(); x <= rect.right(); ++x)
        if (OnDottedOutline(rect, x, y)) dest.drawPoint(x, y);
    dest.restore();
    return;
  }
  QImage pixels = target.image->copy(target.DeviceRect(rect));
  for (int row = 0; row < pixels.height(); ++row) {
    auto* line = reinterpret_cast<QRgb*>(pixels.scanLine(row));
    const int y = rect.top() + row / target.scale;
    for (int col = 0; col < pixels.width(); ++col) {
      if (!OnDottedOutline(rect, rect.left() + col / target.scale, y)) continue;
      if (qAlpha(line[col]) != 0) line[col] ^= kColourBits;
    }
  }
  PutBack(dest, target, rect.topLeft(), pixels);
}

QImage CopyArea(QPainter& src, const QRect& rect) {
  if (rect.width() <= 0 || rect.height() <= 0) return QImage();
  QImage area(rect.size(), kFormat);
  area.fill(Qt::transparent);
  const DirectTarget target = DirectImage(src);
  if (target.image == nullptr) return area;
  // One device pixel of each scale x scale block: the bitmaps drawn there
  // cover whole blocks.
  const QImage pixels = target.image->copy(target.DeviceRect(rect));
  for (int y = 0; y < rect.height(); ++y)
    for (int x = 0; x < rect.width(); ++x)
      area.setPixel(x, y, pixels.pixel(x * target.scale, y * target.scale));
  return area;
}

}  // namespace tachyrun
