// SPDX-License-Identifier: MIT
#include "targets.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  tilo::fuzz::FuzzCardReply(data, size);
  return 0;
}
