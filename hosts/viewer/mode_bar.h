// The tool bar that says what a click in the map means: the run modes, and for new data the layer that it goes to.
#pragma once

#include <QActionGroup>
#include <QComboBox>
#include <QMenu>
#include <QToolBar>

#include "hosts/viewer/edit_history.h"

namespace orvane {

class ModeBar : public QToolBar {
    Q_OBJECT

public:
    /// Both must outlive the bar.
    ModeBar(OrvaneWidget& map, EditHistory& history, QWidget* parent);

    /// Offers the layers of the map as it is now.
    void ShowLayers();
    /// The layer that new features go to.
    void ChooseLayer(const std::string& code, std::int32_t meshNo);
    /// Edit tools are of no use in a frame that the map did not come in.
    void LetEdit(bool on);
    /// The modes as a menu that works without the mouse.
    void FillMenu(QMenu& menu);
    /// Shows the mode that the control is in; a tool ends by itself, and another map begins in the first one.
    void Sync();
    /// A figure or text was made: the next one is begun where the operator wants many.
    void DrawNext();
    /// Opens the list of layers for the keyboard.
    void OpenLayerList();

signals:
    /// The operator wants to put a text into a block of a text layer, which the control has no tool for.
    void TextAskedFor(const orvane::ItemKey& block);
    /// Why nothing happens.
    void Said(const QString& words);

private:
    void AddMode(const QString& text, const QString& hint, const QKeySequence& key, int runMode);
    void Choose(int runMode);
    void Draw();
    /// Why nothing can be drawn in a block, or an empty text.
    QString WhatIsInTheWay(const ItemKey& block) const;
    void AddKeepDrawing();
    /// After a click of a tool at a pixel of the map: says why the feature that it met was not taken up, or why it met none.
    void TellRefusal(Point at);
    void TellMiss(Point at);

    OrvaneWidget& map_;
    EditHistory& history_;
    bool mayEdit_ = true;
    bool toolWorked_ = false;  ///< since the last click, and a tool that is done with its feature has met it
    QActionGroup* modes_;
    QComboBox* layers_;
    QAction* keepDrawing_;
};

}  // namespace orvane
