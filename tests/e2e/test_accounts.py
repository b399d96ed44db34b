"""A customer account in the real program. Customer 5 owes 10.00; F6 puts a
one-item sale on the account ("Credit", the default button), and member.dat
then holds the balance, the count and the sale's number. Balance payment takes
5.00 in cash: a 950-byte "Payment (cash)" record, the balance down by 5.00, the
cash payment counted in wr.cfg. With TILO_SCREENSHOTS set, "Customer
transaction" and "Payment" are kept there."""

import os
import struct
import time

import harness
from harness import MEMBER_RECORD as MEMBER, check, member_record, wait_for

SALE = 950


def customer(number, name, balance):
    return member_record(number, name, road="3 MILL LANE", town="HILLBOROUGH",
                         postcode="HB2 7QT", telephone="01632 960456", balance=balance,
                         credit_limit=2000.0, tax=1)


def member(s, number):
    data = s.file("member.dat")
    for at in range(0, len(data), MEMBER):
        if struct.unpack_from("<q", data, at)[0] == number:
            return data[at:at + MEMBER]
    raise harness.Failure("customer %d not in member.dat" % number)


def sales(s):
    return s.file(s.today("saleslog.dat")) if s.exists(s.today("saleslog.dat")) else b""


def test(new_session):
    s = new_session()
    with open(os.path.join(s.shop, "member.dat"), "ab") as f:
        f.write(customer(5, "ANN SMITH", 10.0))

    title = "TILO Retail    Assoc: 1, Administrator"
    wid = s.open_till()

    # The sale on account: F6, customer 5, "Credit".
    s.type(wid, "1301")
    s.key(wid, "Return")
    s.key(wid, "F6")
    s.fill("Customer", "5")
    form = s.find_window("Customer transaction")
    time.sleep(0.8)
    s.keep(form, "customer-transaction-806.png")
    s.key(form, "Return")
    s.answer("Transaction committed, summary")
    wait_for(lambda: len(sales(s)) == SALE, "credit sale in the sales log")
    sale = sales(s)
    total = struct.unpack_from("<f", sale, 56)[0]
    number = struct.unpack_from("<q", sale, 0)[0]
    check(sale[354:360] == b"Credit", "the sale is not a credit sale")
    check(struct.unpack_from("<q", sale, 16)[0] == 5, "the sale is not customer 5's")
    wait_for(lambda: struct.unpack_from("<i", member(s, 5), 1010)[0] == number,
             "the customer's last transaction")
    m = member(s, 5)
    check(struct.unpack_from("<f", m, 1554)[0] == struct.unpack("<f", struct.pack(
        "<f", 10.0 + total))[0], "balance %r is not 10.00 + %.2f" %
        (struct.unpack_from("<f", m, 1554)[0], total))
    check(struct.unpack_from("<i", m, 1578)[0] == 1, "the customer's count did not rise")

    # A part payment: Payments > Balance payment, customer 5, 5.00 in cash.
    wid = s.find_window(title)
    s.key(wid, "alt+r", "Left", *(["Down"] * 5), "Return")
    s.fill("Customer", "5")
    payment = s.find_window("Payment")
    time.sleep(0.5)
    s.type(payment, "5.00")
    s.keep(payment, "payment-MULTDIA2.png")
    s.key(payment, "Return")
    s.answer("Customer")
    wait_for(lambda: len(sales(s)) == 2 * SALE, "payment in the sales log")
    paid = sales(s)[SALE:]
    check(paid[354:368] == b"Payment (cash)", "the payment's type is %r" % paid[354:394])
    check(struct.unpack_from("<q", paid, 0)[0] == number + 1, "the payment's number")
    check(struct.unpack_from("<fff", paid, 56) == (5.0, 0.0, 0.0), "the payment's total")
    check(struct.unpack_from("<f", paid, 88)[0] == 5.0, "the payment's cash part")
    m = member(s, 5)
    after = struct.unpack_from("<f", m, 1554)[0]
    check(abs(after - (5.0 + total)) < 0.001, "balance after payment is %r" % after)
    check(struct.unpack_from("<ff", paid, 112) == struct.unpack_from("<f", sale, 116) + (after,),
          "the payment's balances before and after")
    check(m[1138:1140] != b"\0\0", "the last payment is not stamped")
    check(s.close() == 0, "tilo did not end cleanly")

    cfg = s.file("wr.cfg")
    check(struct.unpack_from("<f", cfg, 3062)[0] == 1.0, "count_balance_cash is not 1")
    check(struct.unpack_from("<d", cfg, 41894)[0] == 5.0, "balance_cash is not 5.00")
    check(b"Payment: %d, Total: 5.00" % (number + 1) in s.file("bun4.dat"),
          "the activity log has no payment")


if __name__ == "__main__":
    harness.main(test)
