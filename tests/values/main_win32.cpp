// The table of results by the system's own files.
#include <fcntl.h>
#include <io.h>

#include "platform/win32/win32_files.h"
#include "tests/values/value_table.h"

int main() {
    _setmode(_fileno(stdout), _O_BINARY);
    orvane::Win32Files files;
    orvane::TellAll(files);
    return 0;
}
