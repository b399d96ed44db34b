// SPDX-License-Identifier: MIT
// A fresh working folder per test, a scripted platform, and a clean global state.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/scripted_platform.h"

namespace tilo {

class ShopTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // Writes the fresh data set (as the installer does) into the folder.
  void MakeFreshShop();

 public:
  // The bytes of a file in the working folder ("" when missing).
  static std::string Bytes(const std::string& path);
  static void WriteBytes(const std::string& path, const std::string& bytes);

  // Builds a locale whose decimal separator is a comma in the test's folder and
  // puts it in force; false when it cannot (the locales package is needed).
  bool UseCommaLocale();
  // Back to the C locale.
  static void UseCLocale();

 protected:
  ScriptedPlatform platform_;
  std::string folder_;

 private:
  std::string previous_folder_;
};

// What a shell command writes to its standard output ("" when it cannot run).
std::string Shell(const std::string& command);

}  // namespace tilo
