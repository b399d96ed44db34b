// SPDX-License-Identifier: MIT
#include "tender/eft.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "devices/pole.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "sale/commit.h"
#include "sale/pricing.h"
#include "tender/cash.h"
#include "tender/tender_view.h"

namespace tilo {
namespace {

CardView default_view;
CardView* current_view = &default_view;

// Once its reply appears, the card application is given this long to finish
// writing it: a sale waits longer, its reply being the one that moves money.
constexpr int kSaleSettleMs = 400;
constexpr int kOtherSettleMs = 200;
constexpr int kPollMs = 200;
// The reply is read into a 2,000-byte buffer with its terminator.
constexpr size_t kReplyLimit = 1999;

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

bool On(double flag) {
  return flag != 0.0;
}

std::string Number(int64_t number) {
  return std::to_string(number);
}

// The number the sale or refund will commit under.
int64_t NextNumber() {
  return G().settings.transaction_number;
}

// How the failures of writing the request are told: a sale and the manual
// transaction tell each step apart, a refund says only that it could not.
enum class Failures { Detailed, Plain };

bool Problem(const char* text) {
  Message(text, "Problem");
  return false;
}

// Removes the previous reply, so that only the answer to this request can be
// read. A reply that cannot be removed could be taken for an approval.
bool Clearreply(const std::string& folder) {
  const std::string path = folder + "/output.txt";
  if (unlink(path.c_str()) != 0 && errno != ENOENT) return Problem("Unable to create EVT file");
  return true;
}

bool Writerequest(const std::string& path, const std::string& request, Failures failures) {
  const bool plain = failures == Failures::Plain;
  const int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (fd < 0) return Problem("Unable to create EVT file");
  size_t done = 0;
  while (done < request.size()) {
    const ssize_t n = write(fd, request.data() + done, request.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;
    done += size_t(n);
  }
  if (done < request.size() || fsync(fd) != 0) {
    close(fd);
    return Problem(plain ? "Unable to create EVT file" : "Unable to do EVT file");
  }
  if (close(fd) != 0)
    return Problem(plain ? "Unable to create EVT file" : "Unable to close EVT input file");
  return true;
}

// Writes the request, waits for the reply, reads its result code and tells the
// operator. True when the card was approved.
bool Exchange(const std::string& folder, const std::string& request, int settle_ms,
              Failures failures) {
  const std::string input = folder + "/input.txt";
  const std::string output = folder + "/output.txt";
  if (!Writerequest(input, request, failures)) return false;
  SyncFolder(folder);

  // The reply counts once it has stood for the settle time, so that the
  // application has finished writing it.
  bool seen = false;
  uint64_t seen_at = 0;
  const auto ready = [&] {
    if (!FileExists(output)) return false;
    const uint64_t now = platform().tick_count();
    if (!seen) {
      seen = true;
      seen_at = now;
    }
    return now - seen_at >= uint64_t(settle_ms);
  };
  const bool replied = platform().wait("Waiting for the card terminal to answer.",
                                       "Waiting for the card terminal", kPollMs, ready);
  if (!replied) {
    // The operator gave up: a request the application has not taken is taken back.
    RemoveFile(input);
    Message(Eftresulttext(9), "Not authorized");
    return false;
  }

  std::optional<std::string> reply = ReadWholeFile(output);
  if (!reply || reply->empty()) return Problem("Unable to retrieve EVT file");
  if (reply->size() > kReplyLimit) reply->resize(kReplyLimit);
  const std::optional<int> code = Eftreplycode(*reply);
  if (!code) return Problem("Unable to retrieve authorization code");
  if (*code < 4) {
    if (On(G().settings.eft_verbose)) Message(Eftresulttext(*code), "Authorized");
    return true;
  }
  Message(Eftresulttext(*code), "Not authorized");
  return false;
}

// The cash back typed in "CASH BACK", a whole amount, confirmed when above 100;
// nullopt when the operator gives up.
std::optional<float> Askcashback() {
  const std::optional<std::string> typed = card_view().cash_back();
  if (!typed) return std::nullopt;
  int64_t whole = 0;
  for (char c : *typed) {
    if (!IsDigit(c)) break;
    whole = whole * 10 + (c - '0');
    if (whole > 100000000) break;
  }
  if (whole > 100 && Message(Number(whole), "Please confirm", Buttons::YesNo) != Answer::Yes)
    return std::nullopt;
  return float(whole);
}

// A restricted clerk may be kept from handing out cash back.
bool Cashbackkept() {
  return G().screen.restricted_clerk == 2 && G().settings.inhibit_cashback != 0;
}

bool DriveLetterPath(const std::string& folder) {
  return folder.size() >= 2 && folder[1] == ':' &&
         ((folder[0] >= 'A' && folder[0] <= 'Z') || (folder[0] >= 'a' && folder[0] <= 'z'));
}

}  // namespace

std::optional<std::string> CardView::cash_back() {
  return platform().prompt("Whole amount \r\nNo cents pence", "CASH BACK");
}

CardView& card_view() {
  return *current_view;
}
void install_card_view(CardView* view) {
  current_view = view ? view : &default_view;
}

std::string Eftfolder() {
  const std::string stored = Cp1252ToUtf8(FieldText(G().settings.eft_folder));
  if (!stored.empty() && !DriveLetterPath(stored)) return stored;
  const char* home = std::getenv("HOME");
  return std::string(home && *home ? home : ".") + "/YESEFT";
}

bool Seteftfolder(const std::string& folder) {
  const std::string bytes = Utf8ToCp1252(folder);
  if (Cp1252ToUtf8(bytes) != folder) {
    Message(
        "The card folder's name holds characters the settings cannot keep: please choose "
        "another folder.",
        "Problem");
    return false;
  }
  if (bytes.size() > sizeof G().settings.eft_folder - 1) {
    Message("The card folder's path is too long: at most 249 characters can be kept.", "Problem");
    return false;
  }
  SetField(G().settings.eft_folder, bytes);
  return true;
}

CardSetup Cardsetupshown() {
  const SettingsRecord& s = G().settings;
  CardSetup setup;
  setup.folder = Eftfolder();
  setup.active = On(s.eft_active);
  setup.cashback = On(s.eft_permit_cashback);
  setup.not_present_payment = On(s.eft_permit_cnp_payment);
  setup.not_present_refund = On(s.eft_permit_cnp_refund);
  setup.verbose = On(s.eft_verbose);
  return setup;
}

bool Storecardsetup(const CardSetup& setup) {
  if (!Seteftfolder(setup.folder)) return false;
  SettingsRecord& s = G().settings;
  const auto flag = [](bool on) { return on ? 2.0 : 0.0; };
  s.eft_active = flag(setup.active);
  s.eft_permit_cashback = flag(setup.cashback);
  s.eft_permit_cnp_payment = flag(setup.not_present_payment);
  s.eft_permit_cnp_refund = flag(setup.not_present_refund);
  s.eft_verbose = flag(setup.verbose);
  if (!Savesettings()) Message("Unable to save the settings (wr.cfg)", "Problem");
  return true;
}

std::string Eftsaletext(int64_t number, float amount) {
  return "1=" + Number(number) + "\n2=0\n3=" + MoneyText(amount) + "\n99=0";
}

std::string Eftcashbacktext(int64_t number, float total, float cash_back) {
  return "1=" + Number(number) + "\n2=9\n3=" + MoneyText(total + cash_back) +
         "\n4=" + MoneyText(cash_back) + "\n99=0";
}

std::string Eftnotpresenttext(int64_t number, float amount) {
  return "1=" + Number(number) + "\n2=0\n3=" + MoneyText(amount) + "\n12=1\n99=0";
}

std::string Eftrefundtext(int64_t number, float amount, bool not_present) {
  return "1=" + Number(number) + "\n2=20\n3=" + MoneyText(amount) +
         (not_present ? "\n12=1\n99=0" : "\n99=0");
}

std::string Eftmanualtext(const std::string& reference, const std::string& card,
                          const std::string& expiry, const std::string& original) {
  return "1=" + reference + "\n2=3\n5=" + card + "\n6=" + expiry + "\n13=" + original + "\n99=0";
}

std::optional<int> Eftreplycode(const std::string& reply) {
  const size_t n = std::min(reply.size(), kReplyLimit);
  for (size_t p = 0; p + 1 < n; ++p) {
    if (reply[p] != '3' || reply[p + 1] != '=') continue;
    // "13=" and the like are other keys.
    if (p > 0 && static_cast<unsigned char>(reply[p - 1]) >= '0') continue;
    // A "3=" without a digit is no result: a garbled reply must never approve.
    if (p + 2 >= n || !IsDigit(reply[p + 2])) continue;
    int code = reply[p + 2] - '0';
    if (p + 3 < n && IsDigit(reply[p + 3])) code = code * 10 + (reply[p + 3] - '0');
    return code;
  }
  return std::nullopt;
}

std::string Eftresulttext(int code) {
  switch (code) {
    case 0:
    case 1:
      return "Approved online";
    case 2:
      return "Approved offline";
    case 3:
      return "Approved Manual (Referral)";
    case 4:
      return "Declined Online";
    case 5:
      return "Declined Offline";
    case 9:
      return "Cancelled";
    case 16:
      return "Capture Card, declined online";
    case 19:
      return "Transaction Aborted";
    case 20:
      return "Pre sales completed";
    case 21:
      return "Pre sales rejected";
    case 22:
      return "Card number not matched";
    case 23:
      return "Expiry date not matched";
    case 24:
      return "Invalid transaction state";
    case 25:
      return "Transaction not valid for requested operation";
    case 26:
      return "Invalid PGTR";
    case 27:
      return "Invalid Merchant";
    case 28:
      return "Invalid Terminal";
    case 29:
      return "Merchant status is not valid";
    case 30:
      return "Invalid card number";
    case 31:
      return "Expired Card";
    case 32:
      return "Pre valid card";
    case 33:
      return "Invalid issue number";
    case 34:
      return "Invalid card expiry date";
    case 35:
      return "Invalid start date";
    case 36:
      return "Card not accepted";
    case 37:
      return "Transaction not allowed";
    case 38:
      return "Cash back not allowed";
    case 42:
      return "Status Busy";
    case 43:
      return "Status Not Busy";
    case 50:
      return "AVS details required";
    case 60:
      return "Card activated (Gift card activation)";
    case 61:
      return "Card already activated (Gift card activation)";
    case 62:
      return "Card not activated (For Gift Card)";
    case 63:
      return "Hot Listed Card (for Gift Card)";
    case 64:
      return "Insufficient Balance ( for Gift Card)";
    case 65:
      return "Invalid Security Code ( for Gift Card)";
    default:
      return "Declined";
  }
}

bool Eftexchange() {
  State& g = G();
  const SettingsRecord& s = g.settings;
  EftChoice choice = EftChoice::Payment;
  if (On(s.eft_permit_cashback) || On(s.eft_permit_cnp_payment) || On(s.eft_permit_cnp_refund)) {
    // A clerk kept from cash back is kept from it whether or not cards are processed.
    const bool cashback = On(s.eft_permit_cashback) && !Cashbackkept();
    choice = card_view().online_choice(cashback, On(s.eft_permit_cnp_payment));
    if (choice == EftChoice::Cancel) return false;
  }
  const std::string folder = Eftfolder();
  if (!Clearreply(folder)) return false;
  const float total = g.basket.total;
  std::string request;
  switch (choice) {
    case EftChoice::PaymentCashback: {
      const std::optional<float> cash_back = Askcashback();
      if (!cash_back) return false;
      g.basket.cash_back = *cash_back;
      request = Eftcashbacktext(NextNumber(), total, *cash_back);
      break;
    }
    case EftChoice::NotPresent:
      request = Eftnotpresenttext(NextNumber(), total);
      break;
    default:
      request = Eftsaletext(NextNumber(), total);
      break;
  }
  return Exchange(folder, request, kSaleSettleMs, Failures::Detailed);
}

bool Eftexchange(float amount) {
  const std::string folder = Eftfolder();
  if (!Clearreply(folder)) return false;
  return Exchange(folder, Eftsaletext(NextNumber(), amount), kSaleSettleMs, Failures::Detailed);
}

bool Eftrefund(float total, bool not_present) {
  const std::string folder = Eftfolder();
  if (!Clearreply(folder)) return false;
  return Exchange(folder, Eftrefundtext(NextNumber(), total, not_present), kOtherSettleMs,
                  Failures::Plain);
}

void Eftsale() {
  State& g = G();
  SettingsRecord& s = g.settings;
  Basket& b = g.basket;
  if (b.line_count <= 0) {
    Message("Please select items", "Problem");
    tender_view().focus_item_box();
    return;
  }
  if (g.tender_form_open != 0) return;
  b.cash_back = 0;
  const bool processing = On(s.eft_active);
  if (!processing && !Cashbackkept()) {
    const EftChoice choice = card_view().offline_choice();
    if (choice == EftChoice::Cancel) return;
    if (choice == EftChoice::PaymentCashback) {
      const std::optional<float> cash_back = Askcashback();
      if (!cash_back) return;
      b.cash_back = *cash_back;
      s.cashback_today += double(*cash_back);
    }
  }
  g.change_due = 0;
  g.amount_tendered = b.total;
  Stampbasket();
  b.tender_eft = b.total;
  SetField(b.payment_type, "EFT");
  b.clerk = int32_t(s.clerk_number);
  if (processing) {
    if (!Eftexchange()) {
      g.amount_tendered = 0;
      b.tender_eft = 0;
      b.cash_back = 0;
      SetField(b.payment_type, "");
      tender_view().focus_item_box();
      return;
    }
    if (b.cash_back > 0) s.cashback_today += double(b.cash_back);
  }
  b.transaction_number = s.transaction_number;
  if (s.pole_enabled) Poletotal(b.total);
  Closetender();
  Finishsale();
  if (s.sound_off == 0) platform().play_sound(8004);
  tender_view().focus_item_box();
}

void Eftmanual() {
  const char* const questions[] = {
      "Please enter a transaction reference",
      "Please enter the card number",
      "Please enter the card expiry (MMYY)",
      "Please enter the original card transaction reference",
  };
  std::string answers[4];
  for (int i = 0; i < 4; ++i) {
    const std::optional<std::string> typed =
        platform().prompt(questions[i], "Manual card transaction");
    if (!typed) return;
    answers[i] = Utf8ToCp1252(*typed);
  }
  const std::string folder = Eftfolder();
  if (!Clearreply(folder)) return;
  Exchange(folder, Eftmanualtext(answers[0], answers[1], answers[2], answers[3]), kOtherSettleMs,
           Failures::Detailed);
}

}  // namespace tilo
