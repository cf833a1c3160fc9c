// The textbook fast Walsh-Hadamard transform: an in-place radix-2 loop, built
// with the library's own compiler flags so that the comparison is fair.
#ifndef KVTG_BENCH_WHT_TEXTBOOK_H
#define KVTG_BENCH_WHT_TEXTBOOK_H

void textbookWht(float* x, int n, float scale);
void textbookWht(double* x, int n, double scale);

#endif
