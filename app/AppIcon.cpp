#include "app/AppIcon.h"

#include <QPainter>
#include <QPixmap>

namespace tachyrun {
namespace {

// A stopwatch face over a film frame: what the program does, at any size.
QPixmap DrawIcon(int iSize) {
  QImage image(iSize, iSize, QImage::Format_ARGB32);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing, iSize > 16);
  const qreal s = iSize;
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(40, 48, 64));
  painter.drawRoundedRect(QRectF(0, s * 0.2, s, s * 0.6), s * 0.08, s * 0.08);
  painter.setBrush(QColor(230, 236, 245));
  for (int i = 0; i < 4; ++i) {
    const qreal x = s * (0.08 + 0.24 * i);
    painter.drawRect(QRectF(x, s * 0.24, s * 0.12, s * 0.08));
    painter.drawRect(QRectF(x, s * 0.68, s * 0.12, s * 0.08));
  }
  painter.setBrush(QColor(255, 170, 0));
  painter.drawEllipse(QRectF(s * 0.3, s * 0.32, s * 0.4, s * 0.36));
  painter.setPen(QPen(QColor(40, 48, 64), qMax(1.0, s / 16)));
  painter.drawLine(QPointF(s * 0.5, s * 0.5), QPointF(s * 0.62, s * 0.38));
  painter.end();
  return QPixmap::fromImage(image);
}

}  // namespace

QIcon LoadAppIcon() {
  QIcon icon;
  for (int iSize : {48, 32, 16}) icon.addPixmap(DrawIcon(iSize));
  return icon;
}

}  // namespace tachyrun
