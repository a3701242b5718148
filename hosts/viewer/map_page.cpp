#include "hosts/viewer/map_page.h"

#include <QGuiApplication>
#include <cmath>

#include "control/ctrl.h"
#include "platform/context_registry.h"
#include "platform/qt/page_context.h"
#include "platform/record/record_context.h"
#include "platform/record/replay.h"

namespace orvane {

namespace {

constexpr double kMmPerInch = 25.4;

int Pixels(int mm, int dpi) { return static_cast<int>(std::lround(mm / kMmPerInch * dpi)); }

DeviceNumbers NumbersOf(const PageSetup& setup) {
    DeviceNumbers numbers;
    numbers.technology = 2;  // a printer
    numbers.horzSize_mm = setup.map_mm.width();
    numbers.vertSize_mm = setup.map_mm.height();
    numbers.horzRes_px = Pixels(setup.map_mm.width(), setup.dpi);
    numbers.vertRes_px = Pixels(setup.map_mm.height(), setup.dpi);
    numbers.logPixelsX_dpi = numbers.logPixelsY_dpi = setup.dpi;
    return numbers;
}

std::shared_ptr<BitmapFiles> FilesOf(OrvaneWidget& map) { return std::make_shared<BitmapFiles>(map.Control().files()); }

}  // namespace

MapPage RecordPage(OrvaneWidget& map, const PageSetup& setup, const std::function<void()>& drawn) {
    MapPage page;
    page.numbers = NumbersOf(setup);
    const QSize size(page.numbers.horzRes_px, page.numbers.vertRes_px);
    if (std::int64_t{size.width()} * size.height() > QtContext::kMaxBitmapPixels) return page;
    page.picture = QImage(size, QImage::Format_RGB32);
    if (page.picture.isNull()) return page;
    page.picture.fill(Qt::white);
    page.verbs = std::make_shared<VerbList>();
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    {
        QtContext picture(page.picture, page.numbers);
        picture.SetBitmapFiles(FilesOf(map));
        RecordContext recorded(page.verbs, picture, "page");
        page.context = recorded.Number();
        const std::int32_t handle = RegisterContext(recorded);
        map.Call("OrvUserDcDrawEx",
                 {handle, 0, 0, size.height(), size.width(), setup.centre.x(), setup.centre.y(), setup.zoom, 0});
        UnregisterContext(handle);
        if (drawn) drawn();
    }
    QGuiApplication::restoreOverrideCursor();
    // What is drawn there counts as seen, and only what the screen shows may be picked.
    map.Call("OrvReDraw");
    return page;
}

int PaintPage(OrvaneWidget& map, const MapPage& page, QPainter& painter, const std::function<bool(double)>& progress) {
    if (page.IsEmpty()) return 0;
    QImage picture(page.picture.size(), QImage::Format_RGB32);
    if (picture.isNull()) return 0;
    picture.fill(Qt::white);
    PageContext context(painter, picture, page.numbers);
    context.SetBitmapFiles(FilesOf(map));
    ReplayTargets targets;
    targets.SetContext(page.context, context);
    constexpr std::size_t kTellEvery = 256;
    const std::size_t count = page.verbs->Size();
    for (std::size_t i = 0; i < count; ++i) {
        const bool tells = progress && i % kTellEvery == 0;
        if (tells && !progress(static_cast<double>(i) / static_cast<double>(count))) return -1;
        ReplayOne(*page.verbs, i, targets);
    }
    context.Finish();
    return context.PlacedImages();
}

}  // namespace orvane
