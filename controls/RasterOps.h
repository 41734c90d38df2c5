#pragma once
// The blits the slider paints with, as GDI's raster operations on a painter.
// Images are ARGB32 premultiplied. On a painter over such an image with a
// plain translation, AND and OR work on all four bytes of a pixel: pixels
// are either clear (0) or opaque, a masked-out pixel becomes clear rather
// than black, and what lies below the control stays visible there. On any
// other painter they are Qt's raster operations, which leave pixels opaque.

#include <QImage>
#include <QPainter>
#include <QRect>

namespace tachyrun {

// Whole-pixel operations of a blit.
enum class RasterOp { kCopy, kAnd, kPaint };

// Blits w x h pixels of src from (srcX, srcY) to (x, y) of dest; the part
// outside src is left alone. kCopy replaces, alpha included.
void BitBlt(QPainter& dest, int x, int y, int w, int h, const QImage& src, int srcX, int srcY,
            RasterOp op);

// Copies src's piece srcRect onto destRect, each pixel repeated or dropped
// as the sizes demand; an empty or inverted rectangle draws nothing.
void StretchBlt(QPainter& dest, const QRect& destRect, const QImage& src, const QRect& srcRect);

// Inverts every other pixel of the rectangle's outline: drawn twice, it is gone.
// A clear pixel stays clear (there is nothing drawn there to invert).
void InvertFocusRect(QPainter& dest, const QRect& rect);

// What the painter's image holds at rect (logical units), clear where the
// painter has no image to read.
QImage CopyArea(QPainter& src, const QRect& rect);

}  // namespace tachyrun
