#include "files/WaitSignal.h"

#include <atomic>

#include "platform/Event.h"

namespace {

// Each counter is written by one side only; atomics make the other side's
// reads defined.
std::atomic<platform::Event*> g_Event{nullptr};
std::atomic<uint32_t> g_WaitsAsked{0};
std::atomic<uint32_t> g_WaitsAnswered{0};

}  // namespace

void CreateWaitEvent() {
  g_WaitsAsked = 0;
  if (g_Event.load() == nullptr) {
    g_Event = new platform::Event(/*bManualReset=*/true, /*bInitialState=*/false);
  }
}

void CloseWaitEvent() {
  g_WaitsAsked = 0;
  g_WaitsAnswered = 0;
  delete g_Event.exchange(nullptr);
}

int32_t WaitForSignal(uint32_t timeoutMs) {
  platform::Event* event = g_Event.load();
  if (event == nullptr) return -1;
  event->Reset();
  ++g_WaitsAsked;
  event->Wait(timeoutMs);
  return 0;
}

void SignalWaiter() {
  const uint32_t asked = g_WaitsAsked.load();
  if (asked == g_WaitsAnswered.load()) return;
  g_WaitsAnswered = asked;
  if (platform::Event* event = g_Event.load()) event->Set();
}

uint32_t GetWaitsAsked() {
  return g_WaitsAsked.load();
}
uint32_t GetWaitsAnswered() {
  return g_WaitsAnswered.load();
}

bool IsWaitEventSet() {
  platform::Event* event = g_Event.load();
  return event != nullptr && event->IsSet();
}
