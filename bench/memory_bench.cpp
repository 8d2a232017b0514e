// Measures how much memory readers need for each byte of a hostile input. An argument selects the
// rows whose names contain it.
#include <cstdlib>

#include "bench/memory_table.h"

int main(int argc, char** argv) {
    bench::MemoryTable table(argc > 1 ? argv[1] : "");
    bench::measurePropertyLists(table);
    bench::measureReplies(table);
    bench::measureCaptures(table);
    bench::measureElements(table);
    table.finish();
    return EXIT_SUCCESS;
}
