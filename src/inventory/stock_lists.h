// SPDX-License-Identifier: MIT
// The five stock lists of the Reports menu: what to reorder (by number or by
// order code), what is out of stock, specially ordered or past its sell-by
// date. Each shows in a list form with "OK" and "Print" and prints on plain
// paper. Rows are Windows-1252 text made from one live FilmRecord each.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/film_record.h"
#include "platform/platform.h"

namespace tilo {

enum class StockList { Reorder, ReorderByCode, OutOfStock, SpecialOrders, SellBy };

// Whether a live record belongs on the list, on the day `today`.
bool Onstocklist(StockList list, const FilmRecord& r, const LocalTime& today);
// Its row, screen and print alike.
std::string Stocklistrow(StockList list, const FilmRecord& r);
// The form's title, and the column titles it shows first ("" for none).
const char* Stocklisttitle(StockList list);
const char* Stocklistcolumns(StockList list);

// The rows of a list, the column titles first where the list has them: reorder
// lists in number order, the others in file order; the list by order code
// sorted as text, titles included, without regard to case. None when film.dat
// is missing (after its message) or the walk was cancelled or failed.
std::optional<std::vector<std::string>> Stocklistrows(StockList list);
// Sorts rows as the list by order code holds them: a case-blind compare of the
// whole row, rows that compare equal keeping their order.
void Sortstockrows(std::vector<std::string>& rows);

// Prints a list's rows as the form holds them (the column titles of the
// screen are left out but for the list by order code, which prints its rows
// as they stand).
void Printstocklist(StockList list, const std::vector<std::string>& rows);

// The command: collects the rows and shows them.
void Stocklistcommand(StockList list);
void InstallStockListHandlers();

}  // namespace tilo
