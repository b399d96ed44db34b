// SPDX-License-Identifier: MIT
// tilo-newshop FOLDER [--demo]: writes the fresh data set a first start needs
// (film.dat, member.dat, mans.dat, wr.cfg), and with --demo a small believable
// shop whose shelves are stocked, so a new user can sell at once.
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "core/clock.h"
#include "core/inventory.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "inventory/pictures.h"
#include "platform/files.h"

namespace {

using namespace tilo;

struct DemoItem {
  int64_t number;
  const char* description;
  float retail;
  float cost;
  int tax;  // 0 non taxable, 1 tax 1 and 2, 2 tax 1, 3 tax 2
  int quantity;
  int category;  // zero-based display category
  const char* barcode;
};

// Categories: 0 ALC, 1 BEE, 2 BOO, 3 CAN, 4 CAR, 5 COF, 6 DEL, 7 DRI, 8 DVD, 9 FRO,
// 10 FRU, 11 HAR, 12 MSC, 13 PAP, 14 POP, 15 TEA, 16 SWE, 17 WIN.
constexpr DemoItem kItems[] = {
    {1001, "LONDON DRY GIN 70CL", 18.33f, 11.20f, 2, 12, 0, "5000299225004"},
    {1002, "SCOTCH WHISKY 70CL", 20.83f, 13.50f, 2, 10, 0, "5000267024004"},
    {1003, "VODKA 70CL", 14.99f, 9.10f, 2, 14, 0, "5010327105007"},
    {1101, "PALE ALE 500ML", 2.08f, 1.10f, 2, 48, 1, "5010549300017"},
    {1102, "LAGER 4 X 440ML", 4.58f, 2.60f, 2, 36, 1, "5010549300024"},
    {1103, "STOUT 440ML", 1.83f, 0.95f, 2, 30, 1, "5000213003757"},
    {1201, "ROAD ATLAS BRITAIN", 9.99f, 5.00f, 0, 6, 2, "9780008479206"},
    {1202, "CROSSWORD BOOK", 3.99f, 1.80f, 0, 15, 2, "9781780559216"},
    {1301, "SCENTED CANDLE", 6.25f, 2.40f, 2, 20, 3, "5055538120014"},
    {1302, "TEA LIGHTS X 24", 2.92f, 1.10f, 2, 25, 3, "5055538120021"},
    {1401, "BIRTHDAY CARD", 2.50f, 0.90f, 2, 60, 4, "5026002063051"},
    {1402, "THANK YOU CARD", 1.95f, 0.70f, 2, 40, 4, "5026002063068"},
    {1501, "GROUND COFFEE 227G", 3.75f, 2.10f, 0, 24, 5, "5000213002996"},
    {1502, "COFFEE BEANS 1KG", 12.50f, 7.90f, 0, 8, 5, "5000213003009"},
    {1503, "INSTANT COFFEE 100G", 3.10f, 1.70f, 0, 30, 5, "7613034626844"},
    {1601, "CHEDDAR 400G", 3.60f, 2.20f, 0, 18, 6, "5000295140109"},
    {1602, "SLICED HAM 120G", 2.15f, 1.20f, 0, 22, 6, "5000295140116"},
    {1603, "HOUMOUS 200G", 1.35f, 0.60f, 0, 16, 6, "5000295140123"},
    {1701, "COLA 330ML", 0.83f, 0.35f, 2, 96, 7, "5449000000996"},
    {1702, "ORANGE JUICE 1L", 1.65f, 0.80f, 0, 24, 7, "5000295140130"},
    {1703, "SPARKLING WATER 500ML", 0.75f, 0.20f, 2, 72, 7, "5000295140147"},
    {1801, "FAMILY FILM DVD", 8.33f, 4.00f, 2, 9, 8, "5051892011998"},
    {1802, "NATURE DOCUMENTARY DVD", 10.83f, 5.50f, 2, 5, 8, "5051892012001"},
    {1901, "ICE CREAM 1L", 3.50f, 1.60f, 0, 12, 9, "8711327378706"},
    {1902, "FROZEN PEAS 900G", 1.80f, 0.85f, 0, 15, 9, "5000295140154"},
    {2001, "BANANAS LOOSE", 0.18f, 0.08f, 0, 120, 10, "2000000000015"},
    {2002, "APPLES BAG OF 6", 1.90f, 0.95f, 0, 25, 10, "2000000000022"},
    {2003, "ORANGES BAG OF 4", 2.10f, 1.00f, 0, 20, 10, "2000000000039"},
    {2101, "AA BATTERIES X 4", 3.33f, 1.50f, 2, 30, 11, "5000394025420"},
    {2102, "PICTURE HOOKS", 1.67f, 0.50f, 2, 18, 11, "5000394025437"},
    {2103, "LIGHT BULB LED", 4.17f, 1.90f, 2, 14, 11, "5000394025444"},
    {2201, "UMBRELLA", 7.50f, 3.20f, 2, 6, 12, "5000394025451"},
    {2202, "PHONE CHARGER", 9.17f, 4.10f, 2, 8, 12, "5000394025468"},
    {2301, "DAILY NEWSPAPER", 1.20f, 0.90f, 0, 40, 13, "9770261307354"},
    {2302, "WEEKLY MAGAZINE", 2.75f, 1.90f, 0, 20, 13, "9770261307361"},
    {2303, "A4 NOTEPAD", 1.25f, 0.45f, 2, 35, 13, "5000394025475"},
    {2401, "CRISPS READY SALTED", 0.70f, 0.30f, 2, 80, 14, "5000328657000"},
    {2402, "POPCORN SWEET 100G", 1.25f, 0.55f, 2, 36, 14, "5000328657017"},
    {2403, "SALTED PEANUTS 200G", 1.60f, 0.70f, 2, 30, 14, "5000328657024"},
    {2501, "ENGLISH BREAKFAST TEA 80", 2.60f, 1.30f, 0, 28, 15, "5000208011569"},
    {2502, "GREEN TEA 20 BAGS", 1.85f, 0.90f, 0, 20, 15, "5000208011576"},
    {2601, "MILK CHOCOLATE BAR", 0.95f, 0.40f, 2, 90, 16, "7622210449283"},
    {2602, "FRUIT GUMS BAG", 1.10f, 0.45f, 2, 50, 16, "7622210449290"},
    {2603, "MINTS ROLL", 0.55f, 0.20f, 2, 70, 16, "7622210449306"},
    {2701, "RED WINE 75CL", 7.49f, 4.20f, 2, 24, 17, "3263280112430"},
    {2702, "WHITE WINE 75CL", 6.99f, 3.90f, 2, 24, 17, "3263280112447"},
    {2703, "PROSECCO 75CL", 9.16f, 5.40f, 2, 12, 17, "8003625000108"},
    {2704, "BIRTHDAY GIFT BAG", 1.50f, 0.50f, 2, 2, 12, "5000394025482"},
};

// The built-in picture of each demo category: wine, beer, books, candles, cards,
// coffee, cheese, milk, gifts, ice cream, apple, groceries, gifts, newspapers,
// groceries, tea, sweets, wine.
constexpr int kCategoryPicture[18] = {4,  21, 12, 11, 13, 5,  6,  2,  23,
                                      14, 3,  22, 23, 19, 22, 10, 20, 4};

FilmRecord MakeItem(const DemoItem& d, const char* date_added) {
  FilmRecord r{};
  r.number = d.number;
  SetField(r.description, d.description);
  SetField(r.sku1, d.barcode);
  SetField(r.date_added, date_added);
  r.retail_price = d.retail;
  r.cost_price = d.cost;
  r.trade_price = d.cost * 1.2f;
  r.tax = d.tax;
  r.quantity = d.quantity;
  r.reorder_quantity = 5;
  r.minimum_order = 6;
  r.order_quantity = 12;
  r.stock_picture = d.number == 2001 ? 8 : kCategoryPicture[d.category];
  r.display_category = d.category;
  // An item added by hand has an empty last_used; the due-back field keeps its
  // space between time and date.
  r.due_back[5] = ' ';
  return r;
}

bool StockDemoShop() {
  HeadingLines h{};
  SetField(h.site_name, "CORNER STORE");
  SetField(h.site_road, "14 MARKET STREET");
  SetField(h.site_area, "HILLBOROUGH");
  SetField(h.site_county, "HB1 4MS");
  SetField(h.site_postcode, "UNITED KINGDOM");
  SetField(h.site_telephone, "01632 960123");
  SetField(h.site_spare, "CORNER STORE");
  if (!WriteHeadingLines(h)) return false;

  if (!G().films.Load()) return false;
  Datestamp();
  for (const DemoItem& d : kItems)
    if (!Insertnumber(MakeItem(d, G().date_text))) return false;
  G().settings.last_inventory_number = 2704;
  G().settings.last_customer_number = 0;
  return Savesettings();
}

int Usage() {
  std::fprintf(stderr, "usage: tilo-newshop FOLDER [--demo]\n");
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  // Clerk passwords, customers' addresses and the mail credentials: the shop's
  // files are the user's alone, whatever umask the desktop hands down.
  umask(077);
  if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
    std::printf("tilo-newshop %s\n", TILO_VERSION);
    return 0;
  }
  if (argc < 2 || argc > 3) return Usage();
  bool demo = argc == 3 && std::strcmp(argv[2], "--demo") == 0;
  if (argc == 3 && !demo) return Usage();
  std::string folder = argv[1];
  if (!MakeFolder(folder) || chdir(folder.c_str()) != 0) {
    std::fprintf(stderr, "tilo-newshop: cannot use folder %s\n", folder.c_str());
    return 1;
  }
  if (FileExists(kFilmFile) || FileExists(kSettingsFile)) {
    std::fprintf(stderr, "tilo-newshop: %s already holds a shop; nothing was changed\n",
                 folder.c_str());
    return 1;
  }
  if (!Firstrunsettings()) return 1;
  if (!Placestockpictures())
    std::fprintf(stderr, "tilo-newshop: could not place the built-in pictures\n");
  if (demo && !StockDemoShop()) {
    std::fprintf(stderr, "tilo-newshop: could not stock the demo shop\n");
    return 1;
  }
  std::printf("%s shop made in %s\n", demo ? "Demo" : "Empty", folder.c_str());
  return 0;
}
