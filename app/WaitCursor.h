#pragma once
// The busy cursor of a test, for the whole length of a handler: the first
// thing built and the last thing ended.

namespace tachyrun {

class CWaitCursor {
 public:
  CWaitCursor();
  ~CWaitCursor();
  CWaitCursor(const CWaitCursor&) = delete;
  CWaitCursor& operator=(const CWaitCursor&) = delete;
};

}  // namespace tachyrun
