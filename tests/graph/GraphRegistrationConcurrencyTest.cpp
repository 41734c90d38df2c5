// Registrations made and revoked from several threads at once: every graph
// gets a cookie of its own and a file of its own, and all go away again.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <set>
#include <thread>
#include <vector>

#include "graph/GraphRegistration.h"
#include "tests/graph/GraphTestUtil.h"

using namespace graphtest;

namespace {

constexpr int kThreads = 4;
constexpr int kGraphsPerThread = 25;

class RegistrationConcurrencyTest : public TempFolderTest {
 protected:
  void SetUp() override {
    TempFolderTest::SetUp();
    setenv("XDG_RUNTIME_DIR", m_Folder.c_str(), 1);
  }
};

}  // namespace

TEST_F(RegistrationConcurrencyTest, ThreadsRegisterAndRevokeTheirOwnGraphs) {
  std::vector<std::vector<uint32_t>> cookies(kThreads);
  std::vector<std::vector<ElementRef>> graphs(kThreads);
  for (int t = 0; t < kThreads; ++t) {
    for (int i = 0; i < kGraphsPerThread; ++i) {
      graphs[t].emplace_back(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new(nullptr))));
    }
  }
  std::vector<std::thread> workers;
  for (int t = 0; t < kThreads; ++t) {
    workers.emplace_back([&, t] {
      for (const ElementRef& graph : graphs[t]) {
        uint32_t cookie = 0;
        if (AddGraphToRot(GST_BIN(graph.get()), &cookie) == S_OK) cookies[t].push_back(cookie);
      }
    });
  }
  for (std::thread& worker : workers) worker.join();
  std::set<uint32_t> distinct;
  for (const auto& own : cookies) distinct.insert(own.begin(), own.end());
  EXPECT_EQ(distinct.size(), static_cast<size_t>(kThreads * kGraphsPerThread));
  size_t files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(GraphRegistrationFolder())) {
    files += entry.path().filename().string().rfind("FilterGraph ", 0) == 0;
  }
  EXPECT_EQ(files, static_cast<size_t>(kThreads * kGraphsPerThread));

  workers.clear();
  for (int t = 0; t < kThreads; ++t) {
    workers.emplace_back([&, t] {
      for (uint32_t cookie : cookies[t]) RemoveGraphFromRot(cookie);
    });
  }
  for (std::thread& worker : workers) worker.join();
  EXPECT_TRUE(std::filesystem::is_empty(GraphRegistrationFolder()));
  for (const auto& own : graphs) {
    for (const ElementRef& graph : own) EXPECT_EQ(GST_OBJECT_REFCOUNT_VALUE(graph.get()), 1);
  }
}
