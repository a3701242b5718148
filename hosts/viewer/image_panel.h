// Images behind or over the map: added, ordered, shown, and placed by two points that are picked in the image and on the map.
#pragma once

#include <QComboBox>
#include <QDialog>
#include <QDockWidget>
#include <QListWidget>
#include <QPointF>
#include <QPointer>
#include <array>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "hosts/viewer/edit_history.h"
#include "hosts/viewer/shape_tool.h"
#include "raster/raster_server.h"

namespace orvane {

/// A pixel of an image, y downward, and the map place of its middle, y to the north.
struct ImagePoint {
    QPoint pixel;
    QPointF place;
};

class ImagePanel : public QDockWidget {
    Q_OBJECT

public:
    /// All must outlive the panel. What is done to images is a step of the history.
    ImagePanel(OrvaneWidget& map, EditHistory& history, ShapeTool& shapes, QWidget* parent);

    /// Images are read by the servers that `make` makes, and the panel hears what becomes of them.
    void ReadWith(RasterServerMaker make);
    /// The images that are to be seen and that the last frame or page does not show, a line with the reason each.
    QStringList LeftOut() const;
    /// Another map: its images are gone, and the level is what an init left.
    void Forget();
    void AskAdd();
    /// Puts an image over those that are there. Empty, or why it cannot be shown.
    QString Add(const QString& path);
    void Remove(int row);
    /// A later image lies over an earlier one; the list has the topmost first.
    void Move(int row, bool up);
    void SetShown(int row, bool shown);
    void SetOnTop(bool onTop);
    /// Places an image by two points; false when they say nothing, as one pixel or one place twice.
    bool Place(int row, const std::array<ImagePoint, 2>& points);
    /// Shows the image to pick pixels in, and asks for the places on the map. (image_placing.cpp)
    void AskPlace();
    QListWidget& List() { return *list_; }
    QComboBox& Level() { return *level_; }

signals:
    /// What the operator should know of an image.
    void Said(const QString& words);

private:
    struct Image {
        int id = 0;  ///< its own for good, whatever place it moves to
        QString path;
        bool shown = true;
        bool loaded = false;
        std::optional<std::array<ImagePoint, 2>> points;
    };
    struct State {
        std::vector<Image> images;
        bool onTop = false;
    };
    /// What its server told of an image.
    struct Sight {
        bool placed = true;
        QString undrawn;  ///< why the last draw left it out; empty when it did not
    };
    class ImageStep;
    State Now() const { return {images_, level_->currentIndex() == 1}; }
    void Restore(const State& state);
    /// Remembers what was done since `before` as one step.
    void Remember(const QString& text, State before);
    std::size_t SlotOf(int row) const { return images_.size() - 1 - static_cast<std::size_t>(row); }
    bool IsRow(int row) const { return row >= 0 && static_cast<std::size_t>(row) < images_.size(); }
    /// The row of an image, or -1 when it is gone.
    int RowOf(int id) const;
    /// Makes the control's table anew, as its slots cannot change places. What cannot be read now keeps its place in the list.
    /// False when the operator cancelled, which can be only between two images: the rest is not loaded then.
    bool LoadAll(bool canCancel = false);
    void StopPlacing();
    void ShowList(int current);
    /// The name of an image, with what keeps it from being seen.
    QString RowText(const Image& image) const;
    void NoteDrawn(int id, bool drawn);
    void ShowSights();

    OrvaneWidget& map_;
    EditHistory& history_;
    ShapeTool& shapes_;
    std::vector<Image> images_;    ///< by slot: the last is drawn last
    std::map<int, Sight> sights_;  ///< by the image's own number; gone with the table that they were of
    std::set<int> told_;           ///< of those of which was told that they are not drawn, for as long as the map is open
    int loading_ = 0;              ///< the image that a server is made for
    bool lacksLibrary_ = false;    ///< the last image found no server
    bool sightsChanged_ = false;
    int lastId_ = 0;
    QPointer<QDialog> placing_;
    QListWidget* list_;
    QComboBox* level_;
    bool filling_ = false;
};

}  // namespace orvane
