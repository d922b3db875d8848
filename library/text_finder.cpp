#include "library/text_finder.h"

#include <utility>

namespace rws {

TextFinder::TextFinder(const CodePage& page, std::string lower) : lower_(std::move(lower)) {
  std::string all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  const std::string lowered = page.LCase(all);
  const std::size_t size = lower_.size();
  for (std::size_t c = 0; c < 256; ++c) {
    lowerOf_[c] = static_cast<unsigned char>(lowered[c]);
    skip_[c] = static_cast<std::uint32_t>(size);
    for (std::size_t i = 0; i + 1 < size; ++i)
      if (lower_[i] == lowered[c]) skip_[c] = static_cast<std::uint32_t>(size - 1 - i);
  }
}

bool TextFinder::IsIn(std::string_view text) const {
  const std::size_t size = lower_.size();
  if (size == 0) return true;
  for (std::size_t end = size - 1; end < text.size();
       end += skip_[static_cast<unsigned char>(text[end])]) {
    std::size_t left = size;
    while (left > 0 &&
           Lower(text[end + left - size]) == static_cast<unsigned char>(lower_[left - 1]))
      --left;
    if (left == 0) return true;
  }
  return false;
}

}  // namespace rws
