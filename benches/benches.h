// What is measured of the model, the engine and the list's rows, without a window.
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
