#include "hosts/viewer/map_keys.h"

#include <algorithm>

namespace orvane {

namespace {

bool IsMapKey(const QKeySequence& keys) {
    const QKeyCombination first = keys[0];
    const bool isFunction = first.key() >= Qt::Key_F1 && first.key() <= Qt::Key_F35;
    return !keys.isEmpty() && !isFunction && (first.keyboardModifiers() & (Qt::CTRL | Qt::ALT | Qt::META)) == 0;
}

}  // namespace

void LetMapHaveKeys(QWidget& map, QAction& action) {
    const QList<QKeySequence> keys = action.shortcuts();
    if (!std::any_of(keys.begin(), keys.end(), IsMapKey)) return;
    action.setShortcutContext(Qt::WidgetWithChildrenShortcut);
    map.addAction(&action);
}

}  // namespace orvane
