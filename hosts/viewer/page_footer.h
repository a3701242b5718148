// What stands below the map of a page: its name and scale, whose data it is, the day, and a bar of the scale.
#pragma once

#include <QPainter>
#include <QString>

namespace orvane {

/// A round length on the ground and how long it is on paper.
struct BarLength {
    double ground_m = 0;
    double paper_mm = 0;
};

/// The longest of 1, 2, 5, 10, 20, ... metres and their decimal parts that takes no more than `most_mm` at 1:`zoom`, both above
/// 0.
BarLength BarLengthAt(int zoom, double most_mm);

/// Laid out in lengths of paper, so that it has the same lines at every resolution.
class PageFooter {
public:
    /// `left` and `right` stand on one line where both have room, else one below the other in as many lines as they need.
    /// `barZoom`: the scale denominator of the bar below them, 0 for none.
    PageFooter(QString left, QString right, double width_mm, int barZoom);

    /// With the gap to the map.
    int Height_mm() const { return height_mm_; }
    /// The painter's origin is the left end of the map's lower edge and its unit a pixel at `dpi`. What has no room in
    /// `height_mm` is left out.
    void Paint(QPainter& painter, int dpi, double height_mm) const;

private:
    QString left_;
    QString right_;
    double width_mm_;
    int barZoom_;
    bool isOneLine_ = true;
    double leftHeight_ = 0;   ///< units of the layout
    double rightHeight_ = 0;  ///< the same
    int height_mm_ = 0;
};

}  // namespace orvane
