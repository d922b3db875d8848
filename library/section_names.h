#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace rws {

/** The names of sections, found in any case of ASCII letters. For one text after another in the
    same memory. */
class SectionNames {
 public:
  static constexpr std::uint32_t kNone = UINT32_MAX;

  void Clear();
  /** Adds a name, which must outlive its use here; gives its number, from 0 on in the order of the
      calls, or that of the same name given before. */
  std::uint32_t Add(std::string_view name);
  /** The number of the name made of both parts, or `kNone`. */
  std::uint32_t Find(std::string_view name, std::string_view ending = {}) const;
  std::size_t size() const { return names_.size(); }

 private:
  std::size_t SlotOf(std::string_view name, std::string_view ending) const;
  void Grow();

  std::vector<std::string_view> names_;
  std::vector<std::uint32_t> slots_;  // of a power of two; `kNone` is a free one
};

}  // namespace rws
