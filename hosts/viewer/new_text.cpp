#include "hosts/viewer/new_text.h"

#include <QCoreApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <utility>

#include "control/ctrl.h"
#include "platform/cp932.h"

namespace orvane {

bool PutText(OrvaneWidget& map, EditHistory& history, const ItemKey& block, QPointF place, const QString& words) {
    CDigMem& store = map.Control().store;
    const std::int32_t pos = store.FindBlock(block.code, block.meshNo).block;
    const std::optional<std::string> bytes = EncodeCp932(words.toStdString());
    if (pos < 0 || !bytes || bytes->empty()) return false;
    const DigBlock& data = store.Block(pos);
    bool found = false;
    ItemCopy item;
    item.datID = store.FreeDigDatID(block.code, block.meshNo, found);
    TextCopy text;
    text.x = place.x() - data.GX;
    text.y = place.y() - data.GY;
    text.text = *bytes;
    item.pnts.push_back({text.x, text.y, 0});  // what the search for features in view goes by
    item.text = text;
    history.Change(QCoreApplication::translate("NewText", "a new text"),
                   {{block.code, block.meshNo, data.datCnt, std::nullopt, std::move(item)}});
    return true;
}

QString CannotHoldWords() {
    return QCoreApplication::translate(
        "NewText", "The text has a character that maps cannot hold (code page 932). Write it in another way.");
}

void AskNewText(OrvaneWidget& map, ShapeTool& shapes, EditHistory& history, const ItemKey& block, std::function<void()> made) {
    constexpr int kPoint = 1;
    shapes.Start(kPoint, [&map, &history, block, made = std::move(made)](const std::vector<QPointF>& points) {
        if (points.empty()) return;
        QWidget* window = map.window();
        const QString words = QInputDialog::getText(window, QCoreApplication::translate("NewText", "New text"),
                                                    QCoreApplication::translate("NewText", "Text"));
        if (words.isEmpty()) return;
        if (PutText(map, history, block, points.front(), words)) return made();
        QMessageBox::warning(window, "ORVANE4", CannotHoldWords());
    });
}

}  // namespace orvane
