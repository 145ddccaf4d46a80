#pragma once

namespace bench {

void benchLoading();
void benchSaving();
void benchTicks();
void benchNextRuns();
void benchCellTexts();
void benchSorting();
void benchDeletion();

} // namespace bench
