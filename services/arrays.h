#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace rws {

/** Upper bound of any array; -1 when it holds nothing. */
template <class Array>
std::ptrdiff_t SafeUBound(const Array& array) {
  return static_cast<std::ptrdiff_t>(array.size()) - 1;
}

/** Grows the array by one and stores the text. */
inline void AddToArray(std::vector<std::string>& array, std::string text) {
  array.push_back(std::move(text));
}

}  // namespace rws
