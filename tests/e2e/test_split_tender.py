"""Split and cheque sales in the real program, card processing on and
tilo-cardsim answering: a 30.00 basket split as 10.00 cash and 20.00 card, the
card approved, commits with the drawer opened and the receipt printed; the same
split with the card declined writes nothing and opens no drawer, and the basket
is then paid by "CH" with no card part riding along. Requests, drawer bytes,
logs, the day's totals and the receipts are read back."""

import os
import re
import subprocess
import time

import harness
from harness import check, pdf_text, put, put_text, read_at, text_at

# 12.50 + 12.50 + 3.10 + 1.90, none of them taxed.
BASKET = (1502, 1502, 1503, 2002)


def payments(s, wid, entry):
    """The Payments menu's entry `entry` steps below "Cash", from the menu to its right."""
    s.key(wid, "alt+r", "Left", *(["Down"] * entry), "Return")


def split(s, wid, cash, tendered):
    payments(s, wid, 4)  # "Split Cash Other", the card ticked
    s.fill("Split payment", cash)
    time.sleep(0.8)
    s.xdotool("type", "--delay", "60", tendered)
    time.sleep(0.3)
    s.xdotool("key", "Return")


def test(new_session):
    s = new_session()
    card = os.path.join(s.tmp, "card")
    os.mkdir(card)

    def edit(cfg):
        put(cfg, 1016, "q", 1)             # drawer_enabled
        put_text(cfg, 39096, 250, card)    # eft_folder
        put(cfg, 41030, "d", 2.0)          # eft_active
        put(cfg, 40150, "i", 1)            # auto_receipt: the till receipt
        put(cfg, 36, "i", 1)               # receipt_printer_index, and its name:
        put_text(cfg, 32434, 200, "PDF")   # the built-in printer

    pole, drawer = s.with_pole_and_drawer(edit)
    before = s.file("wr.cfg")
    sim_out = open(os.path.join(s.tmp, "cardsim.log"), "w")
    sim = subprocess.Popen(
        [os.path.join(os.path.dirname(s.newshop), "tilo-cardsim"), card, "--delay", "1500",
         "--reply", "0", "--reply", "4"], stdout=sim_out, stderr=subprocess.STDOUT)
    try:
        wid = s.open_till()

        # 10.00 cash handed over exactly, 20.00 on the card: approved.
        s.scan(wid, *BASKET)
        split(s, wid, "1000", "1000")
        s.find_window("Waiting for the card terminal")
        s.answer("Transaction committed, summary")
        got = drawer.received()
        check(got == b"\x07\x07", "the drawer got %r for the split" % got)

        # The same split declined: the terminal's word, no drawer, the basket kept.
        s.scan(wid, *BASKET)
        split(s, wid, "1000", "1000")
        s.answer("Not authorized", timeout=30)
        got = drawer.received(wait=1.5)
        check(got == b"", "the drawer got %r for a declined card" % got)

        # Then a cheque for the lot.
        payments(s, wid, 1)
        s.answer("Transaction committed, summary")
        got = drawer.received()
        check(got == b"\x07\x07", "the drawer got %r for the cheque" % got)
        check(s.close() == 0, "tilo did not end cleanly")
    finally:
        pole.close()
        drawer.close()
        sim.terminate()
        sim.wait()
        sim_out.close()

    # Only the card part is charged, as a plain sale under the number it commits with.
    requests = [open(os.path.join(card, "requests", n), "rb").read()
                for n in sorted(os.listdir(os.path.join(card, "requests")))]
    check(requests == [b"1=1\n2=0\n3=20.00\n99=0", b"1=2\n2=0\n3=20.00\n99=0"],
          "the requests were %r" % requests)

    sales = s.file(s.today("saleslog.dat"))
    check(len(sales) == 2 * 950, "saleslog.dat holds %d bytes" % len(sales))
    for at, number, kind, parts in ((0, 1, "Split", (10.0, 20.0, 0.0)),
                                    (950, 2, "CH", (0.0, 0.0, 30.0))):
        check(read_at(sales, at, "q") == number, "sale %d is not number %d" % (at // 950, number))
        check(text_at(sales, at + 354, 40) == kind, "sale %d paid by %r"
              % (number, text_at(sales, at + 354, 40)))
        got = tuple(read_at(sales, at + offset, "f") for offset in (88, 92, 100))
        check(got == parts, "sale %d has cash, EFT, CH %r" % (number, got))

    log = s.file("bun4.dat").decode("cp1252")
    check("Sale: 1, Total: 30.00\r\n" in log and
          "Payment type: Split\r\nCash: 10.00  CH: 0.00  EFT: 20.00\r\n" in log,
          "no split entry in bun4.dat:\n" + log[-600:])
    check(re.search(r"Sale: 2, Total: 30\.00\r\n(.*\r\n)*?Payment type: CH\r\n", log),
          "no cheque entry in bun4.dat:\n" + log[-600:])

    cfg = s.file("wr.cfg")
    check(read_at(cfg, 1360, "i") == 3, "transaction_number is not 3")
    for offset, name, rise in ((41822, "cash_sales", 10.0), (41838, "eft_sales", 20.0),
                               (41830, "ch_sales", 30.0), (41814, "sales_total", 60.0)):
        got = read_at(cfg, offset, "d") - read_at(before, offset, "d")
        check(abs(got - rise) < 1e-4, "%s rose by %r, not %r" % (name, got, rise))
    for offset, name, rise in ((3030, "count_cash_sales", 0), (3034, "count_ch_sales", 1),
                               (3038, "count_eft_sales", 0)):
        got = read_at(cfg, offset, "f") - read_at(before, offset, "f")
        check(got == rise, "%s rose by %r" % (name, got))

    # The two receipts, in the order printed.
    printouts = s.printouts()
    check(len(printouts) == 2, "printouts holds %r" % printouts)
    for name, words in zip(printouts, (("Receipt: 1", "Payment: EFT with cash"),
                                       ("Receipt: 2", "Payment: Cheque"))):
        receipt = pdf_text(name)
        for word in words + ("COFFEE BEANS 1KG", "APPLES BAG OF 6", "30.00"):
            check(word in receipt, "receipt %s lacks %r:\n%s" % (name, word, receipt))


if __name__ == "__main__":
    harness.main(test)
