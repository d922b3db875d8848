#pragma once

#include <cstddef>

namespace rws::bench {

/** Bytes that this program holds on the heap at the moment, as handed out by the allocator. */
std::size_t HeapInUse();

}  // namespace rws::bench
