// Engines made for several CPUs give the one-CPU engine's bytes exactly,
// and their thread team lives from Img_InitConverter to the destructor.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "engine/BandPool.h"
#include "engine/Pixmill.h"
#include "tests/engine/EngineTestPictures.h"

using namespace enginetest;

namespace {

struct Case {
  uint32_t sf;
  int sw, sh;
  uint32_t df;
  int dw, dh;
  tagRECT sr, dr;
};

// Runs fn(engine) on a 1-CPU engine and on engines of 2, 3 and 4 CPUs and
// compares the destinations.
template <typename Fn>
void ExpectSameBytes(size_t dstBytes, Fn fn) {
  Bytes one(dstBytes, 0x3C);
  CPixmill e1;
  ASSERT_EQ(0, e1.Img_InitConverter(-1, 1, nullptr, 64, 64, 0));
  ASSERT_EQ(0, fn(e1, one.data()));
  for (int cpus : {2, 3, 4}) {
    Bytes many(dstBytes, 0x3C);
    CPixmill en;
    ASSERT_EQ(0, en.Img_InitConverter(-1, cpus, nullptr, 64, 64, 0));
    ASSERT_EQ(0, fn(en, many.data()));
    ASSERT_EQ(one, many) << cpus << " CPUs";
  }
}

}  // namespace

TEST(CpuBandsTest, ResizeArgbEveryFilterUpDownAndSame) {
  const std::pair<int, int> sizes[] = {{72, 58}, {190, 107}, {72, 58}, {31, 200}};
  const Bytes src = Noise(190 * 200 * 4, 41);
  for (int filter = 0; filter <= 3; ++filter) {
    for (auto [dw, dh] : sizes) {
      tagPicProps sp = Props(PIX_ARGB32, 72, 58), dp = Props(PIX_ARGB32, dw, dh);
      ExpectSameBytes(size_t(dw) * dh * 4, [&](CPixmill& e, uint8_t* dst) {
        return e.Img_ResizeARGB(const_cast<uint8_t*>(src.data()), dst, &sp, &dp, nullptr, nullptr,
                                0, filter);
      });
      tagPicProps big = Props(PIX_ARGB32, 190, 107);
      ExpectSameBytes(size_t(dw) * dh * 4, [&](CPixmill& e, uint8_t* dst) {
        return e.Img_ResizeARGB(const_cast<uint8_t*>(src.data()), dst, &big, &dp, nullptr, nullptr,
                                0, filter);
      });
    }
  }
}

TEST(CpuBandsTest, ResizeWithRectangles) {
  const Bytes src = Noise(80 * 60 * 4, 43);
  tagPicProps sp = Props(PIX_ARGB32, 80, 60), dp = Props(PIX_ARGB32, 100, 90);
  tagRECT sr{3, 5, 71, 44}, dr{7, 2, 96, 83};
  for (eResizeQuality q : {RESIZE_NEAREST, RESIZE_LINEAR, RESIZE_FAST_LINEAR, RESIZE_AREA}) {
    ExpectSameBytes(100 * 90 * 4, [&](CPixmill& e, uint8_t* dst) {
      return e.Img_Resize(src.data(), dst, &sp, &dp, &sr, &dr, q, nullptr, 0);
    });
  }
}

TEST(CpuBandsTest, ResizeYuy2) {
  const Bytes src = Noise(72 * 58 * 2, 47);
  tagPicProps sp = Props(PIX_YUY2, 72, 58), dp = Props(PIX_YUY2, 190, 107);
  ExpectSameBytes(190 * 107 * 2, [&](CPixmill& e, uint8_t* dst) {
    return e.Img_Resize(src.data(), dst, &sp, &dp, nullptr, nullptr, RESIZE_LINEAR, nullptr, 0);
  });
}

TEST(CpuBandsTest, ConversionsBothWaysWithFlip) {
  const Bytes src = Noise(96 * 61 * 4, 53);
  tagPicProps argb = Props(PIX_ARGB32, 96, 61), yuy = Props(PIX_YUY2, 96, 61);
  for (bool flip : {false, true}) {
    ExpectSameBytes(96 * 61 * 4, [&](CPixmill& e, uint8_t* dst) {
      return e.Img_Convert2(src.data(), dst, &yuy, &argb, nullptr, nullptr, flip, nullptr);
    });
    ExpectSameBytes(96 * 61 * 2, [&](CPixmill& e, uint8_t* dst) {
      return e.Img_Convert2(src.data(), dst, &argb, &yuy, nullptr, nullptr, flip, nullptr);
    });
    ExpectSameBytes(96 * 61 * 4, [&](CPixmill& e, uint8_t* dst) {
      return e.Img_Convert2(src.data(), dst, &argb, &argb, nullptr, nullptr, flip, nullptr);
    });
  }
}

TEST(CpuBandsTest, Perspective) {
  const Bytes src = Noise(64 * 50 * 4, 59);
  tagPicProps p = Props(PIX_ARGB32, 64, 50);
  PerspectiveParams params;
  params.fRotation = 17.0f;
  params.dCornerScale[1] = 0.6;
  params.dCornerOffset[6] = 4.0;
  for (int filter : {0, 1, 3}) {
    ExpectSameBytes(64 * 50 * 4, [&](CPixmill& e, uint8_t* dst) {
      return e.Img_PerspectiveCoeffARGB(const_cast<uint8_t*>(src.data()), &p, nullptr, 0, 0, filter,
                                        dst, &p, nullptr, &params);
    });
  }
}

TEST(BandPoolTest, EveryBandRunsOncePerCall) {
  BandPool pool(4);
  ASSERT_EQ(4, pool.Participants());
  for (int bands : {1, 3, 4, 16, 50}) {
    for (int round = 0; round < 50; ++round) {
      std::vector<std::atomic<int>> seen(bands);
      pool.Run(
          [&](int index, int count) {
            ASSERT_EQ(bands, count);
            seen[index].fetch_add(1);
          },
          bands);
      for (auto& s : seen) ASSERT_EQ(1, s.load());
    }
  }
}

TEST(BandPoolTest, OneParticipantDoesTheRestWhileAnotherIsHeld) {
  BandPool pool(2);
  std::atomic<int> count{0};
  // Whoever takes band 0 is held there until the other bands are all done:
  // the other participant has to take every one of them.
  pool.Run(
      [&](int index, int) {
        if (index == 0) {
          while (count.load() < 7) std::this_thread::yield();
        } else {
          count.fetch_add(1);
        }
      },
      8);
  EXPECT_EQ(7, count.load());
}

TEST(BandPoolTest, BandsCoverTheRowsWithoutGaps) {
  for (int height : {1, 3, 4, 1080, 1081}) {
    for (int count : {1, 2, 3, 4, 7}) {
      int next = 0;
      for (int i = 0; i < count; ++i) {
        int first, end;
        BandRows(height, i, count, &first, &end);
        EXPECT_EQ(next, first);
        next = end;
      }
      EXPECT_EQ(height, next);
    }
  }
}

TEST(BandPoolTest, ManyEnginesStartAndJoinTheirThreads) {
  for (int i = 0; i < 20; ++i) {
    CPixmill engine;
    ASSERT_EQ(0, engine.Img_InitConverter(-1, 3, nullptr, 16, 16, 0));
    ASSERT_EQ(0, engine.Img_InitConverter(-1, 2, nullptr, 16, 16, 0));  // replaces the team
  }
}
