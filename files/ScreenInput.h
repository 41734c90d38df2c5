#pragma once
// The screen size and the state of a key, read from the X display named by
// $DISPLAY. Each call opens its own connection and closes it again, so a
// server that went away or came back is simply met as it is now; a server
// that refuses a connection is asked again a few times (at most ~30 ms).
// Without a display the size is 0 x 0 and no key is down.

#include <cstdint>

// Reads the width and height in pixels of the display's default screen into
// the two process-wide values (0 and 0 without a display).
void ReadScreenSize();
int32_t GetScreenWidth();
int32_t GetScreenHeight();

// 1 when the key with this Windows virtual-key number (0x41 for A, 0x10 for
// either Shift, 0x01 for the left mouse button...) is held at this moment,
// else 0; 0 also for a number without a key here.
int32_t IsKeyDown(int32_t virtualKey);
