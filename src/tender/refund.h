// SPDX-License-Identifier: MIT
// The refund: the basket as it stands goes back as one negative transaction,
// the money returned in cash, by cheque, to the card or to a customer's account,
// the goods back in stock unless they are faulty. Nothing links a refund to the
// sale it reverses; a part refund is a basket holding only those items.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tilo {

enum RefundMethod : int { kCashRefund = 0, kChRefund = 1, kEftRefund = 2, kCreditRefund = 3 };

// What the refund form settles.
struct RefundChoice {
  int method = kCashRefund;
  bool faulty = false;  // "Items faulty, do not add back to stock"
  bool print = false;   // "Print refund receipt"
};

// How the card refund goes when the shop may refund without the card.
enum class CardRefund { Cancel, Present, NotPresent };

// The refund's forms as the logic sees them. Without a screen (tests) the form
// is given up, so nothing is refunded by accident.
class RefundView {
 public:
  virtual ~RefundView() = default;
  // The refund form, modal: nullopt for "Cancel".
  virtual std::optional<RefundChoice> refund_form() { return std::nullopt; }
  // "Card refund": "Refund", "Cardholder not present refund" or "Cancel".
  virtual CardRefund card_refund_box() { return CardRefund::Cancel; }
};

RefundView& refund_view();
// nullptr puts back the one without a screen.
void install_refund_view(RefundView* view);

// What the refund form shows, label and text (UTF-8), in order: the number the
// refund will take, today's date, the customer, the line count and the figures.
std::vector<std::pair<std::string, std::string>> Refundformfields();

// The "Refund" button.
void Refundbasket();

}  // namespace tilo
