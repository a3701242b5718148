// Which keys of the menus are the map's alone.
#pragma once

#include <QAction>
#include <QWidget>

namespace orvane {

/// Letters, arrows and their like are the map's while it has the keyboard, because lists and fields need them themselves. An
/// action with such keys gets them there; keys with Ctrl or Alt, and those of the top row, stay the window's. To be called when
/// the action has its keys.
void LetMapHaveKeys(QWidget& map, QAction& action);

}  // namespace orvane
