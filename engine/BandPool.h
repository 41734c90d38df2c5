// A fixed team of threads that runs one job in bands. The threads are
// started once with the engine and joined by its destructor, so a picture
// call costs a wake-up and no thread start. Bands are handed out one by one
// to whoever is free, the caller included: a team thread that the system
// schedules late finds the work done instead of holding the call up.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

class BandPool {
 public:
  // job(band, bands) for band in [0, bands).
  using Job = std::function<void(int, int)>;

  explicit BandPool(int participants);
  ~BandPool();
  BandPool(const BandPool&) = delete;
  BandPool& operator=(const BandPool&) = delete;

  // The team's threads and the caller.
  int Participants() const { return static_cast<int>(m_Threads.size()) + 1; }
  // Runs every band of job once and returns when all are done.
  void Run(const Job& job, int bands);

 private:
  void WorkerLoop();
  // Takes bands until none is left; returns how many this thread finished.
  int TakeBands(const Job& job, int bands);

  std::vector<std::thread> m_Threads;
  std::mutex m_Mutex;
  std::condition_variable m_Wake;
  std::condition_variable m_Done;
  const Job* m_pJob = nullptr;  // null: no call open for joining
  int m_iBands = 0;
  uint64_t m_Generation = 0;
  int m_iActive = 0;  // team threads inside the current call
  std::atomic<int> m_Next{0};
  std::atomic<int> m_Finished{0};
  bool m_Stop = false;
};

// Rows [first, end) of band index out of count over height rows.
inline void BandRows(int height, int index, int count, int* first, int* end) {
  *first = static_cast<int>(static_cast<int64_t>(height) * index / count);
  *end = static_cast<int>(static_cast<int64_t>(height) * (index + 1) / count);
}
