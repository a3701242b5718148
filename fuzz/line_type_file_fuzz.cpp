#include "files/line_type_file.h"
#include "fuzz/one_file.h"

namespace {

using orvane::LineTypeDef;
using orvane::Require;

/// What the drawing relies on: the lists of a kind are as long as its count says.
void CheckLists(const LineTypeDef& def) {
    const auto n = static_cast<std::size_t>(def.ltCnt);
    const std::size_t list = def.ltList.size();
    const std::size_t list2 = def.ltList2.size();
    switch (def.ltKind) {
        case 0:
            return Require(def.ltCnt == 0 && list == 0 && list2 == 0);
        case 1:
        case 4:
        case 5:
            return Require(def.ltCnt >= 0 && list == n && list2 == 0);
        case 2:
            return Require(def.ltCnt == 1 && list == 1 && list2 == 1);
        case 3:
            return Require(def.ltCnt == 1 && list == 1 && list2 == 0);
        case 6:
        case 8:
            return Require(def.ltCnt >= 0 && list == n && list2 == n);
        case 7:
            return Require(list == 1 && list2 == 1 && def.ltCnt == def.ltList2[0]);
        default:
            Require(false);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvane;
    static CDigMem store;
    if (!store.InitDone()) store.Init();
    OneFile files(data, size);
    const std::int32_t told = ReadLineTypeData(store, files, "");

    Require(static_cast<std::size_t>(told) == store.lineTypes.size());
    // The shortest record is "SYS,0,a" and the end of its line.
    Require(store.lineTypes.size() <= size / 8 + 1);
    for (const LineTypeDef& def : store.lineTypes) {
        CheckLists(def);
        Require(def.ltAngle - def.ltAngle == 0);
    }
    return 0;
}
