#include "foreign/export_names.h"

#include <gtest/gtest.h>

#include <string>

namespace orvane {
namespace {

TEST(ExportNames, ANameThatHarmsNobodyStaysAsItIs) {
    ExportNames names;
    EXPECT_EQ(names.Make("道路 1-2"), "道路 1-2");
}

TEST(ExportNames, NamesThatDifferInTheCaseOfLettersOnlyAreToldApart) {
    ExportNames names;
    EXPECT_EQ(names.Make("ABC"), "ABC");
    EXPECT_EQ(names.Make("abc"), "abc~2");
    EXPECT_EQ(names.Make("Abc"), "Abc~3");
}

TEST(ExportNames, ANumberedNameThatIsTakenIsPassedOver) {
    ExportNames names;
    EXPECT_EQ(names.Make("a~2"), "a~2");
    EXPECT_EQ(names.Make("a"), "a");
    EXPECT_EQ(names.Make("a"), "a~3");
}

TEST(ExportNames, NoNameLeadsOutOfItsFolder) {
    ExportNames names;
    EXPECT_EQ(names.Make("../../etc/x"), "_._.._etc_x");
    EXPECT_EQ(names.Make(".."), "__");
    EXPECT_EQ(names.Make("C:\\x"), "C__x");
    EXPECT_EQ(names.Make(std::string("a\0b\n", 4)), "a_b_");
    EXPECT_EQ(names.Make(""), "_");
}

TEST(ExportNames, NamesThatASystemKeepsForItselfAreAvoided) {
    ExportNames names;
    EXPECT_EQ(names.Make("CON"), "_CON");
    EXPECT_EQ(names.Make("lpt1.x"), "_lpt1.x");
    EXPECT_EQ(names.Make("gpkg_contents"), "_gpkg_contents");
    EXPECT_EQ(names.Make("contents"), "contents");
}

TEST(ExportNames, TenThousandLayersOfOneNameAreQuick) {
    ExportNames names;
    for (int i = 1; i < 10000; ++i) names.Make("x");
    EXPECT_EQ(names.Make("x"), "x~10000");
}

}  // namespace
}  // namespace orvane
