#pragma once
// CPointerArray<T>: the dynamic array of element pointers inside every owning
// list. It keeps the growth rule the lists were tuned for: with no explicit
// step it grows by an eighth of its current size, at least 4 and at most 1024
// slots; a resize to 0 frees the storage; new slots are null. An index outside
// the bounds throws std::out_of_range. It never owns the pointed-to objects.

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <stdexcept>

template <class T>
class CPointerArray {
 public:
  CPointerArray() = default;
  ~CPointerArray() { delete[] m_pData; }
  CPointerArray(const CPointerArray&) = delete;
  CPointerArray& operator=(const CPointerArray&) = delete;

  // The count is read without a lock by list users, hence the atomic.
  int32_t GetSize() const { return m_nSize.load(std::memory_order_relaxed); }
  int32_t GetCount() const { return GetSize(); }
  int32_t GetCapacity() const { return m_nMaxSize; }

  T* GetAt(int32_t index) const { return m_pData[Checked(index)]; }
  T*& operator[](int32_t index) { return m_pData[Checked(index)]; }
  T* operator[](int32_t index) const { return m_pData[Checked(index)]; }
  void SetAt(int32_t index, T* element) { m_pData[Checked(index)] = element; }

  T* const* begin() const { return m_pData; }
  T* const* end() const { return m_pData + GetSize(); }

  // Appends; returns the new element's index.
  int32_t Add(T* element) {
    const int32_t index = GetSize();
    SetSize(index + 1);
    m_pData[index] = element;
    return index;
  }

  // Inserts one slot at `index`, moving the tail up; an index at or past the
  // end grows the array with null slots up to it.
  void InsertAt(int32_t index, T* element) {
    if (index < 0) throw std::out_of_range("CPointerArray::InsertAt");
    const int32_t size = GetSize();
    if (index >= size) {
      SetSize(index + 1);
    } else {
      SetSize(size + 1);
      std::memmove(m_pData + index + 1, m_pData + index, sizeof(T*) * (size - index));
    }
    m_pData[index] = element;
  }

  // Removes one slot, moving the tail down; the element is not touched.
  void RemoveAt(int32_t index) {
    const int32_t size = GetSize();
    Checked(index);
    std::memmove(m_pData + index, m_pData + index + 1, sizeof(T*) * (size - index - 1));
    Store(size - 1);
  }

  void RemoveAll() { SetSize(0); }

  void SetSize(int32_t newSize) {
    if (newSize < 0) throw std::out_of_range("CPointerArray::SetSize");
    if (newSize == 0) {
      delete[] m_pData;
      m_pData = nullptr;
      m_nMaxSize = 0;
    } else if (newSize > m_nMaxSize) {
      Reallocate(std::max(newSize, m_nMaxSize + GrowStep()));
    }
    const int32_t size = GetSize();
    if (newSize > size) std::fill(m_pData + size, m_pData + newSize, nullptr);
    Store(newSize);
  }

 private:
  int32_t Checked(int32_t index) const {
    if (index < 0 || index >= GetSize()) throw std::out_of_range("CPointerArray index");
    return index;
  }
  int32_t GrowStep() const { return std::clamp(GetSize() / 8, 4, 1024); }
  void Reallocate(int32_t capacity) {
    T** grown = new T*[static_cast<size_t>(capacity)];
    if (m_pData != nullptr) std::memcpy(grown, m_pData, sizeof(T*) * GetSize());
    delete[] m_pData;
    m_pData = grown;
    m_nMaxSize = capacity;
  }
  void Store(int32_t size) { m_nSize.store(size, std::memory_order_relaxed); }

  T** m_pData = nullptr;
  std::atomic<int32_t> m_nSize{0};
  int32_t m_nMaxSize = 0;
};
