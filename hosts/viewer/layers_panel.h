// The layers of the map in a list, the topmost first, with their switches and their looks.
#pragma once

#include <QBoxLayout>
#include <QDockWidget>
#include <QMenu>
#include <QToolButton>
#include <QTreeWidget>
#include <optional>

#include "hosts/viewer/edit_history.h"
#include "hosts/viewer/look_editor.h"

namespace orvane {

class LayersPanel : public QDockWidget {
    Q_OBJECT

public:
    /// `map` and `history` must outlive the panel.
    LayersPanel(OrvaneWidget& map, EditHistory& history, QWidget* parent);

    /// A line of the list.
    struct Row {
        QByteArray code;
        std::optional<std::int32_t> subLayNo;  ///< none for the layer itself; a sub layer may have the number 0
        QString text;
        Rgb color = 0;
        bool shown = false;
        bool active = false;    ///< of layers only
        bool editable = false;  ///< of layers only
    };

    /// Shows the layers of the map as it is now; what was chosen stays chosen, what was closed closed, and the list where it was.
    void ShowLayers();
    /// Code of the layer that is chosen, empty when none is.
    std::string ChosenCode() const;
    void Choose(const std::string& code);
    QTreeWidget& List() { return *list_; }
    LookEditor& Looks() { return *looks_; }

    enum class Switch : std::uint8_t { Shown, Selectable, Editable };
    /// Whether the chosen layer or sub layer is shown, or its layer may be selected or edited. False without one.
    bool IsOn(Switch what) const;
    void Turn(Switch what);

    /// Moves the chosen layer one place to the top, or to the bottom.
    void Move(bool up);
    /// Asks for code and type of a new layer and makes it. (layer_dialogs.cpp)
    void AskNewLayer();
    /// False when the map has no room for it, or cannot hold the code.
    bool MakeLayer(const QString& code, std::int32_t layType, std::int32_t group);
    /// Asks for number and name of a sub layer of the chosen layer and makes it like the layer. (layer_dialogs.cpp)
    void AskNewSubLayer();
    /// False when the layer has that number or no room, or the map cannot hold the name.
    bool MakeSubLayer(std::int32_t subLayNo, const QString& name);
    /// Asks for another name of the chosen layer or sub layer. (layer_dialogs.cpp)
    void AskName();
    void Rename(const QString& name);
    /// Takes the chosen layer out of the map with all its data, or the chosen sub layer where no feature has it, as one step of
    /// the history.
    void RemoveLayer();
    void FillPresetMenu(QMenu& menu);

private:
    void MakeRows(const std::vector<Row>& rows);
    void OnSwitch(QTreeWidgetItem* item, int column);
    void Put(const LayerDef& layer, std::optional<std::int32_t> subLayNo, Switch what, bool on);
    void RemoveSubLayer(const LayerDef& layer, std::int32_t subLayNo);
    void OnChoice();
    void OnEdited(const LayerState& state);
    const LayerDef* ChosenLayer() const;
    /// None while the layer itself is chosen.
    std::optional<std::int32_t> ChosenSubLayer() const;
    /// Whether the chosen row is a sub layer that no call tells from its layer; the operator is told then.
    bool IsRefused();
    void TellOfNumber();
    void MakeButtons(QBoxLayout& row);

    OrvaneWidget& map_;
    EditHistory& history_;
    QTreeWidget* list_;
    LookEditor* looks_;
    bool filling_ = false;
};

}  // namespace orvane
