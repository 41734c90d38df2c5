#pragma once
// Common base of the library's behaviour classes. Owning lists release their
// elements through its virtual destructor; nothing else of it is used.

class CObject {
 public:
  CObject() = default;
  CObject(const CObject&) = default;
  CObject& operator=(const CObject&) = default;
  virtual ~CObject() = default;
};
