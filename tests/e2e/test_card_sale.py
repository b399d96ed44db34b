"""Card sales in the real program against tilo-cardsim, the card terminal
simulator: a sale with cash back that commits as EFT and opens the drawer; a
decline (4), a captured card (16) and a reply without a result code, each told
in a box with the basket left whole and nothing logged; and a Cancel while the
till waits, which takes the request back. The waiting box is photographed
(kept when TILO_SCREENSHOTS names a folder)."""

import os
import subprocess
import time

import harness
from harness import check, put, put_text, read_at, text_at



def pay(s, wid, buttons_down=0):
    """F7, then the button `buttons_down` below "Payment" in the payment box."""
    s.key(wid, "F7")
    box = s.find_window("Electronic Payment")
    time.sleep(0.3)
    s.key(box, *(["Tab"] * buttons_down), "space")


def test(new_session):
    s = new_session()
    card = os.path.join(s.tmp, "card")
    os.mkdir(card)

    def edit(cfg):
        put(cfg, 1016, "q", 1)                # drawer_enabled
        put_text(cfg, 39096, 250, card)       # eft_folder
        put(cfg, 41030, "d", 2.0)             # eft_active
        put(cfg, 41046, "d", 2.0)             # eft_permit_cashback

    pole, drawer = s.with_pole_and_drawer(edit)
    sim_out = open(os.path.join(s.tmp, "cardsim.log"), "w")
    sim = subprocess.Popen(
        [os.path.join(os.path.dirname(s.newshop), "tilo-cardsim"), card, "--delay", "2500",
         "--reply", "0", "--reply", "4", "--reply", "16", "--reply", "nokey3", "--reply", "leave"],
        stdout=sim_out, stderr=subprocess.STDOUT)
    try:
        wid = s.open_till()

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
        check(s.close() == 0, "tilo did not end cleanly")
    finally:
        pole.close()
        drawer.close()
        sim.terminate()
        sim.wait()
        sim_out.close()

    def request(n):
        with open(os.path.join(card, "requests", "request-%04d.txt" % n), "rb") as f:
            return f.read()

    check(request(1) == b"1=1\n2=9\n3=42.00\n4=20.00\n99=0", "request 1 is %r" % request(1))
    for n in range(2, 6):
        check(request(n) == b"1=2\n2=0\n3=0.84\n99=0", "request %d is %r" % (n, request(n)))
    check(not os.path.exists(os.path.join(card, "requests", "request-0006.txt")),
          "more requests than sales")

    sales = s.file(s.today("saleslog.dat"))
    check(len(sales) == 950, "saleslog.dat holds %d bytes: the refusals were logged" % len(sales))
    check(read_at(sales, 0, "q") == 1, "the card sale is not number 1")
    check(text_at(sales, 354, 40) == "EFT", "payment type %r" % text_at(sales, 354, 40))
    check(read_at(sales, 92, "f") == 22.0, "tender_eft is %r" % read_at(sales, 92, "f"))
    check(read_at(sales, 84, "f") == 20.0, "cash_back is %r" % read_at(sales, 84, "f"))
    cfg = s.file("wr.cfg")
    check(read_at(cfg, 1360, "i") == 2, "transaction_number is not 2")
    check(read_at(cfg, 40974, "d") == 20.0, "cashback_today is %r" % read_at(cfg, 40974, "d"))


if __name__ == "__main__":
    harness.main(test)
