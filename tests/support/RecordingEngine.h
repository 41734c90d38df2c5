#pragma once
// An engine with CPixmill's members that records every call and hands out
// real memory: the test family runs on it to show which call, engine,
// buffers and arguments each test uses, at its real round counts.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "engine/Pixmill.h"

namespace tachyrun::testing {

struct EngineCall {
  std::string strName;
  const unsigned char* pSource = nullptr;
  const unsigned char* pDestination = nullptr;
  tagPicProps src{};
  tagPicProps dst{};
  tagRECT srcRect{};
  tagRECT dstRect{};
  int iQuality = -1;
  const unsigned char* pWork = nullptr;
  int aArgs[3] = {};
  bool bFlag = false;
  alignas(8) PerspectiveParams params;
};

class RecordingEngine {
 public:
  int32_t iStatus = 0;  // what every picture call returns
  bool bFailAllocations = false;
  std::string strMessage;  // GetTestMsg copies it; empty leaves the buffer alone
  std::vector<EngineCall> calls;
  std::vector<int> testCodes;
  std::vector<std::string> allocations;  // "WxH/pitch"
  std::vector<unsigned char*> freed;
  std::map<unsigned char*, std::unique_ptr<unsigned char[]>> live;
  std::function<void(const EngineCall&)> onCall;  // runs inside each picture call

  unsigned char* AllocBuffersRGBA(int w, int h, int pitch) {
    allocations.push_back(std::to_string(w) + "x" + std::to_string(h) + "/" +
                          std::to_string(pitch));
    if (bFailAllocations) return nullptr;
    auto block = std::make_unique<unsigned char[]>(static_cast<size_t>(h) * pitch);
    std::memset(block.get(), 0xEE, static_cast<size_t>(h) * pitch);
    unsigned char* p = block.get();
    live[p] = std::move(block);
    return p;
  }
  void FreeBuffers(unsigned char** pp) {
    freed.push_back(*pp);
    live.erase(*pp);
  }
  int32_t Img_Resize(const unsigned char* s, unsigned char* d, const tagPicProps* sp,
                     const tagPicProps* dp, const tagRECT* sr, const tagRECT* dr, eResizeQuality q,
                     unsigned char* work, int last) {
    EngineCall c = Make("Img_Resize", s, d, sp, dp, sr, dr);
    c.iQuality = q;
    c.pWork = work;
    c.aArgs[0] = last;
    return Record(std::move(c));
  }
  int32_t Img_ResizeARGB(unsigned char* s, unsigned char* d, tagPicProps* sp, tagPicProps* dp,
                         tagRECT* sr, tagRECT* dr, int first, int second) {
    EngineCall c = Make("Img_ResizeARGB", s, d, sp, dp, sr, dr);
    c.aArgs[0] = first;
    c.aArgs[1] = second;
    return Record(std::move(c));
  }
  int32_t Img_Convert2(const unsigned char* s, unsigned char* d, const tagPicProps* sp,
                       const tagPicProps* dp, const tagRECT* sr, const tagRECT* dr, bool flag,
                       unsigned char* work) {
    EngineCall c = Make("Img_Convert2", s, d, sp, dp, sr, dr);
    c.bFlag = flag;
    c.pWork = work;
    return Record(std::move(c));
  }
  int32_t Img_PerspectiveCoeffARGB(unsigned char* s, const tagPicProps* sp, const tagRECT* sr,
                                   int first, int second, int third, unsigned char* d,
                                   const tagPicProps* dp, const tagRECT* dr,
                                   PerspectiveParams* params) {
    EngineCall c = Make("Img_PerspectiveCoeffARGB", s, d, sp, dp, sr, dr);
    c.aArgs[0] = first;
    c.aArgs[1] = second;
    c.aArgs[2] = third;
    c.params = *params;
    return Record(std::move(c));
  }
  int MakeTest(int code) {
    testCodes.push_back(code);
    return iStatus;
  }
  int GetTestMsg(char* buffer, int size) {
    if (!strMessage.empty())
      std::snprintf(buffer, static_cast<size_t>(size), "%s", strMessage.c_str());
    return 0;
  }

 private:
  static EngineCall Make(const char* name, const unsigned char* s, const unsigned char* d,
                         const tagPicProps* sp, const tagPicProps* dp, const tagRECT* sr,
                         const tagRECT* dr) {
    EngineCall c;
    c.strName = name;
    c.pSource = s;
    c.pDestination = d;
    c.src = *sp;
    c.dst = *dp;
    c.srcRect = *sr;
    c.dstRect = *dr;
    return c;
  }
  int32_t Record(EngineCall c) {
    if (onCall) onCall(c);
    calls.push_back(std::move(c));
    return iStatus;
  }
};

// A clock that answers from a list, then repeats its last value.
class ScriptedClock {
 public:
  explicit ScriptedClock(std::vector<uint32_t> values) : m_Values(std::move(values)) {}
  uint32_t operator()() {
    const uint32_t v = m_Values[std::min(m_iNext, m_Values.size() - 1)];
    ++m_iNext;
    return v;
  }

 private:
  std::vector<uint32_t> m_Values;
  size_t m_iNext = 0;
};

}  // namespace tachyrun::testing
