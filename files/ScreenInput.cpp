#include "files/ScreenInput.h"

#include <X11/Xlib.h>
#include <X11/keysym.h>

#include <atomic>
#include <cstdlib>
#include <memory>

#include "platform/Clock.h"

namespace {

std::atomic<int32_t> g_ScreenWidth{0};
std::atomic<int32_t> g_ScreenHeight{0};

struct CloseDisplay {
  void operator()(Display* display) const { XCloseDisplay(display); }
};
using DisplayPtr = std::unique_ptr<Display, CloseDisplay>;

// A busy server (Xvfb under load) refuses a share of new connections: it is
// asked up to five times, 2 to 16 ms apart. Without a display named there is
// nobody to ask again.
DisplayPtr OpenDisplay() {
  constexpr int kAttempts = 5;
  const char* name = std::getenv("DISPLAY");
  const bool named = name != nullptr && *name != '\0';
  for (int attempt = 1;; ++attempt) {
    if (Display* display = XOpenDisplay(nullptr)) return DisplayPtr(display);
    if (!named || attempt == kAttempts) return nullptr;
    platform::SleepMs(1u << attempt);
  }
}

// A virtual key as X sees it: up to two key symbols (left and right
// variants), or a pointer button mask.
struct XKey {
  KeySym first = NoSymbol;
  KeySym second = NoSymbol;
  unsigned int buttonMask = 0;
};

struct NamedKey {
  int32_t virtualKey;
  KeySym first;
  KeySym second;
};

// Keys with a number of their own; letters, digits, the numeric pad and the
// function keys come in runs and are computed in ToXKey.
constexpr NamedKey kNamedKeys[] = {
    {0x08, XK_BackSpace, NoSymbol},    {0x09, XK_Tab, XK_ISO_Left_Tab},
    {0x0C, XK_Clear, XK_KP_Begin},     {0x0D, XK_Return, XK_KP_Enter},
    {0x10, XK_Shift_L, XK_Shift_R},    {0x11, XK_Control_L, XK_Control_R},
    {0x12, XK_Alt_L, XK_Alt_R},        {0x13, XK_Pause, NoSymbol},
    {0x14, XK_Caps_Lock, NoSymbol},    {0x1B, XK_Escape, NoSymbol},
    {0x20, XK_space, NoSymbol},        {0x21, XK_Prior, XK_KP_Prior},
    {0x22, XK_Next, XK_KP_Next},       {0x23, XK_End, XK_KP_End},
    {0x24, XK_Home, XK_KP_Home},       {0x25, XK_Left, XK_KP_Left},
    {0x26, XK_Up, XK_KP_Up},           {0x27, XK_Right, XK_KP_Right},
    {0x28, XK_Down, XK_KP_Down},       {0x29, XK_Select, NoSymbol},
    {0x2B, XK_Execute, NoSymbol},      {0x2C, XK_Print, XK_Sys_Req},
    {0x2D, XK_Insert, XK_KP_Insert},   {0x2E, XK_Delete, XK_KP_Delete},
    {0x2F, XK_Help, NoSymbol},         {0x5B, XK_Super_L, NoSymbol},
    {0x5C, XK_Super_R, NoSymbol},      {0x5D, XK_Menu, NoSymbol},
    {0x6A, XK_KP_Multiply, NoSymbol},  {0x6B, XK_KP_Add, NoSymbol},
    {0x6C, XK_KP_Separator, NoSymbol}, {0x6D, XK_KP_Subtract, NoSymbol},
    {0x6E, XK_KP_Decimal, NoSymbol},   {0x6F, XK_KP_Divide, NoSymbol},
    {0x90, XK_Num_Lock, NoSymbol},     {0x91, XK_Scroll_Lock, NoSymbol},
    {0xA0, XK_Shift_L, NoSymbol},      {0xA1, XK_Shift_R, NoSymbol},
    {0xA2, XK_Control_L, NoSymbol},    {0xA3, XK_Control_R, NoSymbol},
    {0xA4, XK_Alt_L, NoSymbol},        {0xA5, XK_Alt_R, XK_ISO_Level3_Shift},
    {0xBA, XK_semicolon, NoSymbol},    {0xBB, XK_equal, NoSymbol},
    {0xBC, XK_comma, NoSymbol},        {0xBD, XK_minus, NoSymbol},
    {0xBE, XK_period, NoSymbol},       {0xBF, XK_slash, NoSymbol},
    {0xC0, XK_grave, NoSymbol},        {0xDB, XK_bracketleft, NoSymbol},
    {0xDC, XK_backslash, NoSymbol},    {0xDD, XK_bracketright, NoSymbol},
    {0xDE, XK_apostrophe, NoSymbol},
};

XKey ToXKey(int32_t virtualKey) {
  XKey key;
  if (virtualKey == 0x01) {
    key.buttonMask = Button1Mask;
  } else if (virtualKey == 0x02) {
    key.buttonMask = Button3Mask;
  } else if (virtualKey == 0x04) {
    key.buttonMask = Button2Mask;
  } else if (virtualKey >= '0' && virtualKey <= '9') {
    key.first = XK_0 + (virtualKey - '0');
  } else if (virtualKey >= 'A' && virtualKey <= 'Z') {
    key.first = XK_a + (virtualKey - 'A');
  } else if (virtualKey >= 0x60 && virtualKey <= 0x69) {
    key.first = XK_KP_0 + (virtualKey - 0x60);
  } else if (virtualKey >= 0x70 && virtualKey <= 0x87) {
    key.first = XK_F1 + (virtualKey - 0x70);
  } else {
    for (const NamedKey& named : kNamedKeys) {
      if (named.virtualKey == virtualKey) {
        key.first = named.first;
        key.second = named.second;
        break;
      }
    }
  }
  return key;
}

bool IsSymbolDown(Display* display, const char (&keymap)[32], KeySym symbol) {
  if (symbol == NoSymbol) return false;
  const KeyCode code = XKeysymToKeycode(display, symbol);
  return code != 0 && (keymap[code / 8] & (1 << (code % 8))) != 0;
}

bool IsButtonDown(Display* display, unsigned int buttonMask) {
  Window root = 0;
  Window child = 0;
  int rootX = 0;
  int rootY = 0;
  int x = 0;
  int y = 0;
  unsigned int mask = 0;
  XQueryPointer(display, DefaultRootWindow(display), &root, &child, &rootX, &rootY, &x, &y, &mask);
  return (mask & buttonMask) != 0;
}

}  // namespace

void ReadScreenSize() {
  DisplayPtr display = OpenDisplay();
  const int screen = display ? DefaultScreen(display.get()) : 0;
  g_ScreenWidth = display ? XDisplayWidth(display.get(), screen) : 0;
  g_ScreenHeight = display ? XDisplayHeight(display.get(), screen) : 0;
}

int32_t GetScreenWidth() {
  return g_ScreenWidth.load();
}
int32_t GetScreenHeight() {
  return g_ScreenHeight.load();
}

int32_t IsKeyDown(int32_t virtualKey) {
  const XKey key = ToXKey(virtualKey);
  if (key.first == NoSymbol && key.buttonMask == 0) return 0;
  DisplayPtr display = OpenDisplay();
  if (!display) return 0;
  if (key.buttonMask != 0) return IsButtonDown(display.get(), key.buttonMask) ? 1 : 0;
  char keymap[32] = {};
  XQueryKeymap(display.get(), keymap);
  return IsSymbolDown(display.get(), keymap, key.first) ||
                 IsSymbolDown(display.get(), keymap, key.second)
             ? 1
             : 0;
}
