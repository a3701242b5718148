// The surface as a whole: all of it is there, under its names and numbers.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "control/automation/table.h"
#include "tests/control/automation_expected.h"

namespace orvane {
namespace {

std::vector<const Member*> AllMembers() {
    std::vector<const Member*> all;
    for (const Member& member : Surface().Properties()) all.push_back(&member);
    for (const Member& member : Surface().Methods()) all.push_back(&member);
    return all;
}

std::string ArgText(const Member& member) {
    std::string text;
    for (const Arg& arg : member.args) text += (text.empty() ? "" : ", ") + arg.type.name + " " + arg.name;
    return text;
}

TEST(Surface, EveryRowIsReadable) {
    for (const std::string& problem : Surface().Problems()) ADD_FAILURE() << problem;
}

TEST(Surface, Holds24Properties219Methods14EventsAnd11Enumerations) {
    EXPECT_EQ(Surface().Properties().size(), 24u);
    EXPECT_EQ(Surface().Methods().size(), 219u);
    EXPECT_EQ(Surface().Events().size(), 14u);
    EXPECT_EQ(Surface().Enums().size(), 11u);
}

TEST(Surface, DispidsAndNamesAreUniqueWithinTheirInterface) {
    std::set<std::int32_t> dispids;
    std::set<std::string> names;
    for (const Member* member : AllMembers()) {
        EXPECT_TRUE(dispids.insert(member->dispid).second) << member->name;
        EXPECT_TRUE(names.insert(member->name).second) << member->name;
    }
    std::set<std::int32_t> eventIds;
    for (const Member& event : Surface().Events()) EXPECT_TRUE(eventIds.insert(event.dispid).second) << event.name;
}

TEST(Surface, EveryMethodStandsUnderItsNamesAndDispidsAndTwinsKnowEachOther) {
    std::size_t count = 0;
    for (const expected::Pair& pair : expected::kMethods) {
        const Member* older = Surface().Find(pair.older);
        ASSERT_NE(older, nullptr) << pair.older;
        EXPECT_EQ(older->name, pair.older);
        EXPECT_EQ(older->kind, MemberKind::Method) << pair.older;
        EXPECT_EQ(older->dispid, pair.olderDispid) << pair.older;
        EXPECT_EQ(Surface().Find(pair.olderDispid), older) << pair.older;
        EXPECT_EQ(older->twin, pair.newer == nullptr ? "" : pair.newer) << pair.older;
        EXPECT_FALSE(older->newer) << pair.older;
        ++count;
        if (pair.newer == nullptr) continue;
        const Member* newer = Surface().Find(pair.newer);
        ASSERT_NE(newer, nullptr) << pair.newer;
        EXPECT_EQ(newer->name, pair.newer);
        EXPECT_EQ(newer->dispid, pair.newerDispid) << pair.newer;
        EXPECT_EQ(Surface().Find(pair.newerDispid), newer) << pair.newer;
        EXPECT_EQ(newer->twin, pair.older) << pair.newer;
        EXPECT_TRUE(newer->newer) << pair.newer;
        ++count;
    }
    EXPECT_EQ(count, Surface().Methods().size());
}

TEST(Surface, EveryPropertyStandsUnderItsNameDispidAndType) {
    std::size_t count = 0;
    for (const expected::Property& property : expected::kProperties) {
        const Member* member = Surface().Find(property.name);
        ASSERT_NE(member, nullptr) << property.name;
        EXPECT_EQ(member->kind, MemberKind::Property) << property.name;
        EXPECT_EQ(member->dispid, property.dispid) << property.name;
        EXPECT_EQ(member->result.name, property.type) << property.name;
        EXPECT_TRUE(member->args.empty()) << property.name;
        EXPECT_NE(member->worker, nullptr) << property.name;
        EXPECT_EQ(member->readOnly, property.name == std::string_view("GetDC")) << property.name;
        ++count;
    }
    EXPECT_EQ(count, Surface().Properties().size());
}

TEST(Surface, EveryEventStandsUnderItsNameDispidAndArguments) {
    std::size_t count = 0;
    for (const expected::Event& event : expected::kEvents) {
        const Member* member = Surface().FindEvent(event.name);
        ASSERT_NE(member, nullptr) << event.name;
        EXPECT_EQ(member->dispid, event.dispid) << event.name;
        EXPECT_EQ(Surface().FindEvent(event.dispid), member) << event.name;
        EXPECT_EQ(ArgText(*member), event.args) << event.name;
        ++count;
    }
    EXPECT_EQ(count, Surface().Events().size());
}

TEST(Surface, EveryEnumeratorHasItsValueOddSpellingsIncluded) {
    std::map<std::string, std::size_t> counts;
    for (const expected::EnumValue& value : expected::kEnumValues) {
        const EnumRow* row = Surface().FindEnum(value.type);
        ASSERT_NE(row, nullptr) << value.type;
        bool found = false;
        for (const EnumValueRow& entry : row->values)
            found |= entry.name == std::string_view(value.name) && entry.value == value.value;
        EXPECT_TRUE(found) << value.type << " " << value.name;
        ++counts[value.type];
    }
    EXPECT_EQ(counts.size(), Surface().Enums().size());
    for (const EnumRow& row : Surface().Enums()) EXPECT_EQ(row.values.size(), counts[row.name]) << row.name;
}

TEST(Surface, TheTwoParameterisedPropertiesStandAmongTheMethodsAndAreMarked) {
    std::set<std::string> indexed;
    for (const Member& member : Surface().Methods()) {
        if (member.indexed) indexed.insert(member.name);
    }
    EXPECT_EQ(indexed, (std::set<std::string>{"OrgDataActive", "OrvOrgDataActive"}));
}

TEST(Surface, EveryEntryHasOneShortLineOfHelp) {
    const auto check = [](const std::string& name, std::string_view help) {
        EXPECT_GT(help.size(), 8u) << name;
        EXPECT_LT(help.size(), 120u) << name;
        EXPECT_EQ(help.find('\n'), std::string_view::npos) << name;
        EXPECT_TRUE(help.ends_with('.')) << name;
    };
    for (const Member* member : AllMembers()) check(member->name, member->help);
    for (const Member& event : Surface().Events()) check(event.name, event.help);
    for (const EnumRow& row : Surface().Enums()) check(row.name, row.help == nullptr ? "" : row.help);
}

TEST(Surface, LooksNamesUpWithoutRegardToCase) {
    const Member* member = Surface().Find("OrvAddDat");
    ASSERT_NE(member, nullptr);
    EXPECT_EQ(Surface().Find("orvadddat"), member);
    EXPECT_EQ(Surface().Find("ORVADDDAT"), member);
    EXPECT_EQ(Surface().Find("OrvAddDat "), nullptr);
    EXPECT_EQ(Surface().Find(""), nullptr);
    EXPECT_EQ(Surface().Find(std::string(100000, 'x')), nullptr);
    EXPECT_EQ(Surface().Find(9999), nullptr);
    EXPECT_EQ(Surface().FindEvent("onzoomchange"), Surface().FindEvent(1));
}

TEST(Surface, KeepsMembersAndEventsApart) {
    EXPECT_EQ(Surface().Find("OnZoomChange"), nullptr);
    EXPECT_EQ(Surface().FindEvent("Zoom"), nullptr);
    EXPECT_EQ(Surface().Find(1)->name, "ExecRun");
    EXPECT_EQ(Surface().FindEvent(1)->name, "OnZoomChange");
}

TEST(Surface, NewerTwinsAnswerNothingWhereTheOlderAnswerCarriesNoInformation) {
    for (const char* name : {"OrvReDraw", "OrvUserDcDraw", "OrvUserDcDrawEx", "OrvMapJumpToXY", "OrvScrl", "OrvMapJumpToData",
                             "OrvSetLayDspMode", "OrvMoveOnOrgPnt", "OrvMoveOffOrgPnt", "OrvSetOrgTopDrawID"}) {
        EXPECT_EQ(Surface().Find(name)->result.kind, ValueKind::None) << name;
    }
}

}  // namespace
}  // namespace orvane
