// The identities of the control on Windows. They were drawn once and never change: hosts keep them in their forms and registries.
#pragma once

#include <string_view>

namespace orvane {

inline constexpr char kLibraryGuid[] = "16BED892-5516-420C-95E4-2F73B1F49B85";
inline constexpr char kControlGuid[] = "B02ED961-796E-4DA6-8EB1-9383F66C9634";
inline constexpr char kMembersGuid[] = "198D0831-C7FB-4CEA-8645-27540B41313E";  // dispatch interface
inline constexpr char kEventsGuid[] = "E0E73249-841E-42BB-94EE-6F5CBE059DBD";   // event interface
inline constexpr char kPropertyPageGuid[] = "107F6B73-F3B2-4C9C-ACBF-03D0AB2E9BC8";

struct EnumGuid {
    std::string_view name;
    const char* guid;
};
inline constexpr EnumGuid kEnumGuids[] = {
    {"T_OrvMode1", "5118F260-ED77-4F11-8C0B-D4A71330DDC7"},        {"T_OrvFillMode", "10021A31-E78A-41D6-9AA5-86DB21B5D255"},
    {"T_OrvLType", "9575B97A-FB33-4A13-A92E-2C3E8E6B3B9C"},        {"T_OrvRunMode", "801AD070-9CC1-4CFF-A038-C9BFF4620981"},
    {"T_OrvScrMode", "D93A3B49-C339-41BF-A766-8DA6BDD27240"},      {"T_OrvActPntType", "36B043BB-E582-4CC2-9BDF-CBC21282A6E6"},
    {"T_OrvRectZoomMode", "49874378-E691-450F-885F-183FF0B5F6F7"}, {"T_OrvWheelZoomMode", "A9C6240B-E115-4B8E-BEFD-BE6001F7271C"},
    {"T_SymbolPos", "8F31DB66-FFEE-4414-8447-497D7FC35403"},       {"T_StringPos", "DFE93F5F-5A8F-44DC-A46D-3237AF6BC831"},
    {"T_ChkOperater", "9761194D-0F55-4B9D-AB7E-E347CDFB9C52"},
};

inline constexpr char kProgId[] = "ORVANE4.Orvane4Ctrl.1";
inline constexpr char kProgIdAnyVersion[] = "ORVANE4.Orvane4Ctrl";
inline constexpr char kLibraryName[] = "ORVANE4Lib";
inline constexpr char kControlTitle[] = "Orvane4 Control";

}  // namespace orvane
