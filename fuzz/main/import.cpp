// SPDX-License-Identifier: MIT
#include "fuzz_support.h"
#include "targets.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  tilo::fuzz::FuzzImport(data, size);
  tilo::fuzz::LeaveRun();
  return 0;
}
