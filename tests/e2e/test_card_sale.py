"""Card, split and cheque sales in the real program against tilo-cardsim, the
card terminal simulator. A sale with cash back commits as EFT and opens the
drawer; a decline (4), a captured card (16) and a reply without a result code
are each told in a box with the basket left whole and nothing logged, and a
Cancel while the till waits takes the request back (that basket is then paid in
cash). A 30.00 basket split as 10.00 cash and 20.00 card, the card approved,
commits with the drawer opened and the receipt printed; the same split with the
card declined writes nothing and opens no drawer, and the basket is then paid
by "CH" with no card part riding along. Requests, drawer bytes, logs, the day's
totals and the receipts are read back. The waiting box is photographed (kept
when TILO_SCREENSHOTS names a folder)."""

import os
import re
import subprocess
import time

import harness
from harness import check, pdf_text, put, put_text, read_at, text_at

SALE = 950
# 12.50 + 12.50 + 3.10 + 1.90, none of them taxed.
BASKET = (1502, 1502, 1503, 2002)


def pay(s, wid, buttons_down=0):
    """F7, then the button `buttons_down` below "Payment" in the payment box."""
    s.key(wid, "F7")
    box = s.find_window("Electronic Payment")
    time.sleep(0.3)
    s.key(box, *(["Tab"] * buttons_down), "space")


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


def card_sales(s, wid, drawer, card):
    # A sale with 20 cash back.
    s.scan(wid, 1001)
    pay(s, wid, buttons_down=1)
    cash_back = s.find_window("CASH BACK")
    time.sleep(0.3)
    s.type(cash_back, "20")
    s.key(cash_back, "Return")
    s.find_window("Waiting for the card terminal")
    time.sleep(0.5)
    s.keep(wid, "card-waiting.png")
    s.answer("Transaction committed, summary")
    got = drawer.received()
    check(got == b"\x07\x07", "the drawer got %r" % got)

    # Refusals: the basket stays for another tender.
    s.scan(wid, 2401)
    for title in ("Not authorized", "Not authorized", "Problem"):
        pay(s, wid)
        s.answer(title, timeout=30)

    # Cancel while the terminal has not taken the request.
    pay(s, wid)
    s.answer("Waiting for the card terminal", key="Escape")
    s.answer("Not authorized")
    check(not os.path.exists(os.path.join(card, "input.txt")),
          "the cancelled request was not taken back")
    s.pay_cash(wid, "100")
    drawer.received()


def split_sales(s, wid, drawer):
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


def test(new_session):
    s = new_session()
    card = os.path.join(s.tmp, "card")
    os.mkdir(card)

    def edit(cfg):
        put(cfg, 1016, "q", 1)             # drawer_enabled
        put_text(cfg, 39096, 250, card)    # eft_folder
        put(cfg, 41030, "d", 2.0)          # eft_active
        put(cfg, 41046, "d", 2.0)          # eft_permit_cashback
        put(cfg, 40150, "i", 1)            # auto_receipt: the till receipt
        put(cfg, 36, "i", 1)               # receipt_printer_index, and its name:
        put_text(cfg, 32434, 200, "PDF")   # the built-in printer

    pole, drawer = s.with_pole_and_drawer(edit)
    before = s.file("wr.cfg")
    sim_out = open(os.path.join(s.tmp, "cardsim.log"), "w")
    sim = subprocess.Popen(
        [os.path.join(os.path.dirname(s.newshop), "tilo-cardsim"), card, "--delay", "2500",
         "--reply", "0", "--reply", "4", "--reply", "16", "--reply", "nokey3", "--reply", "leave",
         "--reply", "0", "--reply", "4"],
        stdout=sim_out, stderr=subprocess.STDOUT)
    try:
        wid = s.open_till()
        card_sales(s, wid, drawer, card)
        split_sales(s, wid, drawer)
        check(s.close() == 0, "tilo did not end cleanly")
    finally:
        pole.close()
        drawer.close()
        sim.terminate()
        sim.wait()
        sim_out.close()

    # Only the card part of a split is charged, as a plain sale under the number
    # it commits with; the cancelled request was taken back before it was read.
    requests = [open(os.path.join(card, "requests", n), "rb").read()
                for n in sorted(os.listdir(os.path.join(card, "requests")))]
    check(requests == [b"1=1\n2=9\n3=42.00\n4=20.00\n99=0"] + [b"1=2\n2=0\n3=0.84\n99=0"] * 4
          + [b"1=3\n2=0\n3=20.00\n99=0", b"1=4\n2=0\n3=20.00\n99=0"],
          "the requests were %r" % requests)

    sales = s.file(s.today("saleslog.dat"))
    check(len(sales) == 4 * SALE, "saleslog.dat holds %d bytes: a refusal was logged" % len(sales))
    for k, kind, parts in ((0, "EFT", (0.0, 22.0, 0.0)), (2, "Split", (10.0, 20.0, 0.0)),
                           (3, "CH", (0.0, 0.0, 30.0))):
        at = k * SALE
        check(read_at(sales, at, "q") == k + 1, "sale %d is numbered %d" % (k + 1, read_at(sales, at, "q")))
        check(text_at(sales, at + 354, 40) == kind, "sale %d paid by %r"
              % (k + 1, text_at(sales, at + 354, 40)))
        got = tuple(read_at(sales, at + offset, "f") for offset in (88, 92, 100))
        check(got == parts, "sale %d has cash, EFT, CH %r" % (k + 1, got))
    check(read_at(sales, 84, "f") == 20.0, "cash_back is %r" % read_at(sales, 84, "f"))

    log = s.file("bun4.dat").decode("cp1252")
    check("Sale: 3, Total: 30.00\r\n" in log and
          "Payment type: Split\r\nCash: 10.00  CH: 0.00  EFT: 20.00\r\n" in log,
          "no split entry in bun4.dat:\n" + log[-600:])
    check(re.search(r"Sale: 4, Total: 30\.00\r\n(.*\r\n)*?Payment type: CH\r\n", log),
          "no cheque entry in bun4.dat:\n" + log[-600:])

    cfg = s.file("wr.cfg")
    check(read_at(cfg, 1360, "i") == 5, "transaction_number is not 5")
    check(read_at(cfg, 40974, "d") == 20.0, "cashback_today is %r" % read_at(cfg, 40974, "d"))
    for offset, name, rise in ((41822, "cash_sales", 10.84), (41838, "eft_sales", 42.0),
                               (41830, "ch_sales", 30.0), (41814, "sales_total", 82.84)):
        got = read_at(cfg, offset, "d") - read_at(before, offset, "d")
        check(abs(got - rise) < 1e-4, "%s rose by %r, not %r" % (name, got, rise))
    for offset, name, rise in ((3030, "count_cash_sales", 1), (3034, "count_ch_sales", 1),
                               (3038, "count_eft_sales", 1)):
        got = read_at(cfg, offset, "f") - read_at(before, offset, "f")
        check(got == rise, "%s rose by %r" % (name, got))

    # The split's and the cheque's receipts, the last two printed.
    printouts = s.printouts()
    check(len(printouts) == 4, "printouts holds %r" % printouts)
    for name, words in zip(printouts[2:], (("Receipt: 3", "Payment: EFT with cash"),
                                           ("Receipt: 4", "Payment: Cheque"))):
        receipt = pdf_text(name)
        for word in words + ("COFFEE BEANS 1KG", "APPLES BAG OF 6", "30.00"):
            check(word in receipt, "receipt %s lacks %r:\n%s" % (name, word, receipt))


if __name__ == "__main__":
    harness.main(test)
