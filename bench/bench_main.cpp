// The benchmark program: every bench/*.cpp registers its pairs, and this
// main runs them and prints the table of time ratios and errors at the end.
#include "ratio_table.h"

int main(int argc, char **argv)
{
    return zgbench::runBenchmarksAndPrintTable(argc, argv);
}
