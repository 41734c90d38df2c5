#include "engine/BandPool.h"

BandPool::BandPool(int participants) {
  for (int i = 1; i < participants; ++i) m_Threads.emplace_back([this] { WorkerLoop(); });
}

BandPool::~BandPool() {
  {
    std::lock_guard<std::mutex> lock(m_Mutex);
    m_Stop = true;
  }
  m_Wake.notify_all();
  for (std::thread& t : m_Threads) t.join();
}

int BandPool::TakeBands(const Job& job, int bands) {
  int done = 0;
  for (int band = m_Next.fetch_add(1); band < bands; band = m_Next.fetch_add(1)) {
    job(band, bands);
    ++done;
  }
  return done;
}

void BandPool::Run(const Job& job, int bands) {
  if (m_Threads.empty() || bands <= 1) {
    for (int band = 0; band < bands; ++band) job(band, bands);
    return;
  }
  {
    std::lock_guard<std::mutex> lock(m_Mutex);
    m_pJob = &job;
    m_iBands = bands;
    m_Next.store(0);
    m_Finished.store(0);
    ++m_Generation;
  }
  m_Wake.notify_all();
  const int mine = TakeBands(job, bands);
  std::unique_lock<std::mutex> lock(m_Mutex);
  m_Finished.fetch_add(mine);
  m_Done.wait(lock, [&] { return m_Finished.load() == bands; });
  // Close the call and wait for team threads still on their way out, so
  // that none of them touches the next call's counters with this job.
  m_pJob = nullptr;
  m_Done.wait(lock, [&] { return m_iActive == 0; });
}

void BandPool::WorkerLoop() {
  uint64_t seen = 0;
  std::unique_lock<std::mutex> lock(m_Mutex);
  for (;;) {
    m_Wake.wait(lock, [&] { return m_Stop || m_Generation != seen; });
    if (m_Stop) return;
    seen = m_Generation;
    if (m_pJob == nullptr) continue;  // woke after the call had closed
    const Job* job = m_pJob;
    const int bands = m_iBands;
    ++m_iActive;
    lock.unlock();
    const int done = TakeBands(*job, bands);
    lock.lock();
    m_Finished.fetch_add(done);
    --m_iActive;
    m_Done.notify_all();
  }
}
