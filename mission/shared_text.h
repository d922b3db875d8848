#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <new>
#include <string_view>
#include <utility>

namespace rws {

/** A text that is replaced as a whole and never changed. Its copies share one memory: a mission,
   its shadow and the steps of its undo have each line of a route once. No larger than a pointer, as
   there are thousands. */
class SharedText {
 public:
  SharedText() = default;
  /** One that is moved from keeps its text. */
  SharedText(const SharedText& other) noexcept : memory_(other.memory_) {
    if (memory_) memory_->Owners.fetch_add(1, std::memory_order_relaxed);
  }
  SharedText& operator=(const SharedText& other) noexcept {
    SharedText copy(other);
    std::swap(memory_, copy.memory_);
    return *this;
  }
  SharedText& operator=(std::string_view text) {
    SharedText made;
    if (!text.empty()) made.memory_ = new (::operator new(sizeof(Memory) + text.size())) Memory;
    if (!text.empty()) made.memory_->Size = text.size();
    std::copy(text.begin(), text.end(), made.Chars());
    std::swap(memory_, made.memory_);  // last, as the text may be a part of this one
    return *this;
  }
  ~SharedText() {
    if (memory_ && memory_->Owners.fetch_sub(1, std::memory_order_acq_rel) == 1)
      ::operator delete(memory_);
  }

  operator std::string_view() const { return {Chars(), size()}; }
  bool empty() const { return size() == 0; }
  std::size_t size() const { return memory_ ? memory_->Size : 0; }

  bool operator==(const SharedText& other) const {
    return memory_ == other.memory_ || *this == std::string_view(other);
  }
  bool operator==(std::string_view text) const { return std::string_view(*this) == text; }

 private:
  /** What stands ahead of the text. */
  struct Memory {
    std::atomic<std::size_t> Owners{1};
    std::size_t Size = 0;
  };
  char* Chars() const { return memory_ ? reinterpret_cast<char*>(memory_ + 1) : nullptr; }

  /** Null for "". */
  Memory* memory_ = nullptr;
};

}  // namespace rws
