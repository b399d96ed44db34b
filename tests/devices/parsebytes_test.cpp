// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "devices/bytes.h"

namespace tilo {
namespace {

// The field as the settings record holds it: 32 bytes, zero behind the text.
std::vector<uint8_t> Parse(const std::string& text) {
  char field[kByteTextWidth] = {};
  text.copy(field, kByteTextWidth);
  return Parsebytes(field);
}

using Bytes = std::vector<uint8_t>;

// Decimal numbers, the low eight bits kept; every comma or the terminator ends one.
TEST(ParsebytesTest, NumbersBecomeBytesAndEveryCommaOrTerminatorEndsOne) {
  const std::pair<const char*, Bytes> cases[] = {
      {"27,112,0,25,250", {27, 112, 0, 25, 250}},
      {"7", {7}},
      {"27,,1", {27, 0, 1}},
      {"27,", {27, 0}},
      {"", {0}},
      {",,", {0, 0, 0}},
      {"256,257,511", {0, 1, 255}},
      {"-1", {255}},
      {" 27, 112", {27, 112}},
      {"12ab,x", {12, 0}},
      // The form's own note has a blank after a comma: the number still reads.
      {"27,112,48,55, 121", {27, 112, 48, 55, 121}},
  };
  for (const auto& [text, bytes] : cases) EXPECT_EQ(Parse(text), bytes) << text;
}

TEST(ParsebytesTest, TheWalkStopsAfterThirtyTwoCharacters) {
  // 31 characters: the terminator in the last place still ends the number.
  const std::string full = "27,112,0,25,250,27,112,0,25,250";
  ASSERT_EQ(full.size(), 31u);
  EXPECT_EQ(Parse(full).size(), 10u);
  EXPECT_EQ(Parse(full).back(), 250);
  // A trailing comma at the 31st place: the terminator behind it gives a 0.
  EXPECT_EQ(Parse("27,112,0,25,250,27,112,0,25,25,"),
            (Bytes{27, 112, 0, 25, 250, 27, 112, 0, 25, 25, 0}));
  // No terminator within the 32: the last number was never ended and is lost.
  char field[kByteTextWidth];
  std::string("1,2,3,4,5,6,7,8,9,10,11,12,13145").copy(field, kByteTextWidth);
  EXPECT_EQ(Parsebytes(field), (Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
  // Thirty-two commas: thirty-two zero bytes and nothing read beyond the field.
  std::string(32, ',').copy(field, kByteTextWidth);
  EXPECT_EQ(Parsebytes(field), Bytes(32, 0));
}

}  // namespace
}  // namespace tilo
