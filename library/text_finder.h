#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "services/code_page.h"

namespace rws {

/** Looks for a text in any letter case of the code page, in much less time than the reading of what
    it looks through takes. */
class TextFinder {
 public:
  /** `lower` is in lower case already. */
  TextFinder(const CodePage& page, std::string lower);
  bool IsIn(std::string_view text) const;

 private:
  unsigned char Lower(char c) const { return lowerOf_[static_cast<unsigned char>(c)]; }

  std::string lower_;
  std::array<unsigned char, 256> lowerOf_{};
  /** How far the place looked at may move on from a character that stands at its end. */
  std::array<std::uint32_t, 256> skip_{};
};

}  // namespace rws
