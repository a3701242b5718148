#include "hosts/viewer/place_label.h"

#include <QEvent>
#include <cmath>

#include "control/ctrl.h"
#include "hosts/common/coordinate_forms.h"
#include "hosts/common/map_view.h"

namespace orvane {

namespace {

/// Wide enough for both frames of any map of Japan, until the limits follow the data again.
constexpr double kAnywhere = 1e7;  // map units

/// Whether the items of most blocks lie in the sheet whose number the block has.
bool LiesInSheets(const CDigMem& store) {
    int inSheet = 0;
    int blocks = 0;
    for (std::int32_t i = 0; i < store.BlockCnt(); ++i) {
        const DigBlock& block = store.Block(i);
        if (block.blkState == kFreeBlock || block.datCnt == 0) continue;
        ++blocks;
        const MeshPoint middle{block.GX + (block.minX + block.maxX) / 2.0, block.GY + (block.minY + block.maxY) / 2.0};
        const std::optional<MeshPlace> place = SheetAt(middle);
        inSheet += place && place->mesh == block.meshNo;
    }
    return blocks > 0 && 2 * inSheet > blocks;
}

/// Degrees, minutes and seconds to a tenth, rounded as one number.
QString DmsText(double degrees, QChar positive, QChar negative) {
    const auto tenths = static_cast<qint64>(std::llround(std::fabs(degrees) * 36000));
    return QStringLiteral("%1 %2°%3′%4.%5″")
        .arg(degrees < 0 ? negative : positive)
        .arg(tenths / 36000)
        .arg(tenths / 600 % 60, 2, 10, QChar('0'))
        .arg(tenths / 10 % 60, 2, 10, QChar('0'))
        .arg(tenths % 10);
}

QString Whole(double v) { return QString::number(v, 'f', 1); }

QString ZoneText(const PlaneXY& plane, int zone) {
    return PlaceLabel::tr("zone %1: X (north) %2 Y (east) %3").arg(zone).arg(Whole(plane.x), Whole(plane.y));
}

QString MeshText(const MeshPoint& point) {
    const std::optional<MeshPlace> place = SheetAt(point);
    if (!place) return {};
    return PlaceLabel::tr("mesh %1 (%2, %3)").arg(place->mesh, 6, 10, QChar('0')).arg(Whole(place->localX), Whole(place->localY));
}

QString DegText(const GeoDeg& geo) { return DmsText(geo.latitude, 'N', 'S') + ' ' + DmsText(geo.longitude, 'E', 'W'); }

}  // namespace

PlaceLabel::PlaceLabel(OrvaneWidget& map) : map_(map) {
    setTextFormat(Qt::PlainText);
    setToolTip(tr("The place under the cursor; angles are on the Bessel ellipsoid"));
    connect(&map_, &OrvaneWidget::MouseMove, this, [this](short, short, int x, int y) {
        cursor_px_ = QPoint(x, y);
        ShowPlace();
    });
    map_.installEventFilter(this);
}

void PlaceLabel::TakeMap(int zone) {
    zone_ = zone;
    left_ = reached_ = {};
    meshMap_ = zone == 0 && LiesInSheets(map_.Control().store);
}

int PlaceLabel::ZoneNow() const {
    const COrvane4Ctrl& ctrl = map_.Control();
    return meshMap_ ? ctrl.frameZone : zone_;
}

PlaceLabel::View PlaceLabel::ViewNow() const {
    COrvane4Ctrl& ctrl = map_.Control();
    const Rect client = ctrl.window().ClientRect();
    return {ZoneNow(),
            {ctrl.ScreenToWorldX((client.right - client.left) / 2.0), ctrl.ScreenToWorldY((client.bottom - client.top) / 2.0)}};
}

std::optional<QPointF> PlaceLabel::MiddleIn(const View& view, int zone) const {
    std::optional<MeshPoint> mesh = MeshPoint{view.middle.x(), view.middle.y()};
    if (view.zone != 0) mesh = PlaneToMeshPoint({view.middle.y(), view.middle.x()}, view.zone);
    if (!mesh) return std::nullopt;
    if (zone == 0) return QPointF(mesh->x, mesh->y);
    const std::optional<PlaneXY> plane = MeshPointToPlane(*mesh, zone);
    if (!plane) return std::nullopt;
    return QPointF(plane->y, plane->x);
}

void PlaceLabel::ShowPlace() {
    if (!cursor_px_) return;
    const COrvane4Ctrl& ctrl = map_.Control();
    setText(PlaceText(ctrl.ScreenToWorldX(cursor_px_->x()), ctrl.ScreenToWorldY(cursor_px_->y())));
}

// Keys move the map under a cursor that rests; whatever moved it, it is painted.
bool PlaceLabel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint) QMetaObject::invokeMethod(this, &PlaceLabel::ShowPlace, Qt::QueuedConnection);
    return QLabel::eventFilter(watched, event);
}

QString PlaceLabel::PlaceText(double mapX, double mapY) const {
    const int zone = ZoneNow();
    QStringList parts;
    if (!meshMap_) {
        // Plane metres of today's datum: the ellipsoid of the mesh frame is another one, so no angles are told.
        if (zone != 0) return ZoneText({mapY, mapX}, zone);
        return tr("X (east) %1 Y (north) %2").arg(Whole(mapX), Whole(mapY));
    }
    if (zone == 0) {
        const MeshPoint point{mapX, mapY};
        parts << MeshText(point);
        if (const std::optional<GeoDeg> geo = MeshToDeg(point)) parts << DegText(*geo);
    } else {
        const PlaneXY plane{mapY, mapX};
        parts << ZoneText(plane, zone);
        if (const std::optional<GeoDeg> geo = PlaneToDeg(plane, zone)) {
            parts << DegText(*geo);
            if (const std::optional<MeshPoint> point = DegToMesh(*geo)) parts << MeshText(*point);
        }
    }
    parts.removeAll(QString());
    return parts.join("   ");
}

void PlaceLabel::FillMenu(QMenu& menu) {
    QMenu& frames = *menu.addMenu(tr("Fra&me"));
    frames.addAction(tr("&Mesh frame"), this, [this] { ChangeFrame(0); });
    for (int zone = kFirstZone; zone <= kLastZone; ++zone) {
        frames.addAction(tr("Plane zone %1").arg(zone), this, [this, zone] { ChangeFrame(zone); });
    }
    // Only what came in the mesh frame can change; the menu shows which frame it is in now.
    connect(&frames, &QMenu::aboutToShow, this, [this, &frames] {
        const int now = ZoneNow();
        for (qsizetype i = 0; i < frames.actions().size(); ++i) {
            QAction* action = frames.actions()[i];
            action->setEnabled(meshMap_);
            action->setCheckable(true);
            action->setChecked(meshMap_ && i == now);
        }
    });
}

void PlaceLabel::ChangeFrame(int zone) {
    if (!meshMap_ || zone == ZoneNow()) return;
    emit FrameChanging();
    const View before = ViewNow();
    // The jump at the end of a change asks the limits of the frame that it goes to.
    const auto allow = [this] {
        map_.SetAreaLeft(-kAnywhere);
        map_.SetAreaTop(-kAnywhere);
        map_.SetAreaRight(kAnywhere);
        map_.SetAreaBottom(kAnywhere);
    };
    allow();
    const bool drawn = map_.MapDraw();
    map_.SetMapDraw(false);  // until the middle is where it belongs
    // Another zone is reached through the mesh frame only.
    if (map_.Control().frameMode != 0) map_.Call("OrvChgGeoFrame", {0, 0});
    if (zone != 0) map_.Call("OrvChgGeoFrame", {1, zone});
    MapView(map_.Control()).SetSquareArea();
    // The control keeps the middle to a pixel or so, and reckons with a corner: after some changes the map would have moved.
    const double pixel = map_.Control().ScreenToWorldX(1) - map_.Control().ScreenToWorldX(0);
    const QPointF moved = before.middle - reached_.middle;
    const bool isBack = before.zone == reached_.zone && zone == left_.zone && moved.manhattanLength() < pixel;
    const std::optional<QPointF> middle = isBack ? left_.middle : MiddleIn(before, zone);
    map_.SetMapDraw(drawn);
    middle ? map_.Call("OrvMapJumpToXY", {middle->x(), middle->y()}) : map_.Call("OrvReDraw");
    left_ = before;
    reached_ = ViewNow();
    ShowPlace();
    emit FrameChanged();
}

}  // namespace orvane
