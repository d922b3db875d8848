#include "bench/heap_count.h"

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace rws::bench {

std::size_t HeapInUse() {
#if defined(__GLIBC__)
  const auto info = mallinfo2();
  return info.uordblks + info.hblkhd;
#else
  return 0;
#endif
}

}  // namespace rws::bench
