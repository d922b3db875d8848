#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
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

/** Sorts by a text that is made once for each item; equal ones by `tie`, upwards in both
 * directions.
 */
template <class Item, class KeyOf, class Tie>
void SortByKey(std::vector<Item>& items, KeyOf keyOf, Tie tie, bool descending = false) {
  std::vector<std::pair<std::string, Item>> keyed;
  keyed.reserve(items.size());
  for (auto& item : items) {
    std::string key = keyOf(item);
    keyed.emplace_back(std::move(key), std::move(item));
  }
  std::sort(keyed.begin(), keyed.end(), [&](const auto& a, const auto& b) {
    const int order = a.first.compare(b.first);
    if (order == 0) return std::invoke(tie, a.second) < std::invoke(tie, b.second);
    return descending ? order > 0 : order < 0;
  });
  for (std::size_t i = 0; i < items.size(); ++i) items[i] = std::move(keyed[i].second);
}

}  // namespace rws
