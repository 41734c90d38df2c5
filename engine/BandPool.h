// A fixed team of threads that runs one job in row bands. The threads are
// started once with the engine and joined by its destructor, so a picture
// call costs two wake-ups and no thread start.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

class BandPool {
 public:
  // band(index, count): the caller runs band 0, the pool's threads the rest.
  using Job = std::function<void(int, int)>;

  explicit BandPool(int participants);
  ~BandPool();
  BandPool(const BandPool&) = delete;
  BandPool& operator=(const BandPool&) = delete;

  int Participants() const { return static_cast<int>(m_Threads.size()) + 1; }
  // Runs job for every band 0..Participants()-1 and returns when all are done.
  void Run(const Job& job);

 private:
  void WorkerLoop(int index);

  std::vector<std::thread> m_Threads;
  std::mutex m_Mutex;
  std::condition_variable m_Wake;
  std::condition_variable m_Done;
  const Job* m_pJob = nullptr;
  uint64_t m_Generation = 0;
  int m_Pending = 0;
  bool m_Stop = false;
};

// Rows [first, end) of band index out of count over height rows.
inline void BandRows(int height, int index, int count, int* first, int* end) {
  *first = static_cast<int>(static_cast<int64_t>(height) * index / count);
  *end = static_cast<int>(static_cast<int64_t>(height) * (index + 1) / count);
}
