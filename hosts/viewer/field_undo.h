// Undo and redo in the fields of a form: they are the field's own while it has something entered, and else the map's.
#pragma once

#include <QWidget>
#include <functional>

namespace orvane {

/// Hands the keys of undo and redo on to the window's actions where a line or number of `form`, as it is built now, has nothing
/// half typed and `hasEntered` does not know of anything in it.
void LetMapUndo(QWidget& form, std::function<bool(const QWidget& field)> hasEntered);

}  // namespace orvane
