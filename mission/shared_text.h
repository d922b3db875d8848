#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>

namespace rws {

/** A text that is replaced as a whole and never changed. Its copies share one memory: a mission,
   its shadow and the steps of its undo have each line of a route once. */
class SharedText {
 public:
  SharedText() = default;
  /** One that is moved from keeps its text. */
  SharedText(const SharedText&) = default;
  SharedText& operator=(const SharedText&) = default;
  SharedText& operator=(std::string_view text) {
    auto chars = text.empty() ? nullptr : std::make_shared<char[]>(text.size());
    std::copy(text.begin(), text.end(), chars.get());
    chars_ = std::move(chars);  // last, as the text may be a part of this one
    size_ = text.size();
    return *this;
  }

  operator std::string_view() const { return {chars_.get(), size_}; }
  bool empty() const { return size_ == 0; }
  std::size_t size() const { return size_; }

  bool operator==(const SharedText& other) const {
    return chars_ == other.chars_ || *this == std::string_view(other);
  }
  bool operator==(std::string_view text) const { return std::string_view(*this) == text; }

 private:
  /** Null for "". */
  std::shared_ptr<const char[]> chars_;
  std::size_t size_ = 0;
};

}  // namespace rws
