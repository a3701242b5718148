// The table of results by the standard library's files.
#include "platform/files_std.h"
#include "tests/values/value_table.h"

int main() {
    orvane::StdFiles files;
    orvane::TellAll(files);
    return 0;
}
