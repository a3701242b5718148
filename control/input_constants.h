// Numbers that cross the window and the event interface: message flags, keys, run modes, event dispids.
#pragma once

#include <cstdint>

namespace orvane {

/// Bits of a mouse message's flag word.
inline constexpr std::uint32_t kMkLButton = 1;
inline constexpr std::uint32_t kMkRButton = 2;
inline constexpr std::uint32_t kMkShift = 4;
inline constexpr std::uint32_t kMkControl = 8;

/// Virtual key codes.
inline constexpr std::uint32_t kVkEscape = 27;
inline constexpr std::uint32_t kVkDelete = 46;

/// What a click means: the values of the property RunMode. A host may write any number.
inline constexpr std::int16_t kRunNormal = 0;
inline constexpr std::int16_t kRunPan = 10;
inline constexpr std::int16_t kRunFigureNear = 50;   ///< overlay figures: Shift and Ctrl+Shift clicks
inline constexpr std::int16_t kRunFigureClick = 51;  ///< plain clicks as well
inline constexpr std::int16_t kRunAddEdit = 100;     ///< asked for in DigDatEditor, which turns it into the next
inline constexpr std::int16_t kRunAddCollect = 101;
inline constexpr std::int16_t kRunEditPntMove = 200;
inline constexpr std::int16_t kRunEditPntAdd = 210;
inline constexpr std::int16_t kRunEditPntDel = 220;
inline constexpr std::int16_t kRunMoveDat = 250;
inline constexpr std::int16_t kRunCopyDat = 260;
inline constexpr std::int16_t kRunDeleteDat = 300;
/// The modes in which a click or a move belongs to an edit tool.
constexpr bool IsToolMode(std::int32_t runMode) {
    return runMode == kRunAddCollect || runMode == kRunEditPntMove || runMode == kRunEditPntAdd || runMode == kRunEditPntDel ||
           runMode == kRunMoveDat || runMode == kRunCopyDat || runMode == kRunDeleteDat;
}
constexpr bool IsFigureMode(std::int16_t runMode) { return runMode == kRunFigureNear || runMode == kRunFigureClick; }
/// Not a run mode: the edit type that OnEditorEnd reports for a tool that ended without a change.
inline constexpr std::int32_t kEditCancelled = 999;

/// The value of the property ScrollMode that lets the right button scroll.
inline constexpr std::int16_t kScrollOn = 10;

/// The control's timers.
inline constexpr std::int32_t kScrollTimer = 1;
inline constexpr std::int32_t kHintTimer = 2;
inline constexpr std::int32_t kRectTimer = 3;
inline constexpr std::int32_t kPanTimer = 11;

/// Dispids of the events that the control fires, as the event interface numbers them.
inline constexpr std::int32_t kOnZoomChange = 1;
inline constexpr std::int32_t kOnOrgDataClick = 3;
inline constexpr std::int32_t kOnOrgNearPtClick = 4;
inline constexpr std::int32_t kOnOrgPointClick = 5;
inline constexpr std::int32_t kOnHintStart = 6;
inline constexpr std::int32_t kOnDataClick = 7;
inline constexpr std::int32_t kOnNearPtClick = 8;
inline constexpr std::int32_t kOnDataDblClick = 9;
inline constexpr std::int32_t kOnEditorEnd = 10;
inline constexpr std::int32_t kOnEditorStart = 11;
inline constexpr std::int32_t kMouseDown = -605;
inline constexpr std::int32_t kMouseMove = -606;
inline constexpr std::int32_t kMouseUp = -607;

}  // namespace orvane
