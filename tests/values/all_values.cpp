#include "tests/values/value_table.h"

namespace orvane {

void TellAll(Files& files) {
    ValueTable table;
    TellGeo(table);
    TellGeometry(table);
    TellMaps(table);
    TellFiles(table, files);
}

}  // namespace orvane
