// Test main of the graph tests: GStreamer started once, with the test
// elements and device provider registered before any test looks.
#include <gst/gst.h>
#include <gtest/gtest.h>

#include "tests/graph/GraphTestUtil.h"

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  gst_init(&argc, &argv);
  graphtest::RegisterTestElements();
  const int result = RUN_ALL_TESTS();
  gst_deinit();
  return result;
}
