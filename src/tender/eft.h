// SPDX-License-Identifier: MIT
// Card payments through the outside card application. The till writes its
// request to input.txt in the card folder and waits for the application's reply
// in output.txt; the only thing read from the reply is the result code after
// "3=". With card processing off, "EFT" records a card sale the operator took
// on a separate terminal.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tilo {

// The choices of the card payment boxes.
enum class EftChoice {
  Cancel = -1,
  Payment = 0,
  PaymentCashback = 4,
  NotPresent = 8,
};

// The card forms as the logic sees them. The screen installs the real ones;
// without a screen a plain payment is chosen and the cash back is asked through
// the platform's prompt.
class CardView {
 public:
  virtual ~CardView() = default;
  // "Electronic Payment" with processing off: "Payment", "Payment plus
  // cashback", "Cancel".
  virtual EftChoice offline_choice() { return EftChoice::Payment; }
  // "Electronic Payment" with processing on; the two optional buttons show only
  // when `cashback` and `not_present` say so.
  virtual EftChoice online_choice(bool /*cashback*/, bool /*not_present*/) {
    return EftChoice::Payment;
  }
  // "CASH BACK": the whole amount typed (digits only), nullopt on Cancel.
  virtual std::optional<std::string> cash_back();
};

CardView& card_view();
// nullptr puts back the one without a screen.
void install_card_view(CardView* view);

// The folder shared with the card application: `eft_folder`, or "YESEFT" in the
// user's home when that is empty or a drive-letter path from an old data folder.
std::string Eftfolder();
// Stores a new card folder; false (after saying why) when it is too long to keep.
bool Seteftfolder(const std::string& folder);

// "Card processing setup" as its form shows it and stores it.
struct CardSetup {
  std::string folder;  // UTF-8
  bool active = false;
  bool cashback = false;
  bool not_present_payment = false;
  bool not_present_refund = false;
  bool verbose = false;
};
CardSetup Cardsetupshown();
// Keeps the folder and sets each flag to on or off, and saves the settings;
// false (after saying why) when the folder can't be kept, with nothing stored.
bool Storecardsetup(const CardSetup& setup);

// The request texts, with a point for the decimals in every locale and no final
// line feed.
std::string Eftsaletext(int64_t number, float amount);
std::string Eftcashbacktext(int64_t number, float total, float cash_back);
std::string Eftnotpresenttext(int64_t number, float amount);
std::string Eftrefundtext(int64_t number, float amount, bool not_present);
std::string Eftmanualtext(const std::string& reference, const std::string& card,
                          const std::string& expiry, const std::string& original);

// The result code in a reply: the digits after the first "3=" that starts a
// line; nullopt when there is none.
std::optional<int> Eftreplycode(const std::string& reply);
// What the operator is shown for a result code.
std::string Eftresulttext(int code);

// One card sale of the basket, under the number the sale will commit with;
// true when approved. Asks for the kind of payment when any card option is
// permitted, and sets the basket's cash back for a payment with cash back. A
// failure leaves the basket as it was.
bool Eftexchange();
// One plain card sale of `amount`, with no choice of kind: the card part of a
// payment split with cash. True when approved.
bool Eftexchange(float amount);
// One card refund of `total` (the refund's total before it is made negative),
// under the number the refund will commit with; `not_present` marks a refund
// with the cardholder not present. True when approved.
bool Eftrefund(float total, bool not_present);

// "EFT (Credit card) F7": the whole basket paid by card.
void Eftsale();
// The manual card transaction: four prompts, the exchange, the result shown.
void Eftmanual();

}  // namespace tilo
