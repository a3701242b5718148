// The description of the type library that is kept for the cross compilers, beside the table that it is made from.
#include "hosts/ocx/idl/idl_text.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>

#include "hosts/ocx/guids.h"

namespace orvane {
namespace {

TEST(IdlText, is_what_the_kept_file_says) {
    std::ifstream file(ORVANE_IDL);
    const std::string kept((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    EXPECT_EQ(kept, IdlText(Surface())) << "run tools/make_idl";
}

TEST(IdlText, writes_an_indexed_property_with_its_value_last) {
    const std::string text = IdlText(Surface());
    EXPECT_NE(text.find("[id(240), propget, bindable,"), std::string::npos);
    EXPECT_NE(text.find("void OrgDataActive([in] long ID, [in] VARIANT_BOOL newValue);"), std::string::npos);
    EXPECT_EQ(text.find("void GetDC("), std::string::npos) << "a read-only property has no write";
}

TEST(IdlText, every_enumeration_has_an_identity_and_no_two_are_alike) {
    std::set<std::string> seen{kLibraryGuid, kControlGuid, kMembersGuid, kEventsGuid, kPropertyPageGuid};
    EXPECT_EQ(seen.size(), 5U);
    for (const EnumGuid& each : kEnumGuids) {
        EXPECT_TRUE(seen.insert(each.guid).second) << each.name;
        EXPECT_NE(Surface().FindEnum(each.name), nullptr) << each.name;
    }
    EXPECT_EQ(std::size(kEnumGuids), Surface().Enums().size());
}

}  // namespace
}  // namespace orvane
