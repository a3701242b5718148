// Where the cursor is on the map, in the frames of survey practice, and the switch between two of them.
#pragma once

#include <QLabel>
#include <QMenu>
#include <QPoint>
#include <QPointF>
#include <optional>

#include "hosts/qt/orvane_widget.h"

namespace orvane {

class PlaceLabel : public QLabel {
    Q_OBJECT

public:
    /// `map` must outlive the label.
    explicit PlaceLabel(OrvaneWidget& map);

    /// Looks what frame the map is in after one was opened. `zone` is the plane zone that it was read into, 0 when nobody knows.
    void TakeMap(int zone);
    /// Fills the menu that puts a map in the mesh frame into a plane zone and back.
    void FillMenu(QMenu& menu);
    /// Puts a map that came in the mesh frame into a plane zone, 1 to 19, or back with 0, keeping its middle.
    void ChangeFrame(int zone);
    /// The text for a map point, y to the north.
    QString PlaceText(double mapX, double mapY) const;
    bool IsMeshMap() const { return meshMap_; }
    /// The zone that the coordinates of the map are in now, 0 for none or an unknown one.
    int ZoneNow() const;
    /// The plane zone that the map was made in, 0 for none or an unknown one.
    int HomeZone() const { return zone_; }
    /// Whether a map of sheets is looked at in a plane zone. What is edited there would not come back with the frame.
    bool IsAway() const { return meshMap_ && ZoneNow() != 0; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// Before a change: what the operator has in hand is in the coordinates of the frame that is left.
    void FrameChanging();
    void FrameChanged();

private:
    /// A frame, 0 or a zone, with the map place in the middle of the window.
    struct View {
        int zone = 0;
        QPointF middle;
    };
    View ViewNow() const;
    /// The place of a view in another frame.
    std::optional<QPointF> MiddleIn(const View& view, int zone) const;
    /// The place under the cursor, once it was over the map.
    void ShowPlace();

    OrvaneWidget& map_;
    bool meshMap_ = false;
    int zone_ = 0;
    View left_;                        ///< before the last change of the frame
    View reached_;                     ///< behind it
    std::optional<QPoint> cursor_px_;  ///< in the picture of the map
};

}  // namespace orvane
