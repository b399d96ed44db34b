// SPDX-License-Identifier: MIT
#include "documents/wording.h"

#include <gtest/gtest.h>

#include <string>

#include "core/state.h"
#include "core/text.h"
#include "platform/files.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

class WordingTest : public ShopTest {
 protected:
  // The text of slot `n` in the bytes of a language.ini image.
  static std::string Slot(const std::string& image, int n) {
    return FieldText(image.data() + 80 * n, 80);
  }
};

TEST_F(WordingTest, EachLanguageWithoutAFileIsSavedWithItsOwnWords) {
  struct Expect {
    int language;
    const char* name;
    const char* receipt;
    const char* change;
    const char* eft_with_cash;
    const char* terms;
  };
  const Expect expected[] = {
      {0, "English", "Receipt", "Cash change", "Payment: EFT with cash", "Terms"},
      {1, "Italiano", "Ricevimento", "Sostituzione del contante", "Pagamento: EFT in contanti",
       "Condizioni"},
      {2, "Espanol", "Recepci\xF3n", "De introducci\xF3n del efectivo",
       "Pago: transferencia bancaria con dinero en efectivo", "Condiciones"},
      {3, "Nederlands", "Ontvangst", "Naar de chartale euro", "Betaling: EFT met contant geld",
       "Voorwaarden"},
  };
  for (const Expect& e : expected) {
    SCOPED_TRACE(e.name);
    ResetState();
    RemoveFile(kLanguageFile);
    G().settings.language_index = e.language;
    Loadwording();
    ASSERT_TRUE(Savewording());
    const std::string image = Bytes(kLanguageFile);
    ASSERT_EQ(image.size(), 4640u);
    EXPECT_EQ(Slot(image, 0), e.name);
    EXPECT_EQ(Slot(image, 1), e.receipt);
    EXPECT_EQ(Slot(image, 9), e.change);
    EXPECT_EQ(Slot(image, 15), e.eft_with_cash);
    EXPECT_EQ(Slot(image, 35), e.terms);
    // The reserved slots of a fresh table are empty.
    EXPECT_EQ(image.substr(36 * 80), std::string(22 * 80, '\0'));
  }
  // The odd defaults stand: Spanish EFT reads as credit, and "Associate" everywhere.
  EXPECT_STREQ(BuiltinWording(2, kPaymentEft),
               "Pago: cr\xE9"
               "dito");
  for (int l = 0; l < kLanguages; ++l) EXPECT_STREQ(BuiltinWording(l, kAssociate), "Associate");
}

TEST_F(WordingTest, AnExistingFileIsTakenWholeAndWrittenBackByteForByte) {
  std::string image(4640, '\0');
  for (size_t i = 0; i < image.size(); ++i) image[i] = char('A' + i % 26);
  for (int s = 0; s < 58; ++s) image[80 * s + 79] = '\0';
  image.replace(80, 8, std::string("Bon\0xxxx", 8));
  WriteBytes(kLanguageFile, image);
  G().settings.language_index = 1;  // a file wins over the setting
  Loadwording();
  EXPECT_EQ(Wording(kReceipt), "Bon");
  RemoveFile(kLanguageFile);
  ASSERT_TRUE(Savewording());
  EXPECT_EQ(Bytes(kLanguageFile), image);
}

TEST_F(WordingTest, AnUnknownLanguageWithoutAFileLeavesTheTableEmpty) {
  G().settings.language_index = 7;
  Loadwording();
  EXPECT_EQ(Wording(kLanguageName), "");
  EXPECT_EQ(Wording(kTotal), "");
}

}  // namespace
}  // namespace tilo
