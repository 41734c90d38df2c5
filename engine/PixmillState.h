// The inside of one CPixmill: its backend, the size it was made for, the
// text of its last built-in test and the state of its preview.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/PixmillEngine.h"

// The engine's preview window. The library has no display of its own, so the
// preview keeps what a window would show; a front end may draw it.
struct PixmillPreview {
  bool bVisible = false;
  int iFrames = 0;              // test pictures sent so far
  int iWidth = 0, iHeight = 0;  // size of aPicture, ARGB
  std::vector<uint8_t> aPicture;
};

struct PixmillState {
  std::unique_ptr<PixmillEngine> pBackend;
  int32_t iInitStatus = PIXMILL_E_NOT_READY;  // what picture calls answer without a backend
  int iDevice = 0;
  int iWidth = 0, iHeight = 0;
  std::string sMsg;        // text of the last MakeTest
  std::string sInitError;  // why Img_InitConverter failed, for MakeTest
  PixmillPreview preview;
};

// Runs built-in test code on the state; leaves its text in state.sMsg.
int RunEngineTest(PixmillState& state, int code);

// Longest text MakeTest leaves, so that a 150-byte buffer always holds it.
constexpr size_t kMaxTestMsg = 149;
