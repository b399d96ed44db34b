// SPDX-License-Identifier: MIT
#include "platform/memory.h"

#include <sys/mman.h>

#include <cstdint>

namespace tilo {

void PreferHugePages(void* data, size_t bytes) {
  constexpr uintptr_t kHuge = uintptr_t(2) << 20;
  const uintptr_t begin = (reinterpret_cast<uintptr_t>(data) + kHuge - 1) & ~(kHuge - 1);
  const uintptr_t end = (reinterpret_cast<uintptr_t>(data) + bytes) & ~(kHuge - 1);
  // Only the whole huge pages inside the buffer: the memory around it is not ours.
  if (end > begin) madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
}

}  // namespace tilo
