#include "engine/BandPool.h"

BandPool::BandPool(int participants) {
  for (int i = 1; i < participants; ++i) m_Threads.emplace_back([this, i] { WorkerLoop(i); });
}

BandPool::~BandPool() {
  {
    std::lock_guard<std::mutex> lock(m_Mutex);
    m_Stop = true;
  }
  m_Wake.notify_all();
  for (std::thread& t : m_Threads) t.join();
}

void BandPool::Run(const Job& job) {
  const int count = Participants();
  if (count == 1) {
    job(0, 1);
    return;
  }
  {
    std::lock_guard<std::mutex> lock(m_Mutex);
    m_pJob = &job;
    m_Pending = count - 1;
    ++m_Generation;
  }
  m_Wake.notify_all();
  job(0, count);
  std::unique_lock<std::mutex> lock(m_Mutex);
  m_Done.wait(lock, [this] { return m_Pending == 0; });
  m_pJob = nullptr;
}

void BandPool::WorkerLoop(int index) {
  uint64_t seen = 0;
  std::unique_lock<std::mutex> lock(m_Mutex);
  for (;;) {
    m_Wake.wait(lock, [&] { return m_Stop || m_Generation != seen; });
    if (m_Stop) return;
    seen = m_Generation;
    const Job* job = m_pJob;
    const int count = Participants();
    lock.unlock();
    (*job)(index, count);
    lock.lock();
    if (--m_Pending == 0) m_Done.notify_one();
  }
}
