// Prints the description of the type library.
#include <iostream>

#include "hosts/ocx/idl/idl_text.h"

int main() {
    std::cout << orvane::IdlText(orvane::Surface()) << std::flush;
    return std::cout ? 0 : 1;
}
