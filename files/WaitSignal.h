#pragma once
// One wait-and-signal pair for one waiting thread and one signalling
// thread: a manual-reset event and two counters. A wait clears the event
// before it counts itself as asked, and a signal is sent only while a wait
// is outstanding (asked != answered), so a signal never carries over to a
// later wait. A timeout and a signal are not told apart.

#include <cstdint>

// Sets the asked counter to 0 (the answered one stays) and makes the event,
// clear, unless it exists.
void CreateWaitEvent();

// Sets both counters to 0 and closes and forgets the event, if any.
void CloseWaitEvent();

// -1 without an event. Otherwise clears the event, counts the wait as asked,
// waits up to `timeoutMs` (0xFFFFFFFF: without limit) and returns 0.
int32_t WaitForSignal(uint32_t timeoutMs);

// Sets the event and makes answered = asked, unless no wait is outstanding.
void SignalWaiter();

uint32_t GetWaitsAsked();
uint32_t GetWaitsAnswered();

// Whether the event exists and is set now.
bool IsWaitEventSet();
