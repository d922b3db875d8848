#pragma once

#include <cstdint>

namespace rws {

struct CodePageTable {
  int Number;
  std::uint16_t Upper[128];
};

inline constexpr int kCodePageCount = 6;
extern const CodePageTable kCodePageTables[kCodePageCount];

}  // namespace rws
