// How much memory readers of hostile input need, for each byte of it. An argument chooses the rows
// whose names hold it.
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
