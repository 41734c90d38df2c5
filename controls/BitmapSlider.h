#pragma once
// A slider drawn entirely from bitmaps: a channel bitmap that gives the
// control its size, a thumb bitmap that travels over it, an optional active
// version of each (the channel's shows from the start of the track up to the
// thumb, the thumb's while it is dragged), and optional transparency by a key
// colour. The parent hears of moves through posted CSliderEvents (SliderEvent.h);
// the control id is the number in the widget's objectName.

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QWidget>
#include <cstdint>

class QPainter;

namespace tachyrun {

// A Windows colour, 0x00BBGGRR.
using COLORREF = uint32_t;
// As a key colour: read the key from the bitmap's pixel (pixelX, pixelY).
inline constexpr COLORREF kKeyFromPixel = 0xFF000000u;

class CBitmapSlider : public QWidget {
 public:
  // Windows virtual-key codes of the keys the slider handles.
  static constexpr uint32_t VK_PRIOR = 33;
  static constexpr uint32_t VK_NEXT = 34;
  static constexpr uint32_t VK_END = 35;
  static constexpr uint32_t VK_HOME = 36;
  static constexpr uint32_t VK_LEFT = 37;
  static constexpr uint32_t VK_UP = 38;
  static constexpr uint32_t VK_RIGHT = 39;
  static constexpr uint32_t VK_DOWN = 40;

  explicit CBitmapSlider(QWidget* parent = nullptr);
  ~CBitmapSlider() override;

  // Bitmaps by id: one registered here wins over the resources
  // ":/bitmaps/<id>.bmp" and ":/bitmaps/<id>.png". A null image unregisters.
  static void RegisterBitmap(uint32_t id, const QImage& image);

  void SetRangeMax(int32_t max, bool redraw = false);
  void SetRangeMin(int32_t min, bool redraw = false);
  void SetRange(int32_t min, int32_t max, bool redraw = false);
  void SetPos(int32_t pos);
  int32_t GetPos() const { return m_iPos; }
  int32_t SetPageSize(int32_t size);
  void MoveSlider(int32_t x, int32_t y, int32_t cx, int32_t cy);
  void SetMargin(int32_t left, int32_t top, int32_t right, int32_t bottom);
  void SetMarginLeft(int32_t margin);
  void SetMarginTop(int32_t margin);
  void SetMarginRight(int32_t margin);
  void SetMarginBottom(int32_t margin);
  void SetVertical(bool vertical);
  void Enable(bool enable);
  void DrawFocusRect(bool draw, bool redraw = false);
  bool SetBitmapChannel(uint32_t channelId, uint32_t activeId = 0, bool transparent = false,
                        COLORREF colour = kKeyFromPixel, int32_t pixelX = 0, int32_t pixelY = 0);
  bool SetBitmapThumb(uint32_t thumbId, uint32_t activeId = 0, bool transparent = false,
                      COLORREF colour = kKeyFromPixel, int32_t pixelX = 0, int32_t pixelY = 0);

  int32_t Pos2Pixel(int32_t pos) const;
  int32_t Pixel2Pos(int32_t pixel) const;

  // The window's handlers, under their message names; the Qt events below
  // call them. flags stays 0: nothing here reads it.
  void OnPaint();
  void OnLButtonDown(uint32_t flags, QPoint point);
  void OnMouseMove(uint32_t flags, QPoint point);
  void OnLButtonUp(uint32_t flags, QPoint point);
  // True when the key was one of the eight the slider handles.
  bool OnKeyDown(uint32_t key, uint32_t repeat, uint32_t flags);
  void OnSetFocus();
  void OnKillFocus();
  void OnDestroy();

  // The id the notifications carry: objectName as a number, else 0.
  int32_t GetDlgCtrlID() const;

  int32_t m_iMax = 100;
  int32_t m_iMin = 0;
  int32_t m_iPos = 0;
  int32_t m_iPage = 20;
  QRect m_rcClient;
  int32_t m_iWidth = 0;
  int32_t m_iHeight = 0;
  int32_t m_iChannelWidth = 0;
  int32_t m_iChannelHeight = 0;
  int32_t m_iThumbWidth = 0;
  int32_t m_iThumbHeight = 0;
  int32_t m_iMarginLeft = 0;
  int32_t m_iMarginRight = 0;
  int32_t m_iMarginTop = 0;
  int32_t m_iMarginBottom = 0;
  int32_t m_iThumbBgX = -1;  // -1: nothing saved under the thumb
  int32_t m_iThumbBgY = -1;
  int32_t m_iMouseOffset = 0;
  int32_t m_bVertical = 0;
  int32_t m_bChannelActive = 0;
  int32_t m_bThumbActive = 0;
  int32_t m_bTransparentChannel = 0;
  int32_t m_bTransparentThumb = 0;
  int32_t m_bThumbLoaded = 0;
  int32_t m_bChannelLoaded = 0;
  int32_t m_bDragging = 0;
  int32_t m_bFocused = 0;
  int32_t m_bFocusRectShown = 0;
  int32_t m_bDrawFocusRect = 1;
  int32_t m_bEnabled = 1;
  // Colour bitmaps are opaque ARGB32 premultiplied; a mask is monochrome
  // with 1 where the key colour was.
  QImage m_bmChannel;
  QImage m_bmChannelMask;
  QImage m_bmChannelActive;
  QImage m_bmChannelActiveMask;
  QImage m_bmThumb;
  QImage m_bmThumbMask;
  QImage m_bmThumbActive;
  QImage m_bmThumbActiveMask;
  QImage m_bmThumbBg;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  QSize sizeHint() const override;

  // The blits of OnPaint, onto any painter.
  void DrawTransparentBitmap(QPainter& dest, int x, int y, int w, int h, const QImage& source,
                             int srcX, int srcY, const QImage& mask);
  void DrawBitmap(QPainter& dest, int x, int y, int w, int h, const QImage& source, int srcX,
                  int srcY, const QImage& mask, bool transparent);
  void DrawBitmapStretched(QPainter& dest, int x, int y, int w, int h, const QImage& source,
                           int srcX, int srcY, const QImage& mask, bool transparent);
  void DrawChannel(QPainter& dc, int32_t pixel);
  void DrawThumb(QPainter& dc, int32_t pixel);

 private:
  // Truncation toward zero, defined for every double (NaN gives 0, values past
  // the ends of int32_t give the end).
  static int32_t TruncToInt32(double value);
  // A 64-bit sum brought back into int32_t, held at its ends.
  static int32_t Saturate(int64_t value);
  static bool LoadBitmap(uint32_t id, QImage& bitmap);
  // Loads a bitmap, its active version if activeId isn't 0, and their masks
  // if transparent; the shared steps of SetBitmapChannel and SetBitmapThumb.
  static bool LoadBitmapPair(uint32_t id, uint32_t activeId, bool transparent, COLORREF colour,
                             int32_t pixelX, int32_t pixelY, QImage& bitmap, QImage& mask,
                             QImage& active, QImage& activeMask, int32_t& bActive);
  static void PrepareMask(QImage& source, QImage& mask, COLORREF colour, int32_t pixelX,
                          int32_t pixelY);
  void PostToParent(int type) const;
  void Invalidate() { update(); }
};

}  // namespace tachyrun
