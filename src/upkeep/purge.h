// SPDX-License-Identifier: MIT
// Throwing data away: the history tree of past transactions and the activity logs.
#pragma once

namespace tilo {

// Deletes the history tree year by year from `from_year` back, stopping below
// 2000 or at the first earlier year without a readable base.dat, so folders
// older than a gap stay. Shows "Please manually delete the %d folder" when a
// year's folder can't be removed. False when some folder stayed.
bool PurgeHistoryTree(int from_year);

// The year a purge starts from: the later of the last year the till was used
// and the clock's year, so a clock set back still reaches the newest folders.
int PurgeStartYear();

// Deletes the history tree from PurgeStartYear(), sets the transaction number
// to 1 and saves wr.cfg at once.
bool Purgeyears();

// "Purge transaction history": asks, purges, makes today's folders anew.
void Purgehistory();

// "Purge log files": deletes bun2.dat and bun4.dat without asking.
void Purgelogfiles();

}  // namespace tilo
