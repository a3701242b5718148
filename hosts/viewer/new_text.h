// A new text in a text layer. The control has no tool for it: the host asks for the place and for the words.
#pragma once

#include <functional>

#include "hosts/viewer/edit_history.h"
#include "hosts/viewer/shape_tool.h"

namespace orvane {

/// Takes a click on the map, asks for the text and puts it there as one step of the history. `block` names layer and group;
/// `made` is called when the text is there.
void AskNewText(OrvaneWidget& map, ShapeTool& shapes, EditHistory& history, const ItemKey& block, std::function<void()> made);

/// Puts a text at a map place, y to the north. False when the block is gone or the map cannot hold the text.
bool PutText(OrvaneWidget& map, EditHistory& history, const ItemKey& block, QPointF place, const QString& words);

/// That words have a character without bytes in code page 932, and what to do.
QString CannotHoldWords();

}  // namespace orvane
