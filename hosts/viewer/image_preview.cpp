#include "hosts/viewer/image_preview.h"

#include <algorithm>
#include <memory>
#include <optional>

#include "hosts/common/raster_library.h"
#include "hosts/viewer/host_words.h"
#include "platform/cp932.h"
#include "platform/qt/qt_context.h"

namespace orvane {

namespace {

constexpr QRgb kBehindClearPixels = 0xFFE0E0E0;

ImagePreview Failure(const std::string& why) { return {{}, {}, Words(why)}; }

enum class Painting : std::uint8_t { Done, Failed, Cancelled };

/// Each pixel of the image a unit of the map, its left top corner at the origin. It comes strip by strip.
Painting PaintWhole(RasterServer& server, QSize size, QImage& picture, const std::function<bool(double)>& progress) {
    constexpr int kStrips = 50;
    if (!server.SrvSetCP1(0, 0, 0, 0) || !server.SrvSetCP2(size.width(), size.height(), size.width(), -size.height()))
        return Painting::Failed;
    if (!server.SrvCalcCorrect2()) return Painting::Failed;
    const int height = picture.height();
    const int strip = (std::max)((height + kStrips - 1) / kStrips, 1);
    QtContext context(picture);
    for (int top = 0; top < height; top += strip) {
        if (progress && !progress(static_cast<double>(top) / height)) return Painting::Cancelled;
        const int bottom = (std::min)(top + strip, height);
        RasterPart part;
        part.X2 = size.width();
        part.Y1 = -static_cast<double>(size.height()) * top / height;
        part.Y2 = -static_cast<double>(size.height()) * bottom / height;
        part.pixels = {0, top, picture.width(), bottom};
        if (!server.SrvDraw(context, part, 1)) return Painting::Failed;
    }
    return Painting::Done;
}

}  // namespace

QPoint ImagePreview::PixelOf(QPoint at) const {
    const auto carry = [](int pixel, int shown, int whole) {
        return static_cast<int>((2 * qint64{pixel} + 1) * whole / (2 * qint64{(std::max)(shown, 1)}));
    };
    return {carry(at.x(), picture.width(), size.width()), carry(at.y(), picture.height(), size.height())};
}

ImagePreview PreviewOf(const QString& path, const std::function<bool(double)>& progress) {
    const std::optional<std::string> name = EncodeCp932(path.toStdString());
    const std::unique_ptr<RasterServer> server = RasterLibraryMaker()();
    if (server == nullptr) return Failure(RasterLibraryLack());
    if (!name || !server->SrvInit() || !server->SrvLoad(*name)) return Failure(RasterLibraryFailure());
    ImagePreview preview;
    preview.size = {server->SrvImgWidth(), server->SrvImgHeight()};
    const QSize most(kMostPreview_px, kMostPreview_px);
    const bool fits = preview.size.width() <= kMostPreview_px && preview.size.height() <= kMostPreview_px;
    const QSize shown = fits ? preview.size : preview.size.scaled(most, Qt::KeepAspectRatio).expandedTo({1, 1});
    QImage picture(shown, QImage::Format_RGB32);
    if (picture.isNull()) return Failure("there is no room for it");
    picture.fill(kBehindClearPixels);
    const Painting painting = PaintWhole(*server, preview.size, picture, progress);
    if (painting == Painting::Failed) return Failure(RasterLibraryFailure());
    if (painting == Painting::Done) preview.picture = picture;
    return preview;
}

}  // namespace orvane
