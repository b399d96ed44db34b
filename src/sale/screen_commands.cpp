// SPDX-License-Identifier: MIT
// The work of the commands that belong to the sale screen itself.
#include <string>

#include "core/customer_file.h"
#include "core/inventory.h"
#include "core/packed.h"
#include "core/state.h"
#include "core/text.h"
#include "devices/drawer.h"
#include "documents/print_job.h"
#include "sale/basket.h"
#include "sale/commands.h"
#include "sale/screen.h"

namespace tilo {
namespace {

using C = Command;

int64_t FindCustomerByNumber(const std::string& text) {
  const int64_t number = LeadingNumber(text);
  if (!NumberInRange(number)) return 0;
  return Fetchmember(number);
}

CustomerFind& customer_find() {
  static CustomerFind find = FindCustomerByNumber;
  return find;
}

template <typename T>
void Toggle(T SettingsRecord::*flag) {
  SetField(G().settings, flag, T(FieldOf(G().settings, flag) == 0 ? 2 : 0));
}

void AssociateCustomer() {
  auto reply = platform().prompt("Number / name", "Customer");
  if (!reply) return;
  const std::string text = Utf8ToCp1252(*reply);
  if (customer_find()(text) == 0) return;
  const MemberRecord& m = G().member;
  Basket& b = G().basket;
  b.customer_number = m.number;
  SetField(b.customer_name, FieldText(m.name));
  SetField(b.customer_road, FieldText(m.road));
  SetField(b.customer_area, FieldText(m.area));
  SetField(b.customer_town, FieldText(m.town));
  SetField(b.customer_postcode, FieldText(m.postcode));
  SetField(b.customer_telephone, FieldText(m.telephone));
  Message(Cp1252ToUtf8(FieldText(m.name)), "Customer associated");
}

void AddButton() {
  ScreenView& view = screen_view();
  const std::string text = view.item_box_text();
  view.set_item_box_text({});
  if (Addbutton(text)) Dispatch(C::ItemFind);
}

void QuickSelectPressed(int button) {
  if (button < 0 || button >= kQuickButtons) return;
  const int64_t number = G().screen.quick_number[button];
  if (number != 0) Addtobasket(number, kEntryNormal);
}

}  // namespace

void SetCustomerFind(CustomerFind find) {
  customer_find() = find ? std::move(find) : FindCustomerByNumber;
}

int64_t Customerfind(const std::string& text) {
  return customer_find()(text);
}

void InstallScreenHandlers() {
  SetHandler(C::ScrollBack, [](int) { Scrollquickselect(-1); });
  SetHandler(C::ScrollForward, [](int) { Scrollquickselect(+1); });
  SetHandler(C::PreviousCategory, [](int) { Stepcategory(-1); });
  SetHandler(C::NextCategory, [](int) { Stepcategory(+1); });
  SetHandler(C::CategoryButton, [](int category) { Choosecategory(category); });
  SetHandler(C::QuickSelect, QuickSelectPressed);

  SetHandler(C::AddItem, [](int) { AddButton(); });
  SetHandler(C::VoidItem, [](int) { Voiditem(); });
  SetHandler(C::RepeatItem, [](int) {
    Repeatlast(screen_view().item_box_text());
    screen_view().set_item_box_text({});
  });
  // Empty: the dispatcher's emptying of the basket is all the work there is.
  SetHandler(C::EmptyBasket, [](int) {});
  SetHandler(C::TradeToggle, [](int) {
    Toggletrade();
    screen_view().settings_changed();
  });
  SetHandler(C::OpenDrawer, [](int) { Opendrawer(); });
  SetHandler(C::LogOff, [](int) { screen_view().set_title("TILO Retail"); });

  SetHandler(C::IndentListings, [](int) {
    Indentlistings();
    screen_view().settings_changed();
  });
  SetHandler(C::AssociateCustomer, [](int) { AssociateCustomer(); });
  SetHandler(C::SoundEffects, [](int) {
    Toggle(&SettingsRecord::sound_off);
    screen_view().settings_changed();
  });
  SetHandler(C::ButtonTips, [](int) {
    Toggle(&SettingsRecord::button_tips);
    screen_view().settings_changed();
  });
  // The pictures are scaled again: smoothly and at the screen's density when ticked.
  SetHandler(C::HiResPicture, [](int) {
    Toggle(&SettingsRecord::hires_picture);
    screen_view().settings_changed();
    screen_view().quick_select_changed();
  });

  for (C exit : {C::Exit, C::ExitPrintReport, C::ExitPrintLog, C::ExitPrintReportLog})
    SetHandler(exit, [](int) { screen_view().quit(); });
  SetHandler(C::HelpContents, [](int) { screen_view().open_help("index.html"); });
  SetHandler(C::UsingHelp, [](int) { screen_view().open_help("using.html"); });
  SetHandler(C::Calendar, [](int) { screen_view().show_calendar(); });
  SetHandler(C::About, [](int) { screen_view().show_about(); });
}

}  // namespace tilo
