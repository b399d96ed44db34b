// SPDX-License-Identifier: MIT
#include "documents/wording.h"

#include <cstring>

#include "core/state.h"
#include "core/text.h"
#include "platform/files.h"

namespace tilo {
namespace {

// English, Italiano, Espanol, Nederlands. The oddities stand as shipped: slot 12
// in Spanish reads as credit, and "Associate" is the same in all four.
// clang-format off
constexpr const char* kBuiltin[kLanguages][kWordingSlots] = {
    {"English", "Receipt", "Sub total", "Total", "Discount", "Customer", "Non taxable", "Taxable",
     "Tendered", "Cash change", "Payment: Cash", "Payment: Cheque", "Payment: EFT",
     "Payment: Credit", "Payment: CH with cash", "Payment: EFT with cash", "Refund", "INVOICE",
     "Invoice Number", "Associate", "DESCRIPTION", "ITEM NO", "NET TOTAL", "SUBTOTAL", "TOTAL",
     "DISCOUNT", "CUSTOMER", "CUSTOMER NO", "TELEPHONE", "ITEMS", "NON TX", "TAXABLE",
     "Authorized", "Received", "Unit price", "Terms"},
    {"Italiano", "Ricevimento", "Sub totale", "Totale", "Sconto", "Cliente", "Non imponibile",
     "Imponibile", "Offerto", "Sostituzione del contante", "Pagamento: Contanti",
     "Pagamento: Assegno", "Pagamento: EFT", "Pagamento: Credit", "Pagamento: CH in contanti",
     "Pagamento: EFT in contanti", "Rimborso", "FATTURA", "Fattura No", "Associate",
     "DESCRIZIONE", "ARTICOLI NO", "NET TOTALE", "SUB TOTALE", "TOTALE", "SCONTO", "CLIENTE",
     "CLIENTE NO", "TELEFONO", "ARTICOLI", "NON IMP", "IMPONIBILE", "Autorizzato", "Ricevuto",
     "Prezzo unitario", "Condizioni"},
    {"Espanol", "Recepci\xF3""n", "Sub total", "Total", "Descuento", "Cliente", "No imponible",
     "Imponible", "Licitaci\xF3""n", "De introducci\xF3""n del efectivo", "Pago: Efectivo",
     "Pago: transferencia bancaria", "Pago: cr\xE9""dito", "Pago: Credit",
     "Pago: con dinero en efectivo CH", "Pago: transferencia bancaria con dinero en efectivo",
     "Reembolso", "FACTURA", "Factura Number", "Associate", "DESCRIPCION", "ARTICULOS NO",
     "NET TOTAL", "SUBTOTAL", "TOTAL", "DESCUENTO", "CLIENTE", "CLIENTE NO", "TELEFONO",
     "ARTICULOS", "NON IMP", "IMPONIBLE", "Autorizado", "Recibido", "Precio por unidad",
     "Condiciones"},
    {"Nederlands", "Ontvangst", "Subtotaal", "Totaal", "Korting", "Klant", "Niet-belastbare",
     "Belastbaar", "Aangeboden", "Naar de chartale euro", "Betaling: Cash", "Betaling: Cheque",
     "Betaling: EFT", "Betaling: Credit", "Betaling: CH met contant geld",
     "Betaling: EFT met contant geld", "Terugbetaling", "FACTUUR", "FACTUUR No", "Associate",
     "BESCHRIJVING", "ITEM NO", "NET TOTAAL", "SUBTOTAAL", "TOTAAL", "KORTING", "KLANT",
     "KLANT NO", "TELEFOON", "ITEMS", "NON BELA", "BELASTBAAR", "Geautoriseerde", "Ontvangen",
     "Eenheidsprijs", "Voorwaarden"}};
// clang-format on

}  // namespace

const char* BuiltinWording(int language, int slot) {
  if (language < 0 || language >= kLanguages || slot < 0 || slot >= kWordingSlots) return "";
  return kBuiltin[language][slot];
}

void Defaultwording(int language_index, LanguageTable& table) {
  if (language_index < 0 || language_index >= kLanguages) return;
  for (int s = 0; s < kWordingSlots; ++s) SetField(table.slot[s], kBuiltin[language_index][s]);
}

void Loadwording() {
  State& g = G();
  File f(kLanguageFile, File::Mode::Read);
  // A short file fills what it holds; one that can't be read counts as missing.
  if (f && f.read(&g.language, sizeof(LanguageTable)) >= 0) return;
  LanguageTable fresh{};
  Defaultwording(g.settings.language_index, fresh);
  g.language = fresh;
}

bool Savewording() {
  return ReplaceFile(kLanguageFile, &G().language, sizeof(LanguageTable));
}

std::string Wording(int slot) {
  if (slot < 0 || slot >= 58) return {};
  return FieldText(G().language.slot[slot]);
}

WordingForm Openwordingform() {
  const State& g = G();
  WordingForm form;
  const int language = g.settings.language_index;
  form.selection = language >= 0 && language < kLanguages ? language : -1;
  form.defaults = g.language;
  Defaultwording(language, form.defaults);
  form.in_use = g.language;
  return form;
}

void Choosewordinglanguage(WordingForm& form, int selection) {
  if (selection < 0 || selection >= kLanguages) return;
  form.selection = selection;
  Defaultwording(selection, form.defaults);
  form.in_use = form.defaults;
}

void Acceptwordingform(const WordingForm& form) {
  State& g = G();
  if (form.selection >= 0) g.settings.language_index = form.selection;
  // Slot 0 keeps its old name, even when the language changed.
  for (int s = 1; s < kWordingSlots; ++s)
    SetField(g.language.slot[s], FieldText(form.in_use.slot[s]));
}

}  // namespace tilo
