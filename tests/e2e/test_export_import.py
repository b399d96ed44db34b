"""Export and import in the real program: on a demo shop the items are
exported as text from the Utilities menu and the file is checked byte for byte
against film.dat; then a spreadsheet's CSV (Python's csv, with a UTF-8 mark and
a quoted comma) is imported over the inventory, the program closes by itself,
after a restart an imported item sells, and an XML export of the new items
(an ampersand and angle brackets among them) parses back."""

import csv
import os
import struct
import time
from xml.etree import ElementTree

import harness
from harness import check, read_at, text_at

RECORD = 1874


def items(film):
    """The live records of film.dat, in number order."""
    found = []
    for at in range(0, len(film), RECORD):
        r = film[at:at + RECORD]
        if read_at(r, 0, "q") >= 1:
            found.append(r)
    return sorted(found, key=lambda r: read_at(r, 0, "q"))


def cell(text):
    return '"%s"' % text.replace('"', '""') if any(c in text for c in ',"\r\n') else text


def text_row(r):
    money = lambda at: "%.2f" % struct.unpack_from("<f", r, at)[0]
    fields = [str(read_at(r, 0, "q")), cell(text_at(r, 8, 40)), cell(text_at(r, 90, 40)),
              cell(text_at(r, 130, 40)), money(814), str(read_at(r, 1787, "i")), money(822),
              str(read_at(r, 670, "i")), str(read_at(r, 674, "i")),
              "0" if read_at(r, 686, "i") == 0 else "1"]
    return "".join(f + "," for f in fields) + "\r\n"


def utilities(s, wid, letter):
    s.key(wid, "alt+u")
    time.sleep(0.5)
    s.xdotool("key", letter)


def type_into(s, title, text):
    wid = s.find_window(title)
    time.sleep(0.5)
    s.key(wid, "ctrl+a")
    s.xdotool("type", "--delay", "30", text)
    s.xdotool("key", "Return")


def test(new_session):
    s = new_session()
    exported = os.path.join(s.tmp, "items.txt")
    sheet = os.path.join(s.tmp, "stock.csv")
    s.start()
    s.log_on()
    wid = s.find_window("TILO Retail.*")
    time.sleep(1.0)

    utilities(s, wid, "e")
    s.answer("Export")                      # the form: Inventory, Text, All
    type_into(s, "Export", exported)         # the file name prompt
    s.answer("Inventory database")          # all ten fields ticked
    s.answer("File export")
    film = s.file("film.dat")
    expected = "".join(text_row(r) for r in items(film)).encode("cp1252")
    check(len(items(film)) > 3, "the demo shop has too few items")
    check(open(exported, "rb").read() == expected, "the export is not film.dat's items")

    with open(sheet, "w", newline="", encoding="utf-8-sig") as f:
        w = csv.writer(f)
        w.writerow(["Number", "Description", "SKU", "SKU 2", "Cost", "Category", "Retail",
                    "Stock"])
        w.writerow([7001, "Cake, lemon", "5012345678900", "", "0.80", "3", "1.80", "6"])
        w.writerow([7002, 'Tea "Earl Grey" & <milk>', "", "", "1.10", "15", "2.35", "4"])
        w.writerow([7003, "X", "", "", "1", "1", "1", "1"])
    utilities(s, wid, "i")
    s.answer("Import")                      # offers 1: inventory
    type_into(s, "Import", sheet)            # the file chooser
    s.answer("File import")                 # "4 records of 8 fields"
    s.answer("Inventory database")          # the columns as they come
    s.answer("Warning")
    s.answer("Inventory import complete")
    check(s.app.wait(20) == 0, "tilo did not close itself after the import")
    s.app = None
    check(s.file("temp2.dat") == film, "temp2.dat is not the replaced film.dat")
    new = s.file("film.dat")
    check(len(new) == 2 * RECORD, "film.dat does not hold the two good rows")
    cake, tea = new[:RECORD], new[RECORD:]
    check(read_at(cake, 0, "q") == 7001 and text_at(cake, 8, 40) == "CAKE, LEMON",
          "the quoted comma did not stay in the description")
    check(text_at(cake, 90, 40) == "5012345678900", "sku1 not imported")
    check(read_at(cake, 670, "i") == 6 and read_at(cake, 1787, "i") == 3, "stock or category")
    check(abs(struct.unpack_from("<f", cake, 822)[0] - 1.80) < 1e-6, "retail price")
    check(text_at(tea, 8, 40) == 'TEA "EARL GREY" & <MILK>', "the quoted quotes were not undone")
    check(text_at(cake, 1810, 16) == "NEW", "an imported item is not NEW")

    s.start()
    s.log_on()
    wid = s.find_window("TILO Retail.*")
    time.sleep(1.0)
    s.type(wid, "7001")
    s.key(wid, "Return")
    s.key(wid, "F5")
    time.sleep(1.0)
    s.xdotool("type", "--delay", "60", "500")
    s.xdotool("key", "Return")
    s.answer("Transaction committed, summary")

    xml = os.path.join(s.tmp, "items.xml")
    utilities(s, wid, "e")
    form = s.find_window("Export")
    time.sleep(0.5)
    s.key(form, "Tab", "Tab", "Tab", "Right", "Right", "Return")  # Format: XML
    type_into(s, "Export", xml)
    s.answer("File export")
    check(s.close() == 0, "the restart did not end cleanly")
    check(read_at(s.file("film.dat")[:RECORD], 670, "i") == 5, "the sale did not take one off")
    document = ElementTree.parse(xml).getroot()
    check([i.findtext("number") for i in document] == ["7001", "7002"], "the XML's items")
    check(document[1].findtext("description") == 'TEA "EARL GREY" & <MILK>',
          "the XML's escaped description does not read back")
    check(document[0].findtext("quantity") == "5", "the XML's stock after the sale")


if __name__ == "__main__":
    harness.main(test)
